#include <KdRecord/KdScreenPixmap.h>

#include <Support/KdTestCase.h>

class tst_KdScreenPixmap : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void plainScreenGetsThePlainFile();
    void denseScreenGetsTheDenseFileInTheSameUnits_data();
    void denseScreenGetsTheDenseFileInTheSameUnits();
    void denseScreenTakesThePlainFileWhereThereIsNoOther();
    void missingFileIsNull();

private:
    void save(const QString& name, int side, const QColor& color);
};

void tst_KdScreenPixmap::init()
{
    KdTestCase::init();
    save(QStringLiteral("a.b.png"), 16, Qt::red);
    save(QStringLiteral("a.b@2x.png"), 32, Qt::blue);
    save(QStringLiteral("single.png"), 16, Qt::red);
}

void tst_KdScreenPixmap::save(const QString& name, int side, const QColor& color)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(color);
    QVERIFY(image.save(temporaryPath(name)));
}

void tst_KdScreenPixmap::plainScreenGetsThePlainFile()
{
    const QPixmap pixmap = KdScreenPixmap::load(temporaryPath(QStringLiteral("a.b.png")), 1);
    QCOMPARE(pixmap.size(), QSize(16, 16));
    QCOMPARE(pixmap.devicePixelRatio(), 1.0);
    QCOMPARE(pixmap.toImage().pixelColor(3, 3), QColor(Qt::red));
}

void tst_KdScreenPixmap::denseScreenGetsTheDenseFileInTheSameUnits_data()
{
    QTest::addColumn<double>("ratio");

    QTest::newRow("150 %") << 1.5;
    QTest::newRow("200 %") << 2.0;
    QTest::newRow("300 %") << 3.0;
}

void tst_KdScreenPixmap::denseScreenGetsTheDenseFileInTheSameUnits()
{
    QFETCH(double, ratio);
    const QPixmap pixmap = KdScreenPixmap::load(temporaryPath(QStringLiteral("a.b.png")), ratio);
    QCOMPARE(pixmap.size(), QSize(32, 32));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    QCOMPARE(pixmap.toImage().pixelColor(3, 3), QColor(Qt::blue));
}

void tst_KdScreenPixmap::denseScreenTakesThePlainFileWhereThereIsNoOther()
{
    const QPixmap pixmap = KdScreenPixmap::load(temporaryPath(QStringLiteral("single.png")), 2);
    QCOMPARE(pixmap.size(), QSize(16, 16));
    QCOMPARE(pixmap.devicePixelRatio(), 1.0);
}

void tst_KdScreenPixmap::missingFileIsNull()
{
    QVERIFY(KdScreenPixmap::load(temporaryPath(QStringLiteral("none.png")), 1).isNull());
    QVERIFY(KdScreenPixmap::load(temporaryPath(QStringLiteral("none.png")), 2).isNull());
    QVERIFY(KdScreenPixmap::load(QString(), 2).isNull());
    QVERIFY(KdScreenPixmap::load(QStringLiteral("no suffix"), 2).isNull());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdScreenPixmap>(argc, argv);
}

#include "tst_KdScreenPixmap.moc"

#include <KdWidgets/KdIcon.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>

#include <QFile>

class tst_KdIcon : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void drawingIsSharpAtEveryRatio_data();
    void drawingIsSharpAtEveryRatio();
    void imageTakesItsDenseSiblingOnADenseScreen();
    void imageWithoutASiblingIsScaled();
    void iconKeepsItsProportions();
    void unreadableFilesAreNull_data();
    void unreadableFilesAreNull();
    void naturalSizeIsTheDrawings();
    void denserImageIsReducedEvenly_data();
    void denserImageIsReducedEvenly();
    void imageThatIsNotDenserStaysAsItIs();
    void iconOfAResourceIsMadeOnce();

private:
    QString writeDrawing(const QString& name, const QByteArray& content, int width, int height);
    QString writeImage(const QString& name, int side, const QColor& color);
};

QString tst_KdIcon::writeDrawing(const QString& name, const QByteArray& content, int width,
                                 int height)
{
    const QString path = temporaryPath(name);
    QFile file(path);
    const QByteArray head = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%1\" "
                                           "height=\"%2\" viewBox=\"0 0 %1 %2\">")
                                .arg(width)
                                .arg(height)
                                .toUtf8();
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(head + content + "</svg>") > 0;
    return written ? path : QString();
}

QString tst_KdIcon::writeImage(const QString& name, int side, const QColor& color)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(color);
    const QString path = temporaryPath(name);
    return image.save(path) ? path : QString();
}

void tst_KdIcon::drawingIsSharpAtEveryRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("pixels");

    QTest::newRow("100 %") << 1.0 << 16;
    QTest::newRow("150 %") << 1.5 << 24;
    QTest::newRow("200 %") << 2.0 << 32;
}

void tst_KdIcon::drawingIsSharpAtEveryRatio()
{
    QFETCH(double, ratio);
    QFETCH(int, pixels);
    // The edge in the middle lies between two pixels at each ratio: an enlarged image would blur
    // it.
    const QString file = writeDrawing(QStringLiteral("half.svg"),
                                      "<rect width=\"8\" height=\"16\" fill=\"#ff0000\"/>", 16, 16);
    const QPixmap icon = KdIcon::pixmap(file, {16, 16}, ratio);
    QCOMPARE(icon.size(), QSize(pixels, pixels));
    QCOMPARE(icon.devicePixelRatio(), ratio);
    const QImage image = icon.toImage();
    for (int x = 0; x < pixels; ++x) {
        QCOMPARE(image.pixelColor(x, pixels / 2).alpha(), x < pixels / 2 ? 255 : 0);
    }
}

void tst_KdIcon::imageTakesItsDenseSiblingOnADenseScreen()
{
    const QString file = writeImage(QStringLiteral("dot.png"), 16, Qt::red);
    QVERIFY(!writeImage(QStringLiteral("dot@2x.png"), 32, Qt::blue).isEmpty());
    QCOMPARE(KdIcon::pixmap(file, {16, 16}, 1.0).toImage().pixelColor(8, 8), QColor(Qt::red));
    QCOMPARE(KdIcon::pixmap(file, {16, 16}, 1.5).toImage().pixelColor(8, 8), QColor(Qt::blue));
    QCOMPARE(KdIcon::pixmap(file, {16, 16}, 2.0).toImage().pixelColor(8, 8), QColor(Qt::blue));
}

void tst_KdIcon::imageWithoutASiblingIsScaled()
{
    const QString file = writeImage(QStringLiteral("lonely.png"), 16, Qt::green);
    const QPixmap icon = KdIcon::pixmap(file, {16, 16}, 2.0);
    QCOMPARE(icon.size(), QSize(32, 32));
    QCOMPARE(icon.toImage().pixelColor(16, 16), QColor(Qt::green));
}

void tst_KdIcon::iconKeepsItsProportions()
{
    const QString file = writeDrawing(
        QStringLiteral("wide.svg"), "<rect width=\"20\" height=\"10\" fill=\"#ff0000\"/>", 20, 10);
    const QImage image = KdIcon::pixmap(file, {40, 40}, 1.0).toImage();
    QCOMPARE(image.pixelColor(20, 9).alpha(), 0);
    QCOMPARE(image.pixelColor(20, 11), QColor(Qt::red));
    QCOMPARE(image.pixelColor(20, 31).alpha(), 0);
}

void tst_KdIcon::unreadableFilesAreNull_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("no name") << QString();
    QTest::newRow("missing drawing") << QStringLiteral("missing.svg");
    QTest::newRow("missing image") << QStringLiteral("missing.png");
    QTest::newRow("no image") << QStringLiteral("broken.png");
}

void tst_KdIcon::unreadableFilesAreNull()
{
    QFETCH(QString, name);
    allowLog(QStringLiteral("Cannot open file|Could not"));
    QFile broken(temporaryPath(QStringLiteral("broken.png")));
    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no image") > 0);
    broken.close();
    const QString file = name.isEmpty() ? name : temporaryPath(name);
    QVERIFY(KdIcon::pixmap(file, {16, 16}, 1.0).isNull());
    QVERIFY(KdIcon::naturalSize(file).isEmpty());
}

void tst_KdIcon::naturalSizeIsTheDrawings()
{
    QCOMPARE(KdIcon::naturalSize(writeDrawing(QStringLiteral("a.svg"), "<g/>", 36, 24)),
             QSize(36, 24));
    QVERIFY(KdIcon::pixmap(temporaryPath(QStringLiteral("a.svg")), QSize(), 1.0).isNull());
}

void tst_KdIcon::denserImageIsReducedEvenly_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("pixels");

    QTest::newRow("100 %") << 1.0 << 16;
    QTest::newRow("150 %") << 1.5 << 24;
}

void tst_KdIcon::denserImageIsReducedEvenly()
{
    QFETCH(double, ratio);
    QFETCH(int, pixels);
    // Of lines that are left out here and there a grey would not become of black and white.
    QImage stripes(32, 32, QImage::Format_RGB32);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            stripes.setPixelColor(x, y, x % 2 ? Qt::white : Qt::black);
        }
    }
    QPixmap dense = QPixmap::fromImage(stripes);
    dense.setDevicePixelRatio(2);
    const QPixmap reduced = KdIcon::reduced(dense, ratio);
    QCOMPARE(reduced.size(), QSize(pixels, pixels));
    QCOMPARE(reduced.devicePixelRatio(), ratio);
    int sum = 0;
    for (int x = 0; x < pixels; ++x) {
        sum += reduced.toImage().pixelColor(x, 4).red();
    }
    QVERIFY(qAbs(sum / pixels - 127) <= 4);
    QVERIFY(reduced.toImage().pixelColor(0, 4) != QColor(Qt::black));
}

void tst_KdIcon::imageThatIsNotDenserStaysAsItIs()
{
    QPixmap image(16, 16);
    image.fill(Qt::red);
    QCOMPARE(KdIcon::reduced(image, 1.0).cacheKey(), image.cacheKey());
    QCOMPARE(KdIcon::reduced(image, 2.0).cacheKey(), image.cacheKey());
    QVERIFY(KdIcon::reduced(QPixmap(), 1.0).isNull());
}

void tst_KdIcon::iconOfAResourceIsMadeOnce()
{
    KdSkin::KdSkinManager::instance(); // brings its icons along
    const QString resource = QStringLiteral(":/KdSkin/icons/dark/close_text-quiet.svg");
    QVERIFY(!KdIcon::icon(resource).pixmap(16, 16).isNull());
    QCOMPARE(KdIcon::icon(resource).cacheKey(), KdIcon::icon(resource).cacheKey());
    // Others may change.
    const QString file = writeImage(QStringLiteral("changing.png"), 16, Qt::red);
    const QImage red = KdIcon::icon(file).pixmap(16, 16).toImage();
    QCOMPARE(red.pixelColor(8, 8), QColor(Qt::red));
    QVERIFY(KdIcon::icon(file).cacheKey() != KdIcon::icon(file).cacheKey());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdIcon>(argc, argv);
}

#include "tst_KdIcon.moc"

#include <KdRecord/KQuestionLabel.h>

#include <Support/KdTestCase.h>
#include <Support/PaintedPictures.h>

#include <QPainter>

class tst_KQuestionLabel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void fillsTheLabelWithTheImage_data();
    void fillsTheLabelWithTheImage();
    void isSharpOnEveryScreenItComesTo();
};

void tst_KQuestionLabel::fillsTheLabelWithTheImage_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("as large as the image") << QSize(16, 16);
    QTest::newRow("larger") << QSize(40, 40);
    QTest::newRow("another shape") << QSize(30, 12);
}

void tst_KQuestionLabel::fillsTheLabelWithTheImage()
{
    QFETCH(QSize, size);
    const QPixmap image(QStringLiteral(":/Resource/icon16_help_normal.png"));
    QVERIFY(!image.isNull());
    KQuestionLabel label;
    label.resize(size);
    QPixmap shown(size);
    shown.fill(Qt::green);
    label.render(&shown, QPoint(), QRegion(), QWidget::RenderFlags());

    QPixmap expected(size);
    expected.fill(Qt::green);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRect(QPoint(0, 0), size), image, QRect(0, 0, 16, 16));
    painter.end();
    QCOMPARE(shown.toImage(), expected.toImage());
}

void tst_KQuestionLabel::isSharpOnEveryScreenItComesTo()
{
    KQuestionLabel label;
    label.resize(16, 16);
    for (const int ratio : {1, 2, 1}) {
        const auto pictures = KdTest::paintedPictures(label, ratio);
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(pictures.first().picture.size(), QSize(16, 16) * ratio);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KQuestionLabel>(argc, argv);
}

#include "tst_KQuestionLabel.moc"

#include "KdTestCase.h"
#include "PaintedPictures.h"

#include <QLabel>
#include <QPainter>

#include <functional>

namespace {

constexpr int kSide = 16;

QImage disc(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::red);
    painter.drawEllipse(image.rect().adjusted(1, 1, -1, -1));
    return image;
}

/** A disc of 16 units with so many pixels for each. */
QPixmap discFor(double ratio)
{
    QPixmap pixmap = QPixmap::fromImage(disc(qRound(kSide * ratio)));
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

/** Shows a disc in one of the ways in which controls do. */
class Painted : public QWidget
{
public:
    using Paint = std::function<void(QPainter&)>;

    explicit Painted(QWidget* parent, Paint paint) : QWidget(parent), m_paint(std::move(paint)) {}

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        m_paint(painter);
    }

private:
    Paint m_paint;
};

using Maker = std::function<QWidget*(QWidget* window, double ratio)>;

QWidget* makeLabel(QWidget* window, double ratio)
{
    auto* const label = new QLabel(window);
    label->setPixmap(discFor(ratio));
    return label;
}

QWidget* makePainted(QWidget* window, double ratio)
{
    return new Painted(window, [ratio](QPainter& painter) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRect(0, 0, kSide, kSide), disc(qRound(kSide * ratio)));
    });
}

QWidget* makeTurned(QWidget* window, double ratio)
{
    return new Painted(window, [ratio](QPainter& painter) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(kSide, kSide);
        painter.rotate(30);
        painter.drawPixmap(QRect(-kSide / 2, -kSide / 2, kSide, kSide), discFor(ratio));
    });
}

QWidget* makeTiled(QWidget* window, double ratio)
{
    return new Painted(window, [ratio](QPainter& painter) {
        painter.drawTiledPixmap(QRect(0, 0, 3 * kSide, kSide), discFor(ratio));
    });
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class tst_PaintedPictures : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsPicturesWithTooFewPixels_data();
    void findsPicturesWithTooFewPixels();
    void findsPicturesThatAreReducedUnevenly();
    void whatShowsNothingIsNotCoarse();
    void findsPicturesThatWereEnlargedBefore();
    void knowsTheirPlace();
    void linesAndLettersAreNoPictures();
};

void tst_PaintedPictures::findsPicturesWithTooFewPixels_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<double>("ratio");

    for (const double ratio : {1.0, 1.5, 2.0}) {
        const auto row = [ratio](const char* name, const Maker& make) {
            QTest::addRow("%s at %g", name, ratio) << make << ratio;
        };
        row("label", makeLabel);
        row("painted", makePainted);
        row("turned", makeTurned);
        row("tiled", makeTiled);
    }
}

void tst_PaintedPictures::findsPicturesWithTooFewPixels()
{
    QFETCH(Maker, make);
    QFETCH(double, ratio);
    for (const double made : {1.0, 1.5, 2.0}) {
        QWidget window;
        make(&window, made)->setGeometry(4, 4, 48, 48);
        window.resize(64, 64);
        const QVector<KdTest::PaintedPicture> pictures = KdTest::paintedPictures(window, ratio);
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(pictures.first().isEnlarged(), made < ratio);
    }
}

void tst_PaintedPictures::whatShowsNothingIsNotCoarse()
{
    for (const QColor& color : {QColor(Qt::transparent), QColor(Qt::red)}) {
        QWidget window;
        Painted painted(&window, [color](QPainter& painter) {
            QPixmap picture(8, 8);
            picture.fill(color);
            painter.drawPixmap(QRect(0, 0, 16, 16), picture);
        });
        QCOMPARE(KdTest::coarsePictures(window).isEmpty(), color == Qt::transparent);
    }
}

void tst_PaintedPictures::findsPicturesThatAreReducedUnevenly()
{
    for (const bool isSmooth : {true, false}) {
        QWidget window;
        Painted painted(&window, [isSmooth](QPainter& painter) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform, isSmooth);
            painter.drawPixmap(0, 0, discFor(2));
        });
        QVERIFY(!KdTest::paintedPictures(window, 2.0).first().isTorn());
        QCOMPARE(KdTest::paintedPictures(window, 1.5).first().isTorn(), !isSmooth);
        QVERIFY(!KdTest::paintedPictures(window, 1.5).first().isEnlarged());
    }
}

void tst_PaintedPictures::findsPicturesThatWereEnlargedBefore()
{
    const auto isBlurred = [](const QImage& image) {
        KdTest::PaintedPicture picture;
        picture.picture = image;
        return picture.isBlurred();
    };
    const QSize twice(2 * kSide, 2 * kSide);
    QVERIFY(!isBlurred(disc(2 * kSide)));
    QVERIFY(isBlurred(disc(kSide).scaled(twice)));
    QVERIFY(isBlurred(disc(kSide).scaled(twice, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
    QImage opaque(twice, QImage::Format_RGB32);
    opaque.fill(Qt::red);
    QVERIFY(!isBlurred(opaque));
}

void tst_PaintedPictures::knowsTheirPlace()
{
    QWidget window;
    auto* const inner = new QWidget(&window);
    inner->setGeometry(10, 20, 50, 50);
    makePainted(inner, 1)->setGeometry(5, 6, kSide, kSide);
    const QVector<KdTest::PaintedPicture> pictures = KdTest::paintedPictures(window, 2);
    QCOMPARE(pictures.first().place, QRectF(15, 26, kSide, kSide));
    QCOMPARE(pictures.first().pixels, QSizeF(2 * kSide, 2 * kSide));
    QCOMPARE(pictures.first().picture.size(), QSize(kSide, kSide));
}

void tst_PaintedPictures::linesAndLettersAreNoPictures()
{
    QWidget window;
    Painted painted(&window, [](QPainter& painter) {
        painter.drawText(0, 12, QStringLiteral("Text"));
        painter.drawLine(0, 0, 10, 10);
        painter.fillRect(QRect(0, 0, 5, 5), Qt::red);
        painter.drawEllipse(QPointF(8, 8), 4, 4);
    });
    QVERIFY(KdTest::paintedPictures(window, 2).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_PaintedPictures>(argc, argv);
}

#include "tst_PaintedPictures.moc"

#include <KdRecord/KdPreviewPicture.h>

#include <Support/KdTestCase.h>
#include <Support/PictureDifference.h>
#include <Support/PlainPreview.h>

#include <QPainter>

#include <cmath>
#include <limits>

namespace {

/** Gradients, fine lines and noise; with transparency also soft and hard edges of it. */
QImage testFrame(const QSize& size, bool isTransparent)
{
    QImage frame(size, QImage::Format_ARGB32);
    quint32 noise = 1;
    for (int y = 0; y < size.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(frame.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            noise = noise * 1664525U + 1013904223U;
            const int grain = int(noise >> 27U);
            const int red = (x * 223 / size.width()) + grain;
            const int green = (y * 223 / size.height()) + grain;
            const int blue = (x / 16 + y / 16) % 2 == 0 ? 200 : 30 + grain;
            const int alpha = isTransparent ? qBound(0, (x * 510 / size.width()) - 120, 255) : 255;
            row[x] = qRgba(red, green, blue, alpha);
        }
    }
    return frame;
}

KdPreviewFrame viewOf(const QImage& frame)
{
    return {frame.constBits(), frame.width(), frame.height()};
}

/** The picture with the black around it. */
QImage shown(const QImage& frame, const KdPreviewLook& look)
{
    KdPreviewPicture picture;
    picture.draw(viewOf(frame), look);
    QImage all((QSizeF(look.area) * look.ratio).toSize(), QImage::Format_RGB32);
    all.fill(Qt::black);
    QPainter(&all).drawImage(picture.place, picture.image);
    return all;
}

} // namespace

class tst_KdPreviewPicture : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void looksLikeThePlainRecipe_data();
    void looksLikeThePlainRecipe();
    void transparentPixelsLieOverBlack();
    void aCircleHasTheDiameterOfTheShorterSide_data();
    void aCircleHasTheDiameterOfTheShorterSide();
    void flippedIsTheMirrorImage();
    void oneToOneIsTheFrameItself();
    void fitsIntoTheSurface_data();
    void fitsIntoTheSurface();
    void extremeSizesAreFine_data();
    void extremeSizesAreFine();
    void bitsOfAnyAlignmentAreRead();
    void memoryIsUsedAgain();
    void sizesOfFrames_data();
    void sizesOfFrames();
};

void tst_KdPreviewPicture::looksLikeThePlainRecipe_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QSize>("area");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<bool>("isRound");
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<bool>("isTransparent");

    const QSize panel(760, 428);
    struct Case
    {
        const char* name;
        QSize frame;
        QSize area;
        double ratio;
    };
    const QVector<Case> cases{
        {"480p", {640, 480}, panel, 1},           {"720p", {1280, 720}, panel, 1},
        {"1080p", {1920, 1080}, panel, 1},        {"odd", {641, 359}, {500, 400}, 1},
        {"upright", {360, 641}, panel, 1},        {"tiny", {7, 5}, {90, 80}, 1},
        {"720p at 200 %", {1280, 720}, panel, 2}, {"720p at 150 %", {1280, 720}, {400, 224}, 1.5}};
    for (const Case& one : cases) {
        // All options with the small ones; with the large ones, which take their time, the
        // extremes.
        const bool isLarge = one.frame.width() > 1000;
        for (int options = 0; options < 8; options += isLarge ? 7 : 1) {
            const bool isRound = options & 1;
            const bool isFlipped = options & 2;
            const bool isTransparent = options & 4;
            QTest::addRow("%s%s%s%s", one.name, isRound ? ", round" : "",
                          isFlipped ? ", flipped" : "", isTransparent ? ", transparent" : "")
                << one.frame << one.area << one.ratio << isRound << isFlipped << isTransparent;
        }
    }
}

void tst_KdPreviewPicture::looksLikeThePlainRecipe()
{
    QFETCH(QSize, frame);
    QFETCH(QSize, area);
    QFETCH(double, ratio);
    QFETCH(bool, isRound);
    QFETCH(bool, isFlipped);
    QFETCH(bool, isTransparent);
    const QImage image = testFrame(frame, isTransparent);
    const KdPreviewLook look{area, ratio, isRound, isFlipped};
    const QRect fitted = KdPreviewPicture::fitted(frame, area);
    const QRectF place(QPointF(fitted.topLeft()) * ratio, QSizeF(fitted.size()) * ratio);
    const QImage expected = PlainPreview::picture(image, area, ratio, isRound, isFlipped);
    const PictureDifference off = PictureDifference::between(
        shown(image, look), expected, {place, place.width() / frame.width(), isRound});
    QVERIFY2(off.mean <= 2.0, qPrintable(QString::number(off.mean)));
    QVERIFY2(off.largest <= 12, qPrintable(QString::number(off.largest)));
}

void tst_KdPreviewPicture::transparentPixelsLieOverBlack()
{
    QImage frame(4, 1, QImage::Format_ARGB32);
    frame.setPixel(0, 0, qRgba(200, 100, 50, 0));
    frame.setPixel(1, 0, qRgba(200, 100, 50, 128));
    frame.setPixel(2, 0, qRgba(200, 100, 50, 255));
    frame.setPixel(3, 0, qRgba(255, 255, 255, 1));
    const QImage picture = shown(frame, {QSize(4, 1), 1.0, false, false});
    QCOMPARE(picture.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(1, 0), qRgb(100, 50, 25));
    QCOMPARE(picture.pixel(2, 0), qRgb(200, 100, 50));
    QCOMPARE(picture.pixel(3, 0), qRgb(1, 1, 1));
}

void tst_KdPreviewPicture::aCircleHasTheDiameterOfTheShorterSide_data()
{
    QTest::addColumn<QSize>("frame");

    QTest::newRow("wide") << QSize(1280, 720);
    QTest::newRow("upright") << QSize(720, 1280);
    QTest::newRow("square") << QSize(500, 500);
    QTest::newRow("odd") << QSize(641, 359);
}

/** One pixel of the screen for each of the frame, so that the diameter can be counted. */
void tst_KdPreviewPicture::aCircleHasTheDiameterOfTheShorterSide()
{
    QFETCH(QSize, frame);
    QImage white(frame, QImage::Format_ARGB32);
    white.fill(Qt::white);
    const QImage picture = shown(white, {frame, 1.0, true, false});
    const QPoint middle(frame.width() / 2, frame.height() / 2);
    int wide = 0;
    for (int x = 0; x < frame.width(); ++x) {
        wide += qRed(picture.pixel(x, middle.y())) > 127 ? 1 : 0;
    }
    int high = 0;
    for (int y = 0; y < frame.height(); ++y) {
        high += qRed(picture.pixel(middle.x(), y)) > 127 ? 1 : 0;
    }
    const int diameter = std::min(frame.width(), frame.height());
    QVERIFY(std::abs(wide - diameter) <= 1);
    QVERIFY(std::abs(high - diameter) <= 1);
    QCOMPARE(picture.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(frame.width() - 1, frame.height() - 1), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(middle), qRgb(255, 255, 255));
}

void tst_KdPreviewPicture::flippedIsTheMirrorImage()
{
    const QImage frame = testFrame(QSize(321, 200), false);
    const QImage straight = shown(frame, {QSize(760, 428), 1.0, false, false});
    const QImage flipped = shown(frame, {QSize(760, 428), 1.0, false, true});
    const QRect place = KdPreviewPicture::fitted(frame.size(), QSize(760, 428));
    const QImage mirrored = straight.copy(place).mirrored(true, false);
    QVERIFY(
        PictureDifference::between(flipped.copy(place), mirrored, {QRectF(), 1, true}).largest <=
        2);
}

void tst_KdPreviewPicture::oneToOneIsTheFrameItself()
{
    const QImage frame = testFrame(QSize(64, 48), false);
    const QImage picture = shown(frame, {QSize(64, 48), 1.0, false, false});
    QCOMPARE(picture, frame.convertToFormat(QImage::Format_RGB32));
}

void tst_KdPreviewPicture::fitsIntoTheSurface_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QSize>("area");
    QTest::addColumn<QRect>("place");

    QTest::newRow("as wide") << QSize(1280, 720) << QSize(640, 480) << QRect(0, 60, 640, 360);
    QTest::newRow("as high") << QSize(640, 480) << QSize(760, 428) << QRect(95, 0, 570, 428);
    QTest::newRow("odd rest") << QSize(100, 100) << QSize(205, 100) << QRect(52, 0, 100, 100);
    QTest::newRow("flat") << QSize(10000, 1) << QSize(100, 50) << QRect(0, 24, 100, 1);
    QTest::newRow("narrow") << QSize(1, 10000) << QSize(100, 50) << QRect(49, 0, 1, 50);
}

void tst_KdPreviewPicture::fitsIntoTheSurface()
{
    QFETCH(QSize, frame);
    QFETCH(QSize, area);
    QFETCH(QRect, place);
    QCOMPARE(KdPreviewPicture::fitted(frame, area), place);
}

void tst_KdPreviewPicture::extremeSizesAreFine_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QSize>("area");

    QTest::newRow("one pixel") << QSize(1, 1) << QSize(300, 200);
    QTest::newRow("one line") << QSize(5000, 1) << QSize(300, 200);
    QTest::newRow("one column") << QSize(1, 5000) << QSize(300, 200);
    QTest::newRow("two by two") << QSize(2, 2) << QSize(3, 3);
    QTest::newRow("onto one pixel") << QSize(640, 480) << QSize(1, 1);
}

void tst_KdPreviewPicture::extremeSizesAreFine()
{
    QFETCH(QSize, frame);
    QFETCH(QSize, area);
    QImage white(frame, QImage::Format_ARGB32);
    white.fill(Qt::white);
    const QRect place = KdPreviewPicture::fitted(frame, area);
    const QImage square = shown(white, {area, 1.0, false, true});
    QCOMPARE(square.pixel(place.center()), qRgb(255, 255, 255));
    // The circle may be less than a pixel; it shows no more than the square does.
    const QImage round = shown(white, {area, 1.0, true, true});
    QCOMPARE(round.size(), area);
    QVERIFY(qRed(round.pixel(place.center())) <= 255);
}

void tst_KdPreviewPicture::bitsOfAnyAlignmentAreRead()
{
    const QImage frame = testFrame(QSize(31, 17), true);
    QByteArray shifted(1, 'x');
    shifted.append(reinterpret_cast<const char*>(frame.constBits()), int(frame.sizeInBytes()));
    const KdPreviewLook look{QSize(60, 60), 1.0, false, false};
    KdPreviewPicture aligned;
    aligned.draw(viewOf(frame), look);
    KdPreviewPicture odd;
    odd.draw({reinterpret_cast<const uchar*>(shifted.constData()) + 1, 31, 17}, look);
    QCOMPARE(odd.image, aligned.image);
}

void tst_KdPreviewPicture::memoryIsUsedAgain()
{
    const QImage frame = testFrame(QSize(64, 36), false);
    KdPreviewPicture picture;
    picture.draw(viewOf(frame), {QSize(760, 428), 1.0, false, false});
    const uchar* const memory = picture.image.constBits();
    picture.draw(viewOf(frame), {QSize(760, 428), 1.0, true, true});
    QVERIFY(picture.image.constBits() == memory);
    picture.draw(viewOf(frame), {QSize(400, 428), 1.0, true, true});
    QCOMPARE(picture.image.size(), QSize(400, 225));
}

void tst_KdPreviewPicture::sizesOfFrames_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<qint64>("bytes");

    constexpr int most = std::numeric_limits<int>::max();
    QTest::newRow("usual") << 640 << 480 << qint64(1228800);
    QTest::newRow("largest") << 23170 << 23170 << qint64(23170) * 23170 * 4;
    QTest::newRow("just too large") << 23171 << 23171 << qint64(0);
    QTest::newRow("absurd") << most << most << qint64(0);
    QTest::newRow("product that wraps to a small one") << 65536 << 65537 << qint64(0);
    QTest::newRow("no width") << 0 << 480 << qint64(0);
    QTest::newRow("no height") << 640 << 0 << qint64(0);
    QTest::newRow("negative width") << -640 << 480 << qint64(0);
    QTest::newRow("both negative") << -640 << -480 << qint64(0);
    QTest::newRow("smallest int") << std::numeric_limits<int>::min() << -1 << qint64(0);
}

void tst_KdPreviewPicture::sizesOfFrames()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(qint64, bytes);
    const uchar pixel[4] = {};
    const KdPreviewFrame frame{pixel, width, height};
    QCOMPARE(frame.byteCount(), bytes);
    QCOMPARE(frame.isValid(), bytes > 0);
    const KdPreviewFrame nowhere{nullptr, width, height};
    QVERIFY(!nowhere.isValid());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPreviewPicture>(argc, argv);
}

#include "tst_KdPreviewPicture.moc"

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdPictureConverter.h>

#include <Support/KdTestCase.h>

#include <QImage>

#include <gst/video/video.h>

#include <cmath>

namespace {

constexpr QRgb kRed = 0xFFDC1E1E;
constexpr QRgb kGreen = 0xFF1EC81E;
constexpr QRgb kBlue = 0xFF1E1EDC;

/** Three bars, by a format's own converter: another one than that under test. */
KdGstBufferPtr bars(const GstVideoInfo& info)
{
    GstVideoInfo from;
    gst_video_info_set_format(&from, GST_VIDEO_FORMAT_BGRA,
                              static_cast<guint>(GST_VIDEO_INFO_WIDTH(&info)),
                              static_cast<guint>(GST_VIDEO_INFO_HEIGHT(&info)));
    from.fps_n = info.fps_n;
    from.fps_d = info.fps_d;
    QImage image(GST_VIDEO_INFO_WIDTH(&info), GST_VIDEO_INFO_HEIGHT(&info), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int third = 3 * x / image.width();
            image.setPixel(x, y, third == 0 ? kRed : third == 1 ? kGreen : kBlue);
        }
    }
    KdGstBufferPtr drawn(gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&from), nullptr));
    gst_buffer_fill(drawn.get(), 0, image.constBits(), static_cast<gsize>(image.sizeInBytes()));
    KdGstBufferPtr converted(gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&info), nullptr));
    GstVideoConverter* converter = gst_video_converter_new(&from, &info, nullptr);
    GstVideoFrame in;
    GstVideoFrame out;
    gst_video_frame_map(&in, &from, drawn.get(), GST_MAP_READ);
    gst_video_frame_map(&out, &info, converted.get(), GST_MAP_WRITE);
    gst_video_converter_frame(converter, &in, &out);
    gst_video_frame_unmap(&in);
    gst_video_frame_unmap(&out);
    gst_video_converter_free(converter);
    return converted;
}

KdGstCapsPtr capsOf(const char* format, QSize size, const char* colours = nullptr)
{
    KdGstCapsPtr caps(gst_caps_new_simple(
        "video/x-raw", "format", G_TYPE_STRING, format, "width", G_TYPE_INT, size.width(), "height",
        G_TYPE_INT, size.height(), "framerate", GST_TYPE_FRACTION, 30, 1, nullptr));
    if (colours) {
        gst_caps_set_simple(caps.get(), "colorimetry", G_TYPE_STRING, colours, nullptr);
    }
    return caps;
}

/** @param colours that the pixels have, whatever the caps say */
GstVideoInfo infoOf(const char* format, QSize size, const char* colours)
{
    GstVideoInfo info;
    gst_video_info_from_caps(&info, capsOf(format, size).get());
    if (GST_VIDEO_INFO_IS_YUV(&info)) {
        gst_video_colorimetry_from_string(&info.colorimetry, colours);
    }
    return info;
}

bool isNear(QRgb pixel, QRgb wanted, int tolerance)
{
    return qAlpha(pixel) == 255 && std::abs(qRed(pixel) - qRed(wanted)) <= tolerance &&
           std::abs(qGreen(pixel) - qGreen(wanted)) <= tolerance &&
           std::abs(qBlue(pixel) - qBlue(wanted)) <= tolerance;
}

/** Fast arithmetic is off by this much in strong blue; another matrix would be by 20. */
constexpr int kTolerance = 14;

/** Whether the three bars are right in all lines, away from their seams. */
bool showsBars(const QImage& image, int tolerance = kTolerance)
{
    const QRgb wanted[] = {kRed, kGreen, kBlue};
    for (int y = 0; y < image.height(); ++y) {
        for (int third = 0; third < 3; ++third) {
            const QRgb pixel = image.pixel((2 * third + 1) * image.width() / 6, y);
            if (!isNear(pixel, wanted[third], tolerance)) {
                qInfo("line %d, third %d: %08x", y, third, pixel);
                return false;
            }
        }
    }
    return !image.isNull();
}

QImage argbOf(KdPictureConverter& converter, GstBuffer* picture)
{
    QImage image(converter.size(), QImage::Format_ARGB32);
    image.fill(0x11111111);
    return converter.toArgb(picture, image.bits(), image.bytesPerLine()) ? image : QImage();
}

/** An I420 picture of BT.601, drawn by the library that did not make it. */
QImage imageOf(GstBuffer* i420, QSize size)
{
    KdPictureConverter converter;
    converter.setFormat(capsOf("I420", size, KdPictureConverter::kI420Colours).get());
    return argbOf(converter, i420);
}

} // namespace

class tst_KdPictureConverter : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void everyFormatBecomesArgb_data();
    void everyFormatBecomesArgb();
    void coloursAreTakenAsTheCameraDescribesThem_data();
    void coloursAreTakenAsTheCameraDescribesThem();
    void colorsThatAreNotDescribedAreThoseOfUsbCameras();
    void whatATakeGetsIsAlwaysTheSame_data();
    void whatATakeGetsIsAlwaysTheSame();
    void aTakeNeedsADetourForOtherColours();
    void transparentPixelsLieOverBlack();
    void oddSizesAreWhole_data();
    void oddSizesAreWhole();
    void aLineMayBeLongerThanThePicture();
    void whatIsNoPictureIsRefused();
    void aPictureThatIsTooSmallIsRefused();
    void theFormatMayChange();
};

void tst_KdPictureConverter::everyFormatBecomesArgb_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char* format : {"YUY2", "UYVY", "YVYU", "NV12", "NV21", "I420",  "YV12",
                               "Y42B", "Y444", "BGRx", "BGRA", "RGBx", "RGBA",  "xRGB",
                               "ARGB", "xBGR", "ABGR", "RGB",  "BGR",  "RGB16", "P010_10LE"}) {
        QTest::newRow(format) << QByteArray(format);
    }
}

void tst_KdPictureConverter::everyFormatBecomesArgb()
{
    QFETCH(QByteArray, format);
    const QSize size(96, 64);
    const GstVideoInfo info = infoOf(format.constData(), size, "bt601");
    KdPictureConverter converter;
    QVERIFY(converter.setFormat(capsOf(format.constData(), size).get()));
    QCOMPARE(converter.size(), size);
    QVERIFY(showsBars(argbOf(converter, bars(info).get())));
}

void tst_KdPictureConverter::coloursAreTakenAsTheCameraDescribesThem_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("colours");
    for (const char* format : {"I420", "NV12", "YUY2", "Y42B"}) {
        for (const char* colours : {"bt601", "bt709", "1:4:0:0", "1:3:5:1", "bt2020"}) {
            QTest::addRow("%s %s", format, colours) << QByteArray(format) << QByteArray(colours);
        }
    }
}

void tst_KdPictureConverter::coloursAreTakenAsTheCameraDescribesThem()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, colours);
    const QSize size(96, 64);
    const GstVideoInfo info = infoOf(format.constData(), size, colours.constData());
    KdPictureConverter converter;
    QVERIFY(converter.setFormat(capsOf(format.constData(), size, colours.constData()).get()));
    QVERIFY(showsBars(argbOf(converter, bars(info).get())));
}

void tst_KdPictureConverter::colorsThatAreNotDescribedAreThoseOfUsbCameras()
{
    const QSize hd(1280, 720); // where others take BT.709 for granted
    KdPictureConverter converter;
    QVERIFY(converter.setFormat(capsOf("YUY2", hd).get()));
    QVERIFY(showsBars(argbOf(converter, bars(infoOf("YUY2", hd, "bt601")).get())));
}

void tst_KdPictureConverter::whatATakeGetsIsAlwaysTheSame_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char* format : {"YUY2", "UYVY", "NV12", "I420"}) {
        QTest::newRow(format) << QByteArray(format);
    }
}

void tst_KdPictureConverter::whatATakeGetsIsAlwaysTheSame()
{
    QFETCH(QByteArray, format);
    const QSize size(96, 64);
    KdPictureConverter converter;
    QVERIFY(converter.setFormat(capsOf(format.constData(), size).get()));
    QVERIFY(converter.givesI420());
    const KdGstBufferPtr picture = bars(infoOf(format.constData(), size, "bt601"));
    const KdGstBufferPtr direct(KdPictureConverter::createI420(size));
    QVERIFY(converter.toI420(picture.get(), direct.get()));
    QVERIFY(showsBars(imageOf(direct.get(), size)));
    // By way of the preview's pixels, too.
    const QImage image = argbOf(converter, picture.get());
    const KdGstBufferPtr detour(KdPictureConverter::createI420(size));
    QVERIFY(KdPictureConverter::argbToI420(image.constBits(), image.bytesPerLine(), true, size,
                                           detour.get()));
    QVERIFY(showsBars(imageOf(detour.get(), size)));
}

void tst_KdPictureConverter::aTakeNeedsADetourForOtherColours()
{
    const QSize size(96, 64);
    KdPictureConverter converter;
    const KdGstBufferPtr target(KdPictureConverter::createI420(size));
    QVERIFY(!converter.givesI420());
    for (const char* colours : {"bt709", "1:4:0:0"}) {
        QVERIFY(converter.setFormat(capsOf("I420", size, colours).get()));
        QVERIFY(!converter.givesI420());
        const KdGstBufferPtr picture = bars(infoOf("I420", size, colours));
        QVERIFY(!converter.toI420(picture.get(), target.get()));
    }
    QVERIFY(converter.setFormat(capsOf("BGRx", size).get()));
    QVERIFY(!converter.givesI420());
}

void tst_KdPictureConverter::transparentPixelsLieOverBlack()
{
    const QSize size(8, 5);
    QImage image(size, QImage::Format_ARGB32);
    image.fill(0x00FF00FF); // a colour under nothing
    for (int y = 0; y < size.height(); ++y) {
        image.setPixel(0, y, 0xFFFFFFFF);
        image.setPixel(1, y, 0xFFFFFFFF);
        image.setPixel(2, y, 0x80FFFFFF);
        image.setPixel(3, y, 0x80FFFFFF);
    }
    const KdGstBufferPtr i420(KdPictureConverter::createI420(size));
    QVERIFY(KdPictureConverter::argbToI420(image.constBits(), image.bytesPerLine(), false, size,
                                           i420.get()));
    const QImage seen = imageOf(i420.get(), size);
    for (int y = 0; y < size.height(); ++y) {
        QVERIFY(isNear(seen.pixel(0, y), 0xFFFFFFFF, 3));
        QVERIFY(isNear(seen.pixel(2, y), 0xFF808080, 3));
        QVERIFY(isNear(seen.pixel(6, y), 0xFF000000, 3));
    }
}

void tst_KdPictureConverter::oddSizesAreWhole_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    for (const char* format : {"YUY2", "UYVY", "NV12", "I420", "BGRx"}) {
        for (const QSize size : {QSize(97, 65), QSize(98, 65), QSize(97, 64), QSize(6, 1)}) {
            QTest::addRow("%s %dx%d", format, size.width(), size.height())
                << QByteArray(format) << size;
        }
    }
}

void tst_KdPictureConverter::oddSizesAreWhole()
{
    QFETCH(QByteArray, format);
    QFETCH(QSize, size);
    KdPictureConverter converter;
    QVERIFY(converter.setFormat(capsOf(format.constData(), size).get()));
    const KdGstBufferPtr picture = bars(infoOf(format.constData(), size, "bt601"));
    const QImage image = argbOf(converter, picture.get());
    QVERIFY(showsBars(image));
    QVERIFY(isNear(image.pixel(size.width() - 1, size.height() - 1), kBlue, kTolerance));
    const KdGstBufferPtr i420(KdPictureConverter::createI420(size));
    const bool isMade = converter.givesI420()
                            ? converter.toI420(picture.get(), i420.get())
                            : KdPictureConverter::argbToI420(
                                  image.constBits(), image.bytesPerLine(), true, size, i420.get());
    QVERIFY(isMade);
    QVERIFY(showsBars(imageOf(i420.get(), size)));
}

void tst_KdPictureConverter::aLineMayBeLongerThanThePicture()
{
    const QSize size(96, 64);
    KdPictureConverter converter;
    QVERIFY(converter.setFormat(capsOf("YUY2", size).get()));
    const KdGstBufferPtr picture = bars(infoOf("YUY2", size, "bt601"));
    QImage wide(size + QSize(10, 0), QImage::Format_ARGB32);
    wide.fill(0x12345678);
    QVERIFY(converter.toArgb(picture.get(), wide.bits(), wide.bytesPerLine()));
    QVERIFY(showsBars(wide.copy(QRect(QPoint(0, 0), size))));
    for (int y = 0; y < size.height(); ++y) {
        QCOMPARE(wide.pixel(size.width(), y), QRgb(0x12345678));
    }
}

void tst_KdPictureConverter::whatIsNoPictureIsRefused()
{
    KdPictureConverter converter;
    QVERIFY(!converter.setFormat(nullptr));
    for (const char* text : {"audio/x-raw", "image/jpeg, width=64, height=48", "video/x-raw",
                             "video/x-raw, format=YUY2, width=[ 1, 2 ], height=48"}) {
        const KdGstCapsPtr caps(gst_caps_from_string(text));
        QVERIFY2(!converter.setFormat(caps.get()), text);
    }
    QVERIFY(converter.size().isEmpty());
    const KdGstBufferPtr picture = bars(infoOf("I420", QSize(96, 64), "bt601"));
    uchar pixel[4] = {};
    QVERIFY(!converter.toArgb(picture.get(), pixel, 4));
    QVERIFY(!converter.toI420(picture.get(), picture.get()));
}

void tst_KdPictureConverter::aPictureThatIsTooSmallIsRefused()
{
    // GStreamer says what it thinks of such a buffer.
    allowLog(QStringLiteral("."));
    const QSize size(96, 64);
    for (const char* format : {"YUY2", "NV12", "BGRx"}) {
        KdPictureConverter converter;
        QVERIFY(converter.setFormat(capsOf(format, size).get()));
        const KdGstBufferPtr small = bars(infoOf(format, QSize(96, 32), "bt601"));
        QVERIFY(argbOf(converter, small.get()).isNull());
        QVERIFY(argbOf(converter, nullptr).isNull());
    }
}

void tst_KdPictureConverter::theFormatMayChange()
{
    KdPictureConverter converter;
    for (int round = 0; round < 3; ++round) {
        for (const char* format : {"P010_10LE", "YUY2", "RGB16"}) {
            const QSize size(96 + 6 * round, 64);
            QVERIFY(converter.setFormat(capsOf(format, size).get()));
            QVERIFY(showsBars(argbOf(converter, bars(infoOf(format, size, "bt601")).get())));
        }
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPictureConverter>(argc, argv);
}

#include "tst_KdPictureConverter.moc"

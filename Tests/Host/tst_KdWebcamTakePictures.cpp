#include "WebcamTakeFixture.h"

#include <Support/ClipProbe.h>
#include <Support/FlashBeep.h>
#include <Support/MediaProbe.h>

#include <QElapsedTimer>

#include <gst/video/video.h>

#include <cmath>

using namespace KdVBLMODEL;
using namespace WebcamTakeTest;

/** The pictures of a take: that all of them are there, at their time, and look as they should. */
class tst_KdWebcamTakePictures : public WebcamTakeFixture
{
    Q_OBJECT

private Q_SLOTS:
    void everyPictureIsInTheFile_data();
    void everyPictureIsInTheFile();
    void anEvenCameraGivesAConstantRate_data();
    void anEvenCameraGivesAConstantRate();
    void coloursAreKeptAndNamed_data();
    void coloursAreKeptAndNamed();
    void flipAndCircleAreRecorded_data();
    void flipAndCircleAreRecorded();
    void flipAndShapeChangeInMidTake();
    void allSizesAreRecorded_data();
    void allSizesAreRecorded();
    void paddedLinesAreReadAsTheBufferSays();
    void badPicturesAreLeftOut();
    void aMachineThatIsTooSlowLosesPicturesAndNothingElse();
};

void tst_KdWebcamTakePictures::everyPictureIsInTheFile_data()
{
    QTest::addColumn<double>("asked");
    QTest::addColumn<double>("cameraRate");
    QTest::addColumn<int>("jitterMs");
    QTest::newRow("as asked") << 30.0 << 30.0 << 0;
    QTest::newRow("a camera whose times swing") << 30.0 << 30.0 << 12;
    QTest::newRow("a camera that is too fast") << 30.0 << 31.0 << 5;
    QTest::newRow("twice as fast as asked") << 30.0 << 60.0 << 2;
    QTest::newRow("slow in the dark") << 30.0 << 11.3 << 2;
    QTest::newRow("of television") << 29.97 << 30000.0 / 1001.0 << 0;
    QTest::newRow("one a second") << 1.0 << 1.0 << 0;
    QTest::newRow("very fast") << 120.0 << 120.0 << 1;
}

void tst_KdWebcamTakePictures::everyPictureIsInTheFile()
{
    QFETCH(double, asked);
    QFETCH(double, cameraRate);
    QFETCH(int, jitterMs);
    KdWebcamTakeFormat format = clipFormat(false);
    format.frameRate = asked;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.cameraRate = cameraRate;
    feeder.jitterNs = qint64(jitterMs) * 1000000;
    feeder.run(6.0);
    QTRY_COMPARE_WITH_TIMEOUT(take.waitingPictures(), 0, 20000);
    QVERIFY(take.finish());
    QCOMPARE(take.lostPictures(), qint64(0));
    const ClipInfo clip = ClipProbe::probe(path());
    QCOMPARE(clip.pictures(), feeder.picturesGiven);
    for (int i = 0; i < clip.pictures(); ++i) {
        // Shown when it was taken, give or take what the eye does not notice.
        const double taken = i / cameraRate;
        const double most = 0.016 + 2 * jitterMs * 0.001;
        QVERIFY2(std::abs(clip.pictureTimes[i] - taken) < most,
                 qPrintable(QStringLiteral("%1: %2").arg(i).arg(clip.pictureTimes[i])));
    }
}

void tst_KdWebcamTakePictures::anEvenCameraGivesAConstantRate_data()
{
    QTest::addColumn<double>("rate");
    QTest::newRow("30") << 30.0;
    QTest::newRow("29.97") << 30000.0 / 1001.0;
    QTest::newRow("25") << 25.0;
    QTest::newRow("60") << 60.0;
    QTest::newRow("7.5") << 7.5;
}

void tst_KdWebcamTakePictures::anEvenCameraGivesAConstantRate()
{
    QFETCH(double, rate);
    KdWebcamTakeFormat format = clipFormat(false);
    format.frameRate = rate;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.jitterNs = 3000000;
    feeder.run(10.0);
    QVERIFY(take.finish());
    const ClipInfo clip = ClipProbe::probe(path());
    int sinceKey = 0;
    for (int i = 0; i + 1 < clip.pictures(); ++i) {
        QVERIFY2(std::abs(clip.pictureTimes[i] - i / rate) < 0.0006,
                 qPrintable(QStringLiteral("%1: %2").arg(i).arg(clip.pictureTimes[i])));
        // A second, at most, from one that stands alone to the next.
        sinceKey = clip.isKeyPicture[i] ? 0 : sinceKey + 1;
        QVERIFY2(sinceKey < std::lround(rate), qPrintable(QString::number(i)));
    }
    QVERIFY(std::abs(clip.pictureLengths.last() - 1.0 / rate) < 0.001);
}

void tst_KdWebcamTakePictures::coloursAreKeptAndNamed_data()
{
    QTest::addColumn<QString>("colorimetry");
    QTest::addColumn<QString>("matrix");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QSize>("size");
    QTest::newRow("bt709") << QStringLiteral("bt709") << QStringLiteral("bt709")
                           << QStringLiteral("tv") << QSize(320, 240);
    QTest::newRow("bt601") << QStringLiteral("bt601") << QStringLiteral("smpte170m")
                           << QStringLiteral("tv") << QSize(320, 240);
    QTest::newRow("full range") << QStringLiteral("1:4:0:0") << QStringLiteral("smpte170m")
                                << QStringLiteral("pc") << QSize(320, 240);
    QTest::newRow("small, as usual")
        << QString() << QStringLiteral("smpte170m") << QStringLiteral("tv") << QSize(640, 480);
    QTest::newRow("large, as usual")
        << QString() << QStringLiteral("bt709") << QStringLiteral("tv") << QSize(1280, 720);
}

void tst_KdWebcamTakePictures::coloursAreKeptAndNamed()
{
    QFETCH(QString, colorimetry);
    QFETCH(QString, matrix);
    QFETCH(QString, range);
    QFETCH(QSize, size);
    KdWebcamTakeFormat format = clipFormat(false, size);
    format.colorimetry = colorimetry;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    const KdGstBufferPtr picture = colourful(size);
    for (int i = 0; i < 5; ++i) {
        take.feedPicture(picture.get(), 1000000000 + i * 33333333);
    }
    QVERIFY(take.finish());
    const ClipInfo clip = ClipProbe::probe(path());
    QCOMPARE(clip.colourMatrix, matrix);
    QCOMPARE(clip.colourRange, range);
    const QByteArray decoded = ClipProbe::picture(path(), 4);
    for (int plane = 0; plane < 3; ++plane) {
        const QSize part = plane == 0 ? size : size / 2;
        for (const QPoint& at : {QPoint(1, 1), QPoint(3, 1), QPoint(1, 3), QPoint(3, 3)}) {
            const int x = part.width() * at.x() / 4;
            const int y = part.height() * at.y() / 4;
            const int found = pixel(decoded, size, plane, x, y);
            QVERIFY2(std::abs(found - quarters(size, plane, x, y)) <= 3,
                     qPrintable(QStringLiteral("plane %1: %2").arg(plane).arg(found)));
        }
    }
}

void tst_KdWebcamTakePictures::flipAndCircleAreRecorded_data()
{
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<bool>("isCircle");
    QTest::newRow("as it is") << false << false;
    QTest::newRow("flipped") << true << false;
    QTest::newRow("a circle") << false << true;
    QTest::newRow("a flipped circle") << true << true;
}

void tst_KdWebcamTakePictures::flipAndCircleAreRecorded()
{
    QFETCH(bool, isFlipped);
    QFETCH(bool, isCircle);
    const QSize size(320, 180);
    KdWebcamTakeFormat format = clipFormat(false, size);
    format.isFlipped = isFlipped;
    format.shape = isCircle ? fcrsCircle : fcrsSquare;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    const KdGstBufferPtr picture = colourful(size);
    for (int i = 0; i < 3; ++i) {
        take.feedPicture(picture.get(), 1000000000 + i * 33333333);
    }
    QVERIFY(take.finish());
    const QByteArray decoded = ClipProbe::picture(path(), 2);
    for (const QPoint& at : {QPoint(120, 50), QPoint(200, 50), QPoint(120, 130), QPoint(200, 130),
                             QPoint(20, 20), QPoint(300, 160), QPoint(20, 90)}) {
        const double distance = std::hypot(at.x() - 160.0, at.y() - 90.0);
        const int source = isFlipped ? 319 - at.x() : at.x();
        const int expected = isCircle && distance > 90.0 ? 16 : quarters(size, 0, source, at.y());
        const int found = pixel(decoded, size, 0, at.x(), at.y());
        QVERIFY2(std::abs(found - expected) <= 4,
                 qPrintable(QStringLiteral("%1,%2: %3").arg(at.x()).arg(at.y()).arg(found)));
    }
}

void tst_KdWebcamTakePictures::flipAndShapeChangeInMidTake()
{
    const QSize size(320, 180);
    KdWebcamTake take;
    QVERIFY(take.open(path(), clipFormat(false, size), 100));
    const KdGstBufferPtr picture = colourful(size);
    qint64 at = 1000000000;
    const auto give = [&] {
        for (int i = 0; i < 5; ++i, at += 33333333) {
            take.feedPicture(picture.get(), at);
        }
    };
    give();
    take.setFlip(true);
    give();
    take.setShape(fcrsCircle);
    give();
    QVERIFY(take.finish());
    const int left = quarters(size, 0, 20, 20);
    const int right = quarters(size, 0, 300, 20);
    QVERIFY(std::abs(pixel(ClipProbe::picture(path(), 4), size, 0, 20, 20) - left) <= 6);
    QVERIFY(std::abs(pixel(ClipProbe::picture(path(), 9), size, 0, 20, 20) - right) <= 6);
    QVERIFY(std::abs(pixel(ClipProbe::picture(path(), 14), size, 0, 20, 20) - 16) <= 6);
}

void tst_KdWebcamTakePictures::allSizesAreRecorded_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("written");
    QTest::newRow("smallest") << QSize(16, 16) << QSize(16, 16);
    QTest::newRow("odd") << QSize(321, 241) << QSize(320, 240);
    QTest::newRow("no multiple of 16") << QSize(1002, 562) << QSize(1002, 562);
    QTest::newRow("upright") << QSize(180, 320) << QSize(180, 320);
    QTest::newRow("1080p") << QSize(1920, 1080) << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160) << QSize(3840, 2160);
    QTest::newRow("largest") << QSize(4096, 2304) << QSize(4096, 2304);
}

void tst_KdWebcamTakePictures::allSizesAreRecorded()
{
    QFETCH(QSize, size);
    QFETCH(QSize, written);
    const KdWebcamTakeFormat format = clipFormat(true, size);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(1.0);
    // The feeder's time runs faster than a camera's; what waits at the end may be left out.
    QTRY_COMPARE_WITH_TIMEOUT(take.waitingPictures(), 0, 20000);
    QVERIFY(take.finish());
    QCOMPARE(take.lostPictures(), qint64(0));
    const MediaInfo media = MediaProbe::probe(path());
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QCOMPARE(media.videoCodec, QStringLiteral("h264"));
    QCOMPARE(QSize(media.width, media.height), written);
    QVERIFY(std::abs(media.seconds - 1.0) < 0.06);
    QCOMPARE(FlashBeep::offsets(path()).size(), 1);
}

void tst_KdWebcamTakePictures::paddedLinesAreReadAsTheBufferSays()
{
    const QSize size(322, 182);
    constexpr int kStride = 512;
    KdGstBufferPtr padded(gst_buffer_new_allocate(nullptr, gsize(kStride) * 182 * 2, nullptr));
    gst_buffer_memset(padded.get(), 0, 77, gsize(kStride) * 182 * 2);
    const gsize offsets[4] = {0, gsize(kStride) * 182, gsize(kStride) * (182 + 91), 0};
    const gint strides[4] = {kStride, kStride, kStride, 0};
    gst_buffer_add_video_meta_full(padded.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_I420,
                                   322, 182, 3, const_cast<gsize*>(offsets),
                                   const_cast<gint*>(strides));
    GstMapInfo map;
    gst_buffer_map(padded.get(), &map, GST_MAP_WRITE);
    for (int plane = 0; plane < 3; ++plane) {
        for (int y = 0; y < (plane == 0 ? 182 : 91); ++y) {
            for (int x = 0; x < (plane == 0 ? 322 : 161); ++x) {
                map.data[offsets[plane] + static_cast<gsize>(y * kStride + x)] =
                    static_cast<guint8>(quarters(size, plane, x, y));
            }
        }
    }
    gst_buffer_unmap(padded.get(), &map);
    KdWebcamTake take;
    QVERIFY(take.open(path(), clipFormat(false, size), 100));
    for (int i = 0; i < 4; ++i) {
        take.feedPicture(padded.get(), 1000000000 + i * 33333333);
    }
    QVERIFY(take.finish());
    const QByteArray decoded = ClipProbe::picture(path(), 3);
    for (const QPoint& at : {QPoint(10, 10), QPoint(310, 10), QPoint(10, 170), QPoint(310, 170)}) {
        QVERIFY(std::abs(pixel(decoded, size, 0, at.x(), at.y()) -
                         quarters(size, 0, at.x(), at.y())) <= 4);
    }
}

void tst_KdWebcamTakePictures::badPicturesAreLeftOut()
{
    expectLog(QStringLiteral("^KdWebcamTake::feedPicture: A picture that is none of 320x180"));
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 0));
    ClipFeeder feeder(take, format);
    const KdGstBufferPtr small = TestPicture::plain(QSize(160, 90), 100);
    const KdGstBufferPtr nothing(gst_buffer_new());
    KdGstBufferPtr other(TestPicture::plain(QSize(640, 360), 100));
    gst_buffer_add_video_meta(other.get(), GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_I420, 640,
                              360);
    for (int i = 0; i < 10; ++i) {
        feeder.run(0.2);
        QVERIFY(!take.feedPicture(nullptr, feeder.nowNs()));
        QVERIFY(!take.feedPicture(small.get(), feeder.nowNs()));
        QVERIFY(!take.feedPicture(nothing.get(), feeder.nowNs()));
        QVERIFY(!take.feedPicture(other.get(), feeder.nowNs()));
        QVERIFY(!take.feedSound(nullptr, feeder.nowNs()));
        take.feedSound(nothing.get(), feeder.nowNs());
    }
    QVERIFY(take.finish());
    const ClipInfo clip = ClipProbe::probe(path());
    QCOMPARE(clip.pictures(), feeder.picturesGiven);
    QVERIFY(farthest(FlashBeep::offsets(path())) < kMostApart);
    const QStringList lines = logLines().filter(QStringLiteral("none of 320x180"));
    QCOMPARE(lines.size(), 1);
}

void tst_KdWebcamTakePictures::aMachineThatIsTooSlowLosesPicturesAndNothingElse()
{
    const QSize size(3840, 2160);
    KdWebcamTakeFormat format = clipFormat(false, size);
    format.frameRate = 60.0;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    const KdGstBufferPtr bright = TestPicture::plain(size, 200);
    const KdGstBufferPtr dark = TestPicture::plain(size, 50);
    qint64 given = 0;
    // Faster than any machine encodes them.
    for (; given < 100 || (take.lostPictures() == 0 && given < 2000); ++given) {
        take.feedPicture(given % 2 ? bright.get() : dark.get(), 1000000000 + given * 16666667);
    }
    QVERIFY(take.lostPictures() > 0);
    QVERIFY(!take.mustEnd());
    QElapsedTimer stop;
    stop.start();
    QVERIFY(take.finish());
    QVERIFY2(stop.elapsed() < 2000, qPrintable(QString::number(stop.elapsed())));
    const ClipInfo clip = ClipProbe::probe(path());
    QCOMPARE(qint64(clip.pictures()), given - take.lostPictures());
    QVERIFY(MediaProbe::probe(path()).isReadable);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamTakePictures>(argc, argv);
}

#include "tst_KdWebcamTakePictures.moc"

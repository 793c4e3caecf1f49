#include "ClipFeeder.h"

#include <KdVBLModel/KdAudioChain.h>
#include <Support/ClipProbe.h>
#include <Support/FlashBeep.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QElapsedTimer>

#include <gst/video/video.h>

#include <cmath>
#include <limits>
#include <thread>

using namespace KdVBLMODEL;

namespace {

constexpr double kMostApart = 0.040;
constexpr double kMostUnequal = 0.025;

KdWebcamTakeFormat clipFormat(bool hasSound, QSize size = QSize(320, 180))
{
    KdWebcamTakeFormat format;
    format.size = size;
    format.hasSound = hasSound;
    format.sound.samplerate = 48000;
    return format;
}

QString text(const QVector<double>& values)
{
    QStringList texts;
    for (const double value : values) {
        texts.append(QString::number(value));
    }
    return texts.join(QLatin1Char(' '));
}

double farthest(const QVector<double>& offsets)
{
    double most = 0.0;
    for (const double offset : offsets) {
        most = std::max(most, std::abs(offset));
    }
    return most;
}

/** The pixel of a decoded picture; plane 0 is brightness. */
int pixel(const QByteArray& picture, QSize size, int plane, int x, int y)
{
    const int luma = size.width() * size.height();
    const int width = plane == 0 ? size.width() : size.width() / 2;
    const int begin = plane == 0 ? 0 : luma + (plane - 1) * luma / 4;
    return static_cast<uchar>(picture[begin + y * width + x]);
}

/** Something different in each quarter of the picture. */
int quarters(QSize size, int plane, int x, int y)
{
    static const int colours[4][3] = {{81, 90, 240}, {145, 54, 34}, {41, 240, 110}, {210, 16, 146}};
    const int scale = plane == 0 ? 1 : 2;
    const int quarter =
        (x * scale * 2 >= size.width() ? 1 : 0) + (y * scale * 2 >= size.height() ? 2 : 0);
    return colours[quarter][plane];
}

KdGstBufferPtr colourful(QSize size)
{
    return TestPicture::painted(
        size, [size](int plane, int x, int y) { return quarters(size, plane, x, y); });
}

} // namespace

/** A take of pictures and sound, from what comes in to what a player makes of the file. */
class tst_KdWebcamTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void soundAndPictureStayTogether_data();
    void soundAndPictureStayTogether();
    void tenPausesPartNothing_data();
    void tenPausesPartNothing();
    void bothTracksBeginAndEndTogether_data();
    void bothTracksBeginAndEndTogether();
    void everyPictureIsInTheFile_data();
    void everyPictureIsInTheFile();
    void anEvenCameraGivesAConstantRate_data();
    void anEvenCameraGivesAConstantRate();
    void aMicrophoneThatStaysSilentIsNotWaitedFor();
    void aMicrophoneThatComesLateIsInStep();
    void soundThatStopsBecomesSilenceAndComesBackInStep();
    void soundThatWasHeldUpStaysInStep();
    void picturesThatStopStandStillWhileTheSoundGoesOn();
    void theTimeCountsFromTheFirstPictureAndLeavesPausesOut();
    void theFinishedLengthIsTheTimeThatWasTold();
    void aTakeThatIsPausedFromTheStartHasNoFile();
    void coloursAreKeptAndNamed_data();
    void coloursAreKeptAndNamed();
    void flipAndCircleAreRecorded_data();
    void flipAndCircleAreRecorded();
    void flipAndShapeChangeInMidTake();
    void allSizesAreRecorded_data();
    void allSizesAreRecorded();
    void paddedLinesAreReadAsTheBufferSays();
    void impossibleFormatsAreRefused_data();
    void impossibleFormatsAreRefused();
    void badPicturesAreLeftOut();
    void theLastTakeIsReplacedOnlyByANewOne();
    void anExistingFileIsRefusedAndKept();
    void aFolderDeletedInMidTakeIsNoSuccess();
    void nothingEntersAfterTheClose();
    void aMachineThatIsTooSlowLosesPicturesAndNothingElse();
    void waitingForAPictureEndsWithTheFirst();
    void aTakeIsUsedOnce();

private:
    QString path() const { return temporaryPath(QStringLiteral("take.mp4")); }
    QStringList files() const
    {
        return QDir(temporaryPath(QString())).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
};

void tst_KdWebcamTake::soundAndPictureStayTogether_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::addColumn<int>("bitrateMode");
    QTest::addColumn<double>("cameraRate");
    QTest::addColumn<double>("soundRate");
    QTest::addColumn<int>("jitterMs");
    QTest::newRow("48 kHz, variable") << 48000 << int(fbmVariable) << 30.0 << 48000.0 << 0;
    QTest::newRow("44.1 kHz, constant") << 44100 << int(fbmConstant) << 30.0 << 48000.0 << 0;
    QTest::newRow("22 kHz, constant") << 22050 << int(fbmConstant) << 30.0 << 48000.0 << 0;
    QTest::newRow("a slow camera") << 44100 << int(fbmVariable) << 15.0 << 48000.0 << 0;
    QTest::newRow("a camera that is a little off")
        << 44100 << int(fbmVariable) << 29.3 << 48000.0 << 0;
    QTest::newRow("a camera whose times swing")
        << 44100 << int(fbmVariable) << 30.0 << 48000.0 << 8;
    QTest::newRow("a microphone with a slow clock")
        << 44100 << int(fbmVariable) << 30.0 << 47800.0 << 0;
    QTest::newRow("a microphone with a fast clock")
        << 44100 << int(fbmVariable) << 30.0 << 48200.0 << 0;
}

void tst_KdWebcamTake::soundAndPictureStayTogether()
{
    QFETCH(int, samplerate);
    QFETCH(int, bitrateMode);
    QFETCH(double, cameraRate);
    QFETCH(double, soundRate);
    QFETCH(int, jitterMs);
    KdWebcamTakeFormat format = clipFormat(true);
    format.sound.samplerate = samplerate;
    format.sound.bitrateMode = bitrateMode;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.cameraRate = cameraRate;
    feeder.soundRate = soundRate;
    feeder.jitterNs = qint64(jitterMs) * 1000000;
    feeder.run(20.2);
    QVERIFY(take.finish());
    const QVector<double> offsets = FlashBeep::offsets(path());
    QCOMPARE(offsets.size(), 20);
    // A camera sees a flash up to a picture later than it is.
    const double mostSeen = cameraRate < 29.9 ? 1.0 / cameraRate : 0.0;
    QVERIFY2(farthest(offsets) < qMax(mostSeen, 0.025), qPrintable(text(offsets)));
    QVERIFY2(farthest(offsets) < kMostApart || cameraRate < 25.0, qPrintable(text(offsets)));
}

void tst_KdWebcamTake::tenPausesPartNothing_data()
{
    QTest::addColumn<double>("recorded");
    QTest::addColumn<double>("paused");
    QTest::newRow("short pauses") << 1.013 << 0.204;
    QTest::newRow("long pauses") << 1.204 << 3.517;
}

void tst_KdWebcamTake::tenPausesPartNothing()
{
    QFETCH(double, recorded);
    QFETCH(double, paused);
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(1.8);
    for (int i = 0; i < 10; ++i) {
        take.pause(feeder.nowNs());
        feeder.run(paused);
        take.resume(feeder.nowNs());
        feeder.run(recorded);
    }
    QVERIFY(take.finish());
    const QVector<double> offsets = FlashBeep::offsets(path());
    QVERIFY2(offsets.size() >= 8, qPrintable(text(offsets)));
    QVERIFY2(farthest(offsets) < kMostApart, qPrintable(text(offsets)));
    const double length = 1.8 + 10 * recorded;
    QVERIFY2(std::abs(static_cast<double>(take.recordedMs()) / 1000.0 - length) < 0.06,
             qPrintable(QString::number(take.recordedMs())));
    const ClipInfo clip = ClipProbe::probe(path());
    QVERIFY(std::abs(clip.pictureLength - clip.soundLength) < kMostUnequal);
    QVERIFY(std::abs(clip.pictureLength - length) < 0.06);
}

void tst_KdWebcamTake::bothTracksBeginAndEndTogether_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::addColumn<int>("bitrateMode");
    QTest::addColumn<int>("cameraDelayMs");
    QTest::addColumn<double>("seconds");
    for (const int delay : {0, 40, 400}) {
        QTest::addRow("44.1 kHz, pictures %d ms late", delay)
            << 44100 << int(fbmVariable) << delay << 3.333;
    }
    QTest::newRow("48 kHz, constant") << 48000 << int(fbmConstant) << 40 << 2.71;
    QTest::newRow("short") << 48000 << int(fbmVariable) << 40 << 0.2;
}

void tst_KdWebcamTake::bothTracksBeginAndEndTogether()
{
    QFETCH(int, samplerate);
    QFETCH(int, bitrateMode);
    QFETCH(int, cameraDelayMs);
    QFETCH(double, seconds);
    KdWebcamTakeFormat format = clipFormat(true);
    format.sound.samplerate = samplerate;
    format.sound.bitrateMode = bitrateMode;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.cameraDelayNs = qint64(cameraDelayMs) * 1000000;
    feeder.run(seconds);
    QVERIFY(take.finish());
    const ClipInfo clip = ClipProbe::probe(path());
    QCOMPARE(clip.pictureBegin, 0.0);
    QCOMPARE(clip.soundBegin, 0.0);
    QVERIFY2(std::abs(clip.pictureLength - clip.soundLength) < kMostUnequal,
             qPrintable(QStringLiteral("%1 %2").arg(clip.pictureLength).arg(clip.soundLength)));
    QVERIFY2(std::abs(clip.pictureLength - seconds) < 0.05,
             qPrintable(QString::number(clip.pictureLength)));
    const double heard = MediaProbe::samples(path(), 48000).size() / 48000.0;
    QVERIFY2(std::abs(clip.pictureLength - heard) < kMostUnequal,
             qPrintable(QString::number(heard)));
    QVERIFY(MediaProbe::probe(path()).isReadable);
}

void tst_KdWebcamTake::everyPictureIsInTheFile_data()
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

void tst_KdWebcamTake::everyPictureIsInTheFile()
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

void tst_KdWebcamTake::anEvenCameraGivesAConstantRate_data()
{
    QTest::addColumn<double>("rate");
    QTest::newRow("30") << 30.0;
    QTest::newRow("29.97") << 30000.0 / 1001.0;
    QTest::newRow("25") << 25.0;
    QTest::newRow("60") << 60.0;
    QTest::newRow("7.5") << 7.5;
}

void tst_KdWebcamTake::anEvenCameraGivesAConstantRate()
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

void tst_KdWebcamTake::aMicrophoneThatStaysSilentIsNotWaitedFor()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.hasSound = false;
    feeder.run(5.0);
    QVERIFY(take.hasPicture());
    QVERIFY(take.finish());
    const ClipInfo clip = ClipProbe::probe(path());
    QVERIFY2(clip.pictureLength > 4.6 && clip.pictureLength < 4.8,
             qPrintable(QString::number(clip.pictureLength)));
    QVERIFY2(std::abs(clip.pictureLength - clip.soundLength) < kMostUnequal,
             qPrintable(QString::number(clip.soundLength)));
    QVERIFY(MediaProbe::peakDecibel(path()) < -80.0);
}

void tst_KdWebcamTake::aMicrophoneThatComesLateIsInStep()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.hasSound = false;
    feeder.run(1.234);
    feeder.hasSound = true;
    feeder.run(6.0);
    QVERIFY(take.finish());
    const QVector<double> offsets = FlashBeep::offsets(path()).mid(1);
    QCOMPARE(offsets.size(), 6);
    QVERIFY2(farthest(offsets) < kMostApart, qPrintable(text(offsets)));
}

void tst_KdWebcamTake::soundThatStopsBecomesSilenceAndComesBackInStep()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(3.0);
    feeder.hasSound = false;
    feeder.run(4.1);
    QVERIFY(std::abs(static_cast<double>(take.recordedMs()) - 7000.0) < 400.0);
    feeder.hasSound = true;
    feeder.run(3.0);
    QVERIFY(take.finish());
    const QVector<double> beeps = FlashBeep::beeps(path());
    QCOMPARE(FlashBeep::flashes(path()).size(), 10);
    QVERIFY2(beeps.size() == 6, qPrintable(text(beeps)));
    for (const double beep : beeps) {
        const double off = beep - std::floor(beep) - FlashBeep::kFirst;
        QVERIFY2(std::abs(off) < kMostApart, qPrintable(text(beeps)));
    }
    const ClipInfo clip = ClipProbe::probe(path());
    QVERIFY(std::abs(clip.pictureLength - clip.soundLength) < kMostUnequal);
}

void tst_KdWebcamTake::soundThatWasHeldUpStaysInStep()
{
    for (const qint64 heldUpMs : {200, 700}) {
        const QString file = temporaryPath(QStringLiteral("%1.mp4").arg(heldUpMs));
        const KdWebcamTakeFormat format = clipFormat(true);
        KdWebcamTake take;
        QVERIFY(take.open(file, format, 100));
        ClipFeeder feeder(take, format);
        feeder.run(2.7);
        feeder.holdSoundUp(heldUpMs * 1000000);
        feeder.run(6.0);
        QVERIFY(take.finish());
        const QVector<double> offsets = FlashBeep::offsets(file);
        QVERIFY2(offsets.size() == 9 && farthest(offsets.mid(0, 3)) < kMostApart &&
                     farthest(offsets.mid(4)) < kMostApart,
                 qPrintable(text(offsets)));
        const ClipInfo clip = ClipProbe::probe(file);
        QVERIFY2(std::abs(clip.soundLength - 8.7) < 0.06,
                 qPrintable(QString::number(clip.soundLength)));
    }
}

void tst_KdWebcamTake::picturesThatStopStandStillWhileTheSoundGoesOn()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(2.0);
    feeder.hasPictures = false;
    feeder.run(3.0);
    // What was heard meanwhile is in the file already, where a crash would find it.
    const QString copy = temporaryPath(QStringLiteral("copy.mp4"));
    QTRY_VERIFY_WITH_TIMEOUT((QFile::remove(copy), QFile::copy(path(), copy)) &&
                                 MediaProbe::probe(copy).seconds >= 4.0,
                             10000);
    QVERIFY(take.finish());
    const ClipInfo clip = ClipProbe::probe(path());
    QVERIFY2(std::abs(clip.soundLength - 5.0) < 0.05,
             qPrintable(QString::number(clip.soundLength)));
    QVERIFY(std::abs(clip.pictureLength - clip.soundLength) < kMostUnequal);
    QCOMPARE(FlashBeep::beeps(path()).size(), 5);
}

void tst_KdWebcamTake::theTimeCountsFromTheFirstPictureAndLeavesPausesOut()
{
    for (const bool hasSound : {true, false}) {
        const KdWebcamTakeFormat format = clipFormat(hasSound);
        KdWebcamTake take;
        QVERIFY(take.open(temporaryPath(QStringLiteral("%1.mp4").arg(hasSound)), format, 100));
        ClipFeeder feeder(take, format);
        feeder.hasPictures = false;
        feeder.run(1.0);
        QVERIFY(feeder.times.isEmpty());
        QVERIFY(!take.hasPicture());
        QCOMPARE(take.recordedMs(), qint64(0));
        feeder.hasPictures = true;
        feeder.run(0.55);
        take.pause(feeder.nowNs());
        feeder.run(0.1); // what was taken before the pause comes in
        const QVector<qint64> before = feeder.times;
        QVERIFY(before.size() >= 4 && before.size() <= 6);
        for (int i = 0; i < before.size(); ++i) {
            QCOMPARE(before[i] / 100, qint64(i) + 1);
        }
        feeder.run(1.0);
        QCOMPARE(feeder.times, before);
        take.resume(feeder.nowNs());
        feeder.run(0.3);
        QVERIFY(feeder.times.last() > before.last());
        QVERIFY2(take.recordedMs() >= 750 && take.recordedMs() < 900,
                 qPrintable(QString::number(take.recordedMs())));
        QVERIFY(take.finish());
    }
}

void tst_KdWebcamTake::theFinishedLengthIsTheTimeThatWasTold()
{
    for (const bool hasSound : {true, false}) {
        const QString file = temporaryPath(QStringLiteral("%1.mp4").arg(hasSound));
        const KdWebcamTakeFormat format = clipFormat(hasSound);
        KdWebcamTake take;
        QVERIFY(take.open(file, format, 100));
        ClipFeeder(take, format).run(2.345);
        const qint64 told = take.recordedMs();
        QVERIFY(take.finish());
        const double length = MediaProbe::probe(file).seconds * 1000.0;
        QVERIFY2(std::abs(length - static_cast<double>(take.recordedMs())) < 3.0,
                 qPrintable(QStringLiteral("%1 %2").arg(length).arg(take.recordedMs())));
        QVERIFY2(std::abs(length - static_cast<double>(told)) < 40.0,
                 qPrintable(QStringLiteral("%1 %2").arg(length).arg(told)));
    }
}

void tst_KdWebcamTake::aTakeThatIsPausedFromTheStartHasNoFile()
{
    for (const bool hasSound : {true, false}) {
        const KdWebcamTakeFormat format = clipFormat(hasSound);
        KdWebcamTake take;
        QVERIFY(take.open(path(), format, 100));
        ClipFeeder feeder(take, format);
        take.pause(feeder.nowNs());
        feeder.run(1.0);
        QVERIFY(!take.hasPicture());
        QVERIFY(!take.finish());
        QCOMPARE(files(), QStringList());
    }
}

void tst_KdWebcamTake::coloursAreKeptAndNamed_data()
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

void tst_KdWebcamTake::coloursAreKeptAndNamed()
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

void tst_KdWebcamTake::flipAndCircleAreRecorded_data()
{
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<bool>("isCircle");
    QTest::newRow("as it is") << false << false;
    QTest::newRow("flipped") << true << false;
    QTest::newRow("a circle") << false << true;
    QTest::newRow("a flipped circle") << true << true;
}

void tst_KdWebcamTake::flipAndCircleAreRecorded()
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

void tst_KdWebcamTake::flipAndShapeChangeInMidTake()
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

void tst_KdWebcamTake::allSizesAreRecorded_data()
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

void tst_KdWebcamTake::allSizesAreRecorded()
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

void tst_KdWebcamTake::paddedLinesAreReadAsTheBufferSays()
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

void tst_KdWebcamTake::impossibleFormatsAreRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("rate");
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    QTest::newRow("no size") << QSize() << 30.0;
    QTest::newRow("empty") << QSize(0, 0) << 30.0;
    QTest::newRow("negative") << QSize(-640, 480) << 30.0;
    QTest::newRow("too small") << QSize(14, 480) << 30.0;
    QTest::newRow("too large") << QSize(7680, 4320) << 30.0;
    QTest::newRow("endless") << QSize(2147483647, 2147483647) << 30.0;
    QTest::newRow("rate 0") << QSize(640, 480) << 0.0;
    QTest::newRow("rate below 0") << QSize(640, 480) << -30.0;
    QTest::newRow("rate 1000") << QSize(640, 480) << 1000.0;
    QTest::newRow("no rate") << QSize(640, 480) << none;
    QTest::newRow("endless rate") << QSize(640, 480) << endless;
}

void tst_KdWebcamTake::impossibleFormatsAreRefused()
{
    QFETCH(QSize, size);
    QFETCH(double, rate);
    expectLog(QStringLiteral("^KdWebcamTake::open: .* cannot be recorded"));
    KdWebcamTakeFormat format = clipFormat(true, size);
    format.frameRate = rate;
    KdWebcamTake take;
    QVERIFY(!take.open(path(), format, 100));
    // Whoever does not look loses nothing by it.
    take.pause(1);
    take.resume(2);
    take.setFlip(true);
    QVERIFY(!take.feedPicture(TestPicture::plain(QSize(16, 16), 16).get(), 1));
    QVERIFY(!take.feedSound(nullptr, 1));
    QVERIFY(!take.hasPicture());
    QVERIFY(!take.mustEnd());
    QVERIFY(!take.finish());
    QCOMPARE(files(), QStringList());
}

void tst_KdWebcamTake::badPicturesAreLeftOut()
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

void tst_KdWebcamTake::theLastTakeIsReplacedOnlyByANewOne()
{
    TestFiles::write(path(), "the old take");
    KdWebcamTakeFormat format = clipFormat(true);
    format.takeAgain = true;
    {
        KdWebcamTake unused;
        QVERIFY(unused.open(path(), format, 100));
        QVERIFY(!unused.finish());
    }
    QCOMPARE(TestFiles::read(path()), QByteArray("the old take"));
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder(take, format).run(1.0);
    QVERIFY(take.finish());
    QVERIFY(MediaProbe::probe(path()).isReadable);
    QCOMPARE(files(), QStringList(QStringLiteral("take.mp4")));
}

void tst_KdWebcamTake::anExistingFileIsRefusedAndKept()
{
    expectLog(QStringLiteral("take\\.mp4"));
    TestFiles::write(path(), "precious");
    KdWebcamTake take;
    QVERIFY(!take.open(path(), clipFormat(true), 100));
    QVERIFY(!take.finish());
    QCOMPARE(TestFiles::read(path()), QByteArray("precious"));
    QCOMPARE(files(), QStringList(QStringLiteral("take.mp4")));
}

void tst_KdWebcamTake::aFolderDeletedInMidTakeIsNoSuccess()
{
    expectLog(QStringLiteral("did not end well"));
    const QString folder = temporaryPath(QStringLiteral("folder"));
    QVERIFY(QDir().mkdir(folder));
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(folder + QStringLiteral("/take.mp4"), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(1.0);
    QVERIFY(QDir(folder).removeRecursively());
    feeder.run(1.0);
    QVERIFY(!take.finish());
}

void tst_KdWebcamTake::nothingEntersAfterTheClose()
{
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(1.0);
    take.close();
    const qint64 length = take.recordedMs();
    feeder.times.clear();
    feeder.run(1.0);
    QCOMPARE(take.recordedMs(), length);
    QVERIFY(feeder.times.isEmpty());
    QVERIFY(take.finish());
    QVERIFY(take.finish());
    QVERIFY(std::abs(MediaProbe::probe(path()).seconds - 1.0) < 0.06);
}

void tst_KdWebcamTake::aMachineThatIsTooSlowLosesPicturesAndNothingElse()
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

void tst_KdWebcamTake::waitingForAPictureEndsWithTheFirst()
{
    const KdWebcamTakeFormat format = clipFormat(false);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    QVERIFY(!take.waitForPicture(std::chrono::milliseconds(10)));
    std::thread camera([&] { ClipFeeder(take, format).run(0.1); });
    QVERIFY(take.waitForPicture(std::chrono::seconds(10)));
    camera.join();
}

void tst_KdWebcamTake::aTakeIsUsedOnce()
{
    expectLog(QStringLiteral("^KdWebcamTake::open: The take was used before"));
    const KdWebcamTakeFormat format = clipFormat(true);
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    QVERIFY(!take.open(temporaryPath(QStringLiteral("other.mp4")), format, 100));
    ClipFeeder(take, format).run(0.5);
    QVERIFY(take.finish());
    QCOMPARE(files(), QStringList(QStringLiteral("take.mp4")));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamTake>(argc, argv);
}

#include "tst_KdWebcamTake.moc"

#include "WebcamTakeFixture.h"

#include <Support/ClipProbe.h>
#include <Support/FlashBeep.h>
#include <Support/MediaProbe.h>

#include <cmath>

using namespace KdVBLMODEL;
using namespace WebcamTakeTest;

/** Pictures and sound of a take, which must stay in step whatever happens to either. */
class tst_KdWebcamTakeSync : public WebcamTakeFixture
{
    Q_OBJECT

private Q_SLOTS:
    void soundAndPictureStayTogether_data();
    void soundAndPictureStayTogether();
    void tenPausesPartNothing_data();
    void tenPausesPartNothing();
    void bothTracksBeginAndEndTogether_data();
    void bothTracksBeginAndEndTogether();
    void aMicrophoneThatStaysSilentIsNotWaitedFor();
    void aMicrophoneThatComesLateIsInStep();
    void soundThatStopsBecomesSilenceAndComesBackInStep();
    void soundThatWasHeldUpStaysInStep();
    void picturesThatStopStandStillWhileTheSoundGoesOn();
};

void tst_KdWebcamTakeSync::soundAndPictureStayTogether_data()
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

void tst_KdWebcamTakeSync::soundAndPictureStayTogether()
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

void tst_KdWebcamTakeSync::tenPausesPartNothing_data()
{
    QTest::addColumn<double>("recorded");
    QTest::addColumn<double>("paused");
    QTest::newRow("short pauses") << 1.013 << 0.204;
    QTest::newRow("long pauses") << 1.204 << 3.517;
}

void tst_KdWebcamTakeSync::tenPausesPartNothing()
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

void tst_KdWebcamTakeSync::bothTracksBeginAndEndTogether_data()
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

void tst_KdWebcamTakeSync::bothTracksBeginAndEndTogether()
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

void tst_KdWebcamTakeSync::aMicrophoneThatStaysSilentIsNotWaitedFor()
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

void tst_KdWebcamTakeSync::aMicrophoneThatComesLateIsInStep()
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

void tst_KdWebcamTakeSync::soundThatStopsBecomesSilenceAndComesBackInStep()
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

void tst_KdWebcamTakeSync::soundThatWasHeldUpStaysInStep()
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

void tst_KdWebcamTakeSync::picturesThatStopStandStillWhileTheSoundGoesOn()
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamTakeSync>(argc, argv);
}

#include "tst_KdWebcamTakeSync.moc"

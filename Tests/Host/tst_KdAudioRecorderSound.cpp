#include "MicrophoneFixture.h"
#include "RecorderFixture.h"

#include <Support/MediaProbe.h>

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

using namespace KdVBLMODEL;

namespace {

/**
 * When what is heard at a position of a take was played, by the pitch of the sweep, which starts at
 * 300 Hz and rises by 100 Hz a second. The median of some places: a busy machine has dropouts.
 */
double playedAt(const QVector<float>& samples, double second)
{
    QVector<double> found;
    for (double offset : {-0.06, -0.04, -0.02, 0.0, 0.02, 0.04, 0.06}) {
        double best = 0.0;
        double loudest = -200.0;
        for (int frequency = 300; frequency < 2500; frequency += 4) {
            const double loudness =
                MediaProbe::toneDecibel(samples, 48000, frequency, second + offset, 0.06);
            best = loudness > loudest ? frequency : best;
            loudest = qMax(loudest, loudness);
        }
        found.append((best - 300.0) / 100.0 - offset);
    }
    std::sort(found.begin(), found.end());
    return found[found.size() / 2];
}

} // namespace

/** What is heard of a microphone: as its level, and in the file of a take. */
class tst_KdAudioRecorderSound : public MicrophoneFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void theLevelIsShownBeforeATake();
    void theLevelEndsWithItsSwitchOrItsDevice();
    void aTakeHoldsWhatWasSpokenAtItsLoudness();
    void theTimeOfATakeIsTheLengthOfItsFile();
    void aTakeBeginsWithTheCallThatStartsIt();
    void everyOfferedFormatIsWritten_data();
    void everyOfferedFormatIsWritten();
    void theVolumeIsAppliedToFileAndMeter_data();
    void theVolumeIsAppliedToFileAndMeter();
    void tenPausesAreInNeitherFileNorTime();
};

void tst_KdAudioRecorderSound::initTestCase()
{
    MicrophoneFixture::initTestCase();
    QVERIFY(TestSound::writeSpeech(
        m_sounds.filePath(QStringLiteral("speech.wav")),
        QStringLiteral("The quick brown fox jumps over the lazy dog near the river bank."), 30.0));
    QVERIFY(
        TestSound::writeSweep(m_sounds.filePath(QStringLiteral("sweep.wav")), 300.0, 6300.0, 60.0));
}

void tst_KdAudioRecorderSound::theLevelIsShownBeforeATake()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    recorder->setInterval(20);
    // -12 dB on a scale of 60 dB.
    QTRY_VERIFY2(std::abs(recorder.events().lastLevel() - 80) <= 1,
                 qPrintable(QString::number(recorder.events().lastLevel())));
    QVERIFY(recorder.events().times().isEmpty());
    QVERIFY(playTone(-30.0));
    QTRY_VERIFY2(std::abs(recorder.events().lastLevel() - 50) <= 1,
                 qPrintable(QString::number(recorder.events().lastLevel())));
    m_microphone->stopPlaying();
    QTRY_COMPARE(recorder.events().lastLevel(), 0);
    QVERIFY(!recorder.events().wasCalledOnTestThread());
}

void tst_KdAudioRecorderSound::theLevelEndsWithItsSwitchOrItsDevice()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QTRY_VERIFY(recorder.events().lastLevel() > 70);
    recorder->setDevice(-1);
    QTRY_COMPARE(recorder.events().lastLevel(), 0);
    recorder->setDevice(0);
    QTRY_VERIFY(recorder.events().lastLevel() > 70);
    recorder->setCallbackSwitch3(false);
    recorder->setCallbackSwitch3(true);
    QVERIFY(recorder.hearsDevice());
}

void tst_KdAudioRecorderSound::aTakeHoldsWhatWasSpokenAtItsLoudness()
{
    QVERIFY(plugMicrophone());
    const QString speech = m_sounds.filePath(QStringLiteral("speech.wav"));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(m_microphone->play(speech));
    QVERIFY(recorder.waitForTime(7000));
    QVERIFY(recorder->stop());

    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QCOMPARE(info.audioCodec, QStringLiteral("aac"));
    QCOMPARE(info.samplerate, 44100);
    QCOMPARE(info.channels, 2);
    const double played = MediaProbe::peakDecibel(speech, 0.0, 5.0);
    const double recorded = MediaProbe::peakDecibel(takePath());
    QVERIFY2(std::abs(played - recorded) < 1.0,
             qPrintable(QStringLiteral("%1 dB became %2 dB").arg(played).arg(recorded)));
}

void tst_KdAudioRecorderSound::theTimeOfATakeIsTheLengthOfItsFile()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(3000));
    QVERIFY(recorder->stop());
    const qint64 told = recorder.events().lastTime();
    const double seconds = MediaProbe::probe(takePath()).seconds;
    QVERIFY2(std::abs(seconds - double(told) / 1000.0) < 0.15,
             qPrintable(QStringLiteral("%1 s, told %2 ms").arg(seconds).arg(told)));

    const QVector<qint64> times = recorder.events().times();
    QVERIFY(times.first() <= 100);
    for (int i = 1; i < times.size(); ++i) {
        QVERIFY(times[i] > times[i - 1]);
    }
    QVERIFY(times.size() > 30);
    QVERIFY(!recorder.events().wasCalledOnTestThread());
}

void tst_KdAudioRecorderSound::aTakeBeginsWithTheCallThatStartsIt()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(2000));
    QVERIFY(recorder->stop());
    const qint64 wall = timer.elapsed();
    const double seconds = MediaProbe::probe(takePath()).seconds;
    QVERIFY2(std::abs(seconds - double(wall) / 1000.0) < 0.15,
             qPrintable(QStringLiteral("%1 s of %2 ms").arg(seconds).arg(wall)));
    // The tone is there from the first moment on, behind the encoder's lead-in.
    QVERIFY(MediaProbe::peakDecibel(takePath(), 0.06, 0.05) > -14.0);
}

void tst_KdAudioRecorderSound::everyOfferedFormatIsWritten_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<int>("mode");

    for (const int samplerate : {22050, 24000, 32000, 44100, 48000, 96000}) {
        for (const int channels : {1, 2}) {
            QTest::addRow("%d Hz, %d channels", samplerate, channels)
                << samplerate << channels << 96000 << int(fbmVariable);
        }
    }
    QTest::newRow("constant 96") << 44100 << 2 << 96000 << int(fbmConstant);
    QTest::newRow("constant 320") << 48000 << 2 << 320000 << int(fbmConstant);
    QTest::newRow("512") << 96000 << 2 << 512000 << int(fbmVariable);
    QTest::newRow("more than the rate can hold") << 22050 << 1 << 512000 << int(fbmConstant);
}

void tst_KdAudioRecorderSound::everyOfferedFormatIsWritten()
{
    QFETCH(int, samplerate);
    QFETCH(int, channels);
    QFETCH(int, bitrate);
    QFETCH(int, mode);
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    KdAudioFormat format = RecorderFixture::format(samplerate, channels, bitrate);
    format.bitrateMode = mode;
    QVERIFY(recorder.record(takePath(), format));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());

    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QCOMPARE(info.samplerate, samplerate);
    QCOMPARE(info.channels, channels);
    const double loudness = toneDecibel(takePath());
    QVERIFY2(std::abs(loudness + 12.0) < 1.0, qPrintable(QString::number(loudness)));
}

void tst_KdAudioRecorderSound::theVolumeIsAppliedToFileAndMeter_data()
{
    QTest::addColumn<double>("volume");
    QTest::addColumn<double>("decibel");

    QTest::newRow("-1 leaves it alone") << -1.0 << -12.0;
    QTest::newRow("full") << 1.0 << -12.0;
    QTest::newRow("half") << 0.5 << -18.0;
    QTest::newRow("too much counts as not set") << 7.0 << -12.0;
    QTest::newRow("no number counts as not set") << std::nan("") << -12.0;
}

void tst_KdAudioRecorderSound::theVolumeIsAppliedToFileAndMeter()
{
    QFETCH(double, volume);
    QFETCH(double, decibel);
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    KdAudioFormat format;
    format.volume = volume;
    QVERIFY(recorder.record(takePath(), format));
    QVERIFY(recorder.waitForTime(600));
    const int level = recorder.events().lastLevel();
    QVERIFY(recorder->stop());
    const double recorded = toneDecibel(takePath());
    QVERIFY2(std::abs(recorded - decibel) < 1.0, qPrintable(QString::number(recorded)));
    QVERIFY2(std::abs(level - (100.0 + decibel / 0.6)) <= 1.5, qPrintable(QString::number(level)));
}

void tst_KdAudioRecorderSound::tenPausesAreInNeitherFileNorTime()
{
    QVERIFY(plugMicrophone());
    QVERIFY(m_microphone->play(m_sounds.filePath(QStringLiteral("sweep.wav"))));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QElapsedTimer timer;
    timer.start();
    qint64 pausedMs = 0;
    for (int i = 1; i <= 10; ++i) {
        QVERIFY(recorder.waitForTime(300LL * i));
        recorder->pause();
        const qint64 pausedAt = timer.elapsed();
        QCOMPARE(recorder->curStatus(), fcsPaused);
        const qint64 told = recorder.events().lastTime();
        QVERIFY(recorder.hearsDevice()); // the meter goes on, and some time passes
        QVERIFY(recorder.events().lastTime() <= told + 100);
        recorder->resume();
        pausedMs += timer.elapsed() - pausedAt;
        QCOMPARE(recorder->curStatus(), fcsRecording);
    }
    QVERIFY(recorder.waitForTime(3500));
    const qint64 unpausedMs = timer.elapsed() - pausedMs;
    QVERIFY(recorder->stop());

    const double seconds = MediaProbe::probe(takePath()).seconds;
    const QString report = QStringLiteral("%1 s recorded in %2 ms").arg(seconds).arg(unpausedMs);
    QVERIFY2(std::abs(seconds - double(unpausedMs) / 1000.0) < 0.1, qPrintable(report));
    // What was played in the pauses is missing from it, less what the virtual microphone of a busy
    // machine dropped itself.
    const QVector<float> samples = MediaProbe::samples(takePath());
    const double passed = playedAt(samples, seconds - 0.2) - playedAt(samples, 0.2);
    const double missingMs = (passed - (seconds - 0.4)) * 1000.0;
    QVERIFY2(missingMs > 0.5 * double(pausedMs) && missingMs < double(pausedMs) + 100.0,
             qPrintable(QStringLiteral("%1 ms missing of %2").arg(missingMs).arg(pausedMs)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorderSound>(argc, argv);
}

#include "tst_KdAudioRecorderSound.moc"

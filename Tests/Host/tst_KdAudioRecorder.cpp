#include "RecorderFixture.h"

#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>
#include <Support/VirtualMicrophone.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <cmath>

using namespace KdVBLMODEL;

namespace {

/** How loud the tone is that the tests play. */
double toneDecibel(const QString& path)
{
    return MediaProbe::steadyToneDecibel(path, 997.0);
}

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

/** Takes of a microphone that behaves. */
class tst_KdAudioRecorder : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void withoutAMicrophoneThereIsNoTake();
    void makingARecorderTakesNoTime();
    void aMicrophoneIsListedWithItsKindNameAndIdentity();
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
    void aSecondStartEndsTheTakeAndBeginsAnother();
    void whatIsSetInMidTakeCountsFromTheNextStart();
    void theOutputFileIsThatOfTheRunningTakeThenOfTheLast();
    void callsOutOfOrderAreHarmless();
    void anUnknownDeviceIsNotRecorded_data();
    void anUnknownDeviceIsNotRecorded();
    void anUnusableOutputFileIsRefused_data();
    void anUnusableOutputFileIsRefused();
    void releasingARecorderFinishesItsTake();
    void twoRecordersShareAMicrophone();
    void removingTheObserverInMidTakeIsABarrier();

private:
    QString takePath(const QString& name = QStringLiteral("take.m4a")) const;
    bool plugMicrophone();
    bool playTone(double decibel);

    std::unique_ptr<VirtualMicrophone> m_microphone; ///< stays plugged
    QTemporaryDir m_sounds;
};

void tst_KdAudioRecorder::initTestCase()
{
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("tone.wav")), 997.0, -12.0, 60.0));
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("quiet.wav")), 997.0, -30.0, 60.0));
    QVERIFY(TestSound::writeSpeech(
        m_sounds.filePath(QStringLiteral("speech.wav")),
        QStringLiteral("The quick brown fox jumps over the lazy dog near the river bank."), 30.0));
    QVERIFY(
        TestSound::writeSweep(m_sounds.filePath(QStringLiteral("sweep.wav")), 300.0, 6300.0, 60.0));
}

void tst_KdAudioRecorder::cleanup()
{
    if (m_microphone) {
        m_microphone->stopPlaying();
    }
    KdTestCase::cleanup();
}

void tst_KdAudioRecorder::cleanupTestCase()
{
    m_microphone.reset();
}

QString tst_KdAudioRecorder::takePath(const QString& name) const
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(name);
}

bool tst_KdAudioRecorder::plugMicrophone()
{
    if (!m_microphone) {
        m_microphone = std::make_unique<VirtualMicrophone>();
    }
    return m_microphone->isPlugged() || m_microphone->plug();
}

bool tst_KdAudioRecorder::playTone(double decibel)
{
    const QString name = decibel < -20.0 ? QStringLiteral("quiet.wav") : QStringLiteral("tone.wav");
    return m_microphone->play(m_sounds.filePath(name));
}

void tst_KdAudioRecorder::withoutAMicrophoneThereIsNoTake()
{
    expectLog(QStringLiteral("no audio input is chosen"));
    RecorderFixture recorder;
    QCOMPARE(recorder.deviceNames(), QStringList());
    QVERIFY(!recorder.record(takePath()));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(!QFile::exists(takePath()));
    QVERIFY(recorder->stop());
}

void tst_KdAudioRecorder::makingARecorderTakesNoTime()
{
    // The best of some: a busy machine may take the processor away at any moment.
    qint64 fastest = 1000;
    for (int i = 0; i < 10; ++i) {
        QElapsedTimer timer;
        timer.start();
        IKdAudioRecorder* recorder = createAudioRecorder(this);
        fastest = qMin(fastest, timer.elapsed());
        recorder->release();
    }
    QVERIFY2(fastest < 10, qPrintable(QString::number(fastest)));
}

void tst_KdAudioRecorder::aMicrophoneIsListedWithItsKindNameAndIdentity()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QList<_KdCaptureDevInf> devices;
    devices.append(_KdCaptureDevInf());
    recorder->getDevices(&devices);
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices[0].devType, int(kdtMicrophone));
    QCOMPARE(devices[0].index, 0);
    QCOMPARE(devices[0].name, QStringLiteral("USB Microphone"));
    QCOMPARE(devices[0].id, QStringLiteral("usb_mic"));
}

void tst_KdAudioRecorder::theLevelIsShownBeforeATake()
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

void tst_KdAudioRecorder::theLevelEndsWithItsSwitchOrItsDevice()
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

void tst_KdAudioRecorder::aTakeHoldsWhatWasSpokenAtItsLoudness()
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

void tst_KdAudioRecorder::theTimeOfATakeIsTheLengthOfItsFile()
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

void tst_KdAudioRecorder::aTakeBeginsWithTheCallThatStartsIt()
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

void tst_KdAudioRecorder::everyOfferedFormatIsWritten_data()
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

void tst_KdAudioRecorder::everyOfferedFormatIsWritten()
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

void tst_KdAudioRecorder::theVolumeIsAppliedToFileAndMeter_data()
{
    QTest::addColumn<double>("volume");
    QTest::addColumn<double>("decibel");

    QTest::newRow("-1 leaves it alone") << -1.0 << -12.0;
    QTest::newRow("full") << 1.0 << -12.0;
    QTest::newRow("half") << 0.5 << -18.0;
    QTest::newRow("too much counts as not set") << 7.0 << -12.0;
    QTest::newRow("no number counts as not set") << std::nan("") << -12.0;
}

void tst_KdAudioRecorder::theVolumeIsAppliedToFileAndMeter()
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

void tst_KdAudioRecorder::tenPausesAreInNeitherFileNorTime()
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

void tst_KdAudioRecorder::aSecondStartEndsTheTakeAndBeginsAnother()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    const QString first = takePath(QStringLiteral("first.m4a"));
    const QString second = takePath(QStringLiteral("second.m4a"));
    QVERIFY(recorder.record(first));
    QVERIFY(recorder.waitForTime(1000));
    QVERIFY(recorder.record(second));
    QVERIFY2(MediaProbe::probe(first).isReadable, "The first take must be whole by now");
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder.events().times().first() <= 100);
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(second).isReadable);
    QVERIFY(std::abs(MediaProbe::probe(first).seconds - 1.0) < 0.25);

    // A name that is taken ends the running take all the same, and begins none.
    expectLog(QStringLiteral("exists already"));
    const QString third = takePath(QStringLiteral("third.m4a"));
    QVERIFY(recorder.record(third));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(!recorder.record(third));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(MediaProbe::probe(third).isReadable);
}

void tst_KdAudioRecorder::whatIsSetInMidTakeCountsFromTheNextStart()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    VirtualMicrophone silent(QStringLiteral("silent_mic"), QStringLiteral("Silent"));
    QVERIFY(silent.plug());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    const QString first = takePath(QStringLiteral("first.m4a"));
    const QString second = takePath(QStringLiteral("second.m4a"));
    QVERIFY(recorder.record(first, RecorderFixture::format(48000)));
    QVERIFY(recorder.waitForTime(500));

    QVERIFY(recorder.choose(QStringLiteral("Silent")));
    KdAudioFormat other = RecorderFixture::format(22050, 1);
    other.volume = 0.1;
    recorder->setAudioFormat(&other);
    recorder->setOutputFile(second);
    recorder->setInterval(500);
    recorder.events().clear();
    QVERIFY(recorder.waitForTime(1500));
    QVERIFY(recorder.events().times().size() >= 10);
    QVERIFY(recorder->stop());
    const MediaInfo info = MediaProbe::probe(first);
    QCOMPARE(info.samplerate, 48000);
    QCOMPARE(info.channels, 2);
    QVERIFY(std::abs(toneDecibel(first) + 12.0) < 1.0);

    QVERIFY(recorder->start());
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    QCOMPARE(MediaProbe::probe(second).samplerate, 22050);
    QVERIFY(MediaProbe::peakDecibel(second) < -80.0);
}

void tst_KdAudioRecorder::theOutputFileIsThatOfTheRunningTakeThenOfTheLast()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QCOMPARE(recorder->getOutputFile(), QString());
    recorder->setOutputFile(QStringLiteral("/set/before.m4a"));
    QCOMPARE(recorder->getOutputFile(), QStringLiteral("/set/before.m4a"));
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.record(takePath()));
    recorder->setOutputFile(QStringLiteral("/set/in/mid/take.m4a"));
    QCOMPARE(recorder->getOutputFile(), takePath());
    QVERIFY(recorder.waitForTime(200));
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->getOutputFile(), takePath());
}

void tst_KdAudioRecorder::callsOutOfOrderAreHarmless()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    recorder->pause();
    recorder->resume();
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    recorder->setAudioFormat(nullptr);
    recorder->getDevices(nullptr);
    recorder->addEventObserver(nullptr);
    recorder->removeEventObserver(nullptr);
    recorder->setInterval(-5);
    recorder->reserved6();
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.record(takePath()));
    recorder->resume();
    QCOMPARE(recorder->curStatus(), fcsRecording);
    recorder->pause();
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsPaused);
    recorder->resume();
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
    QVERIFY(recorder->stop());
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void tst_KdAudioRecorder::anUnknownDeviceIsNotRecorded_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("one too many") << 1;
    QTest::newRow("huge") << 2147483647;
    QTest::newRow("smallest") << -2147483647 - 1;
}

void tst_KdAudioRecorder::anUnknownDeviceIsNotRecorded()
{
    QFETCH(int, index);
    expectLog(QStringLiteral("no audio input is chosen"));
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    recorder->setOutputFile(takePath());
    recorder->setDevice(index);
    QVERIFY(!recorder->start());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(!QFile::exists(takePath()));
}

void tst_KdAudioRecorder::anUnusableOutputFileIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("relative") << QStringLiteral("take.m4a");
    QTest::newRow("missing folder") << QStringLiteral("%1/missing/take.m4a");
    QTest::newRow("folder is a file") << QStringLiteral("%1/file/take.m4a");
    QTest::newRow("is a folder") << QStringLiteral("%1/folder");
    QTest::newRow("exists") << QStringLiteral("%1/file");
    QTest::newRow("unwritable folder") << QStringLiteral("%1/locked/take.m4a");
    QTest::newRow("name too long") << QStringLiteral("%1/") + QString(300, QLatin1Char('x'));
}

void tst_KdAudioRecorder::anUnusableOutputFileIsRefused()
{
    QFETCH(QString, path);
    expectLog(QStringLiteral("^KdTakeWriter::open: "));
    const QDir folder(temporaryPath(QStringLiteral("bad")));
    QVERIFY(folder.mkpath(QStringLiteral("folder")) && folder.mkpath(QStringLiteral("locked")));
    TestFiles::write(folder.filePath(QStringLiteral("file")), QByteArray("precious"));
    QVERIFY(QFile::setPermissions(folder.filePath(QStringLiteral("locked")),
                                  QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.hearsDevice());
    {
        const FileFaults::WithoutPrivileges nobody;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!recorder.record(path.contains(QLatin1Char('%')) ? path.arg(folder.path()) : path));
        QVERIFY2(timer.elapsed() < 300, qPrintable(QString::number(timer.elapsed())));
    }
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(recorder->stop());
    QFile::setPermissions(folder.filePath(QStringLiteral("locked")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(
        folder.entryList(all, QDir::Name),
        QStringList({QStringLiteral("file"), QStringLiteral("folder"), QStringLiteral("locked")}));
    QVERIFY(QDir(folder.filePath(QStringLiteral("locked"))).isEmpty(all));
    QCOMPARE(TestFiles::read(folder.filePath(QStringLiteral("file"))), QByteArray("precious"));
}

void tst_KdAudioRecorder::releasingARecorderFinishesItsTake()
{
    QVERIFY(plugMicrophone());
    {
        RecorderFixture recorder;
        QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
        QVERIFY(recorder.record(takePath()));
        QVERIFY(recorder.waitForTime(1000));
    }
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds > 0.95);
}

void tst_KdAudioRecorder::twoRecordersShareAMicrophone()
{
    QVERIFY(plugMicrophone());
    QVERIFY(playTone(-12.0));
    RecorderFixture first;
    RecorderFixture second;
    QVERIFY(first.choose(QStringLiteral("USB Microphone")));
    QVERIFY(second.choose(QStringLiteral("USB Microphone")));
    QVERIFY(first.record(takePath(QStringLiteral("first.m4a"))));
    QVERIFY(second.record(takePath(QStringLiteral("second.m4a"))));
    QVERIFY(first.waitForTime(700));
    QVERIFY(second.waitForTime(700));
    QVERIFY(first->stop());
    QVERIFY(second->stop());
    for (const char* name : {"first.m4a", "second.m4a"}) {
        const QString path = takePath(QLatin1String(name));
        QVERIFY(MediaProbe::probe(path).isReadable);
        QVERIFY(std::abs(toneDecibel(path) + 12.0) < 1.0);
    }
}

void tst_KdAudioRecorder::removingTheObserverInMidTakeIsABarrier()
{
    QVERIFY(plugMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(QStringLiteral("USB Microphone")));
    QVERIFY(recorder.record(takePath()));
    for (int i = 0; i < 20; ++i) {
        auto events = std::make_unique<RecorderEvents>();
        recorder->addEventObserver(events.get());
        QTRY_VERIFY(!events->levels().isEmpty());
        recorder->removeEventObserver(events.get());
        events.reset();
    }
    QVERIFY(recorder->stop());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorder>(argc, argv);
}

#include "tst_KdAudioRecorder.moc"

#include "RecorderFixture.h"

#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/SmallDisk.h>
#include <Support/VirtualMicrophone.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <cmath>

using namespace KdVBLMODEL;

namespace {
using DeviceEvents = RecorderEvents::DeviceEvents;
constexpr auto kLoss = "Entity killed|streaming stopped|gives nothing any more|"
                       "No such entity";
} // namespace

/** Takes during which something goes wrong. */
class tst_KdAudioRecorderFaults : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void aMicrophoneThatGoesInMidTakeLeavesAPlayableFile();
    void anotherMicrophoneIsNeverRecordedInstead();
    void strangersThatComeAndGoDoNotTouchTheTake();
    void devicesThatComeAndGoBetweenTakesAreTold();
    void aMicrophoneThatComesBackIsHeardAgain();
    void aLostTakeCanBeFollowedByAnother();
    void aMicrophoneThatIsGoneIsNotRecorded();
    void aFolderDeletedInMidTakeIsNoSuccess();
    void aFullDiskKeepsTheTakeUpToIt();
    void aDiskFilledAtOnceKeepsTheTakeUpToIt();
    void aFullDiskIsRefusedAtTheStart();
    void aFileThatMayNotGrowKeepsTheTakeUpToThere();

private:
    QString takePath(const QString& name = QStringLiteral("take.m4a")) const;
    bool stopsInTime(RecorderFixture& recorder, bool isKept);

    std::unique_ptr<VirtualMicrophone> m_microphone;
    QTemporaryDir m_sounds;
};

void tst_KdAudioRecorderFaults::initTestCase()
{
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("tone.wav")), 997.0, -12.0, 60.0));
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("other.wav")), 3001.0, -6.0, 60.0));
}

void tst_KdAudioRecorderFaults::init()
{
    KdTestCase::init();
    m_microphone = std::make_unique<VirtualMicrophone>();
    QVERIFY(m_microphone->plug());
    QVERIFY(m_microphone->play(m_sounds.filePath(QStringLiteral("tone.wav"))));
}

void tst_KdAudioRecorderFaults::cleanup()
{
    m_microphone.reset();
    KdTestCase::cleanup();
}

QString tst_KdAudioRecorderFaults::takePath(const QString& name) const
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(name);
}

bool tst_KdAudioRecorderFaults::stopsInTime(RecorderFixture& recorder, bool isKept)
{
    QElapsedTimer timer;
    timer.start();
    const bool answer = recorder->stop();
    return answer == isKept && timer.elapsed() < 2000 && recorder->curStatus() == fcsNoStart;
}

void tst_KdAudioRecorderFaults::aMicrophoneThatGoesInMidTakeLeavesAPlayableFile()
{
    allowLog(QLatin1String(kLoss));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(1500));
    QElapsedTimer timer;
    timer.start();
    const qint64 told = recorder.events().lastTime();
    QVERIFY(m_microphone->unplug());
    QTRY_VERIFY(recorder.events().deviceEvents().contains({fcdAudioInputRemoved, 0}));
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(stopsInTime(recorder, true));
    QCOMPARE(recorder.events().deviceEvents().count({fcdAudioInputRemoved, 0}), 1);
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY2(info.seconds * 1000.0 > double(told), qPrintable(QString::number(info.seconds)));
    QTRY_COMPARE(recorder.deviceNames(), QStringList());
}

void tst_KdAudioRecorderFaults::anotherMicrophoneIsNeverRecordedInstead()
{
    allowLog(QLatin1String(kLoss));
    VirtualMicrophone other(QStringLiteral("other_mic"), QStringLiteral("Other"));
    QVERIFY(other.plug());
    QVERIFY(other.play(m_sounds.filePath(QStringLiteral("other.wav"))));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(1000));
    QVERIFY(m_microphone->unplug());
    QTRY_COMPARE(recorder.events().deviceEvents().value(0).first, int(fcdAudioInputRemoved));
    // What a panel does within 100 ms: it selects what is left, and its level is shown.
    QVERIFY(recorder.choose(QStringLiteral("Other")));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.events().times().isEmpty());
    QVERIFY(stopsInTime(recorder, true));
    const QVector<float> samples = MediaProbe::samples(takePath());
    const double seconds = samples.size() / 48000.0;
    QVERIFY(seconds > 0.9 && seconds < 2.0);
    QVERIFY(MediaProbe::steadyToneDecibel(takePath(), 997.0) > -13.0);
    for (int part = 1; part * 0.025 < seconds; ++part) {
        const double at = part * 0.025;
        const double strange = MediaProbe::toneDecibel(samples, 48000, 3001.0, at);
        QVERIFY2(strange < -40.0, qPrintable(QStringLiteral("%1 dB at %2 s").arg(strange).arg(at)));
    }
}

void tst_KdAudioRecorderFaults::strangersThatComeAndGoDoNotTouchTheTake()
{
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(300));
    VirtualMicrophone stranger(QStringLiteral("stranger_mic"), QStringLiteral("Stranger"));
    QVERIFY(stranger.plug());
    QTRY_COMPARE(recorder.events().deviceEvents(), DeviceEvents({{fcdAudioInputAdded, -1}}));
    recorder.deviceNames(); // the panel lists again and selects again
    recorder->setDevice(0);
    QVERIFY(stranger.unplug());
    QTRY_COMPARE(recorder.events().deviceEvents().size(), 2);
    QCOMPARE(recorder.events().deviceEvents()[1].first, int(fcdAudioInputAdded));
    const qint64 told = recorder.events().lastTime();
    QVERIFY(recorder.waitForTime(told + 500));
    QVERIFY(recorder->stop());
    const double seconds = MediaProbe::probe(takePath()).seconds;
    QVERIFY(std::abs(seconds - double(recorder.events().lastTime()) / 1000.0) < 0.15);
}

void tst_KdAudioRecorderFaults::devicesThatComeAndGoBetweenTakesAreTold()
{
    allowLog(QLatin1String(kLoss));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    recorder.events().clear();
    VirtualMicrophone other(QStringLiteral("other_mic"), QStringLiteral("Other"));
    QVERIFY(other.plug());
    QTRY_COMPARE(recorder.events().deviceEvents(), DeviceEvents({{fcdAudioInputAdded, -1}}));
    QCOMPARE(recorder.deviceNames().size(), 2);
    const int index = recorder.deviceNames().indexOf(QStringLiteral("Other"));
    QVERIFY(other.unplug());
    QTRY_COMPARE(recorder.events().deviceEvents(),
                 DeviceEvents({{fcdAudioInputAdded, -1}, {fcdAudioInputRemoved, index}}));
    QVERIFY(m_microphone->unplug());
    QTRY_COMPARE(recorder.events().deviceEvents().size(), 3);
    QCOMPARE(recorder.events().deviceEvents()[2].first, int(fcdAudioInputRemoved));
    recorder->setCallbackSwitch1(false);
    QVERIFY(m_microphone->plug());
    QTRY_COMPARE(recorder.deviceNames().size(), 1);
    QCOMPARE(recorder.events().deviceEvents().size(), 3);
}

void tst_KdAudioRecorderFaults::aMicrophoneThatComesBackIsHeardAgain()
{
    allowLog(QLatin1String(kLoss));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QTRY_VERIFY(recorder.events().lastLevel() > 70);
    QVERIFY(m_microphone->unplug());
    QTRY_COMPARE(recorder.events().lastLevel(), 0);
    QVERIFY(m_microphone->plug());
    QVERIFY(m_microphone->play(m_sounds.filePath(QStringLiteral("tone.wav"))));
    // Without being chosen again: it is the same device.
    QTRY_VERIFY(recorder.events().lastLevel() > 70);
    QCOMPARE(recorder.deviceNames(), QStringList({m_microphone->description()}));
}

void tst_KdAudioRecorderFaults::aLostTakeCanBeFollowedByAnother()
{
    allowLog(QLatin1String(kLoss));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(m_microphone->unplug());
    QTRY_VERIFY(recorder.events().deviceEvents().contains({fcdAudioInputRemoved, 0}));
    QVERIFY(stopsInTime(recorder, true));
    QVERIFY(m_microphone->plug());
    QVERIFY(m_microphone->play(m_sounds.filePath(QStringLiteral("tone.wav"))));
    QVERIFY(recorder.choose(m_microphone->description()));
    const QString second = takePath(QStringLiteral("second.m4a"));
    QVERIFY(recorder.record(second));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(second).isReadable);
    QVERIFY(MediaProbe::steadyToneDecibel(second, 997.0) > -13.0);
}

void tst_KdAudioRecorderFaults::aMicrophoneThatIsGoneIsNotRecorded()
{
    allowLog(QLatin1String(kLoss));
    expectLog(QStringLiteral("cannot be opened: it is not plugged in"));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(m_microphone->unplug());
    QTRY_VERIFY(recorder.events().deviceEvents().contains({fcdAudioInputRemoved, 0}));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!recorder.record(takePath()));
    QVERIFY(timer.elapsed() < 300);
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(QDir(temporaryPath(QStringLiteral("takes")))
                .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void tst_KdAudioRecorderFaults::aFolderDeletedInMidTakeIsNoSuccess()
{
    expectLog(QStringLiteral("did not end well"));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(700));
    QVERIFY(QDir(temporaryPath(QStringLiteral("takes"))).removeRecursively());
    QVERIFY(recorder.waitForTime(1400));
    QVERIFY(stopsInTime(recorder, false));
}

void tst_KdAudioRecorderFaults::aFullDiskKeepsTheTakeUpToIt()
{
    expectLog(QStringLiteral("The disk is full; the take .* ends"));
    const SmallDisk disk(temporaryPath(QStringLiteral("disk")), 300);
    QVERIFY(disk.isMounted());
    const QString path = disk.filePath(QStringLiteral("take.m4a"));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    KdAudioFormat format = RecorderFixture::format(48000, 2, 256000);
    format.bitrateMode = fbmConstant;
    QVERIFY(recorder.record(path, format));
    QTRY_VERIFY_WITH_TIMEOUT(!logLines().filter(QStringLiteral("The disk is full")).isEmpty(),
                             20000);
    // The user sees that nothing more is recorded.
    const qint64 told = recorder.events().lastTime();
    QVERIFY(told > 1000);
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.events().times().isEmpty());
    QCOMPARE(recorder->curStatus(), fcsEnded);
    QVERIFY(recorder.events().deviceEvents().isEmpty());
    QVERIFY(stopsInTime(recorder, true));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    const MediaInfo info = MediaProbe::probe(path);
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY2(std::abs(info.seconds - double(told) / 1000.0) < 0.15,
             qPrintable(QStringLiteral("%1 s, told %2 ms").arg(info.seconds).arg(told)));
}

void tst_KdAudioRecorderFaults::aDiskFilledAtOnceKeepsTheTakeUpToIt()
{
    allowLog(QStringLiteral("No space left|could not be|did not end well|The disk is full|"
                            "multiplex|resource|Internal data stream error"));
    SmallDisk disk(temporaryPath(QStringLiteral("disk")), 1024);
    QVERIFY(disk.isMounted());
    const QString path = disk.filePath(QStringLiteral("take.m4a"));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    KdAudioFormat format = RecorderFixture::format(48000, 2, 256000);
    format.bitrateMode = fbmConstant;
    QVERIFY(recorder.record(path, format));
    QVERIFY(recorder.waitForTime(2000));
    QVERIFY(disk.fillUpTo(0));
    const qint64 told = recorder.events().lastTime();
    const QRegularExpression end(QStringLiteral("take\\.m4a: \\d+ ms, (kept|finished)"));
    QTRY_VERIFY_WITH_TIMEOUT(!logLines().filter(end).isEmpty(), 10000);
    QVERIFY(stopsInTime(recorder, true));
    const MediaInfo info = MediaProbe::probe(path);
    QVERIFY2(info.seconds * 1000.0 > double(told) - 1000.0,
             qPrintable(QStringLiteral("%1 s, told %2 ms").arg(info.seconds).arg(told)));
}

void tst_KdAudioRecorderFaults::aFullDiskIsRefusedAtTheStart()
{
    expectLog(QStringLiteral("disk is full"));
    SmallDisk disk(temporaryPath(QStringLiteral("disk")), 256);
    QVERIFY(disk.isMounted());
    QVERIFY(disk.fillUpTo(40LL * 1024));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    QVERIFY(!recorder.record(disk.filePath(QStringLiteral("take.m4a"))));
    QCOMPARE(QDir(temporaryPath(QStringLiteral("disk")))
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("filler")));
}

void tst_KdAudioRecorderFaults::aFileThatMayNotGrowKeepsTheTakeUpToThere()
{
    expectLog(QStringLiteral("^KdTakePipeline::noteError: "));
    expectLog(QStringLiteral("did not end well"));
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone->description()));
    KdAudioFormat format = RecorderFixture::format(48000, 2, 256000);
    format.bitrateMode = fbmConstant;
    const FileFaults::FileSizeLimit limit(65536);
    QVERIFY(recorder.record(takePath(), format));
    QTRY_VERIFY_WITH_TIMEOUT(!logLines().filter(QStringLiteral("kept up to a failure")).isEmpty(),
                             20000);
    QVERIFY(stopsInTime(recorder, true));
    QVERIFY(MediaProbe::probe(takePath()).seconds > 1.0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorderFaults>(argc, argv);
}

#include "tst_KdAudioRecorderFaults.moc"

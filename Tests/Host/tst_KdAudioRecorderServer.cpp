#include "RecorderFixture.h"

#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/Patience.h>
#include <Support/SoundServer.h>
#include <Support/VirtualMicrophone.h>

#include <QDir>
#include <QElapsedTimer>

using namespace KdVBLMODEL;

/** Takes over a sound server that is away, dies, comes back or hangs. */
class tst_KdAudioRecorderServer : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void withoutAServerThereAreNoDevicesAndNobodyWaits();
    void aServerThatIsStartedLaterBringsItsDevices();
    void aServerThatDiesInMidTakeLeavesAPlayableFile();
    void theChosenMicrophoneIsHeardAgainAfterARestart();
    void aServerThatHangsInMidTakeDoesNotHoldTheTake();
    void aServerThatHangsHoldsNoOperation();

private:
    QString takePath() const;
    bool startServerWithMicrophone();

    std::unique_ptr<SoundServer> m_server;
    VirtualMicrophone m_microphone;
    QTemporaryDir m_sounds;
};

void tst_KdAudioRecorderServer::initTestCase()
{
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->isValid());
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("tone.wav")), 997.0, -12.0, 90.0));
}

void tst_KdAudioRecorderServer::init()
{
    KdTestCase::init();
    allowLog(QStringLiteral("^KdCapturePipeline::handle: |gives nothing any more"));
    m_microphone.stopPlaying();
    m_server->letGo();
    m_server->kill();
}

QString tst_KdAudioRecorderServer::takePath() const
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(QStringLiteral("take.m4a"));
}

bool tst_KdAudioRecorderServer::startServerWithMicrophone()
{
    return m_server->start() && m_microphone.plug() &&
           m_microphone.play(m_sounds.filePath(QStringLiteral("tone.wav")));
}

void tst_KdAudioRecorderServer::withoutAServerThereAreNoDevicesAndNobodyWaits()
{
    expectLog(QStringLiteral("no audio input is chosen"));
    RecorderFixture recorder;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(recorder.deviceNames(), QStringList());
    QVERIFY(!recorder.record(takePath()));
    QVERIFY(recorder->stop());
    QVERIFY2(timer.elapsed() < KdTest::patience(600), qPrintable(QString::number(timer.elapsed())));
}

void tst_KdAudioRecorderServer::aServerThatIsStartedLaterBringsItsDevices()
{
    RecorderFixture recorder;
    QCOMPARE(recorder.deviceNames(), QStringList());
    QVERIFY(startServerWithMicrophone());
    QTRY_VERIFY(recorder.events().deviceEvents().contains({fcdAudioInputAdded, -1}));
    // Until it has noticed the server, the engine lists what the layer below offers.
    QTRY_VERIFY(logLines().join(QLatin1Char('\n')).contains(QLatin1String("server is running")));
    QVERIFY(recorder.choose(m_microphone.description()));
    QTRY_VERIFY(recorder.events().lastLevel() > 70);
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

void tst_KdAudioRecorderServer::aServerThatDiesInMidTakeLeavesAPlayableFile()
{
    QVERIFY(startServerWithMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone.description()));
    QVERIFY(recorder.hearsDevice());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(1000));
    const qint64 told = recorder.events().lastTime();
    m_server->kill();
    QTRY_VERIFY(recorder.events().deviceEvents().contains({fcdAudioInputRemoved, 0}));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(recorder->stop());
    QVERIFY(timer.elapsed() < KdTest::patience(2000));
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds * 1000.0 > double(told));
    QTRY_COMPARE(recorder.deviceNames(), QStringList());
}

void tst_KdAudioRecorderServer::theChosenMicrophoneIsHeardAgainAfterARestart()
{
    QVERIFY(startServerWithMicrophone());
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone.description()));
    QTRY_VERIFY(recorder.events().lastLevel() > 70);
    m_server->kill();
    QTRY_COMPARE(recorder.events().lastLevel(), 0);
    QTRY_COMPARE(recorder.deviceNames(), QStringList());
    QVERIFY(startServerWithMicrophone());
    QTRY_VERIFY_WITH_TIMEOUT(recorder.events().lastLevel() > 70, 10000);
    QCOMPARE(recorder.deviceNames(), QStringList({m_microphone.description()}));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::peakDecibel(takePath()) > -14.0);
}

void tst_KdAudioRecorderServer::aServerThatHangsInMidTakeDoesNotHoldTheTake()
{
    allowLog(QStringLiteral("does not let go"));
    QVERIFY(startServerWithMicrophone());
    QElapsedTimer timer;
    {
        RecorderFixture recorder;
        QVERIFY(recorder.choose(m_microphone.description()));
        QVERIFY(recorder.hearsDevice());
        QVERIFY(recorder.record(takePath()));
        QVERIFY(recorder.waitForTime(1000));
        m_server->hold();
        timer.start();
        QTRY_VERIFY(recorder.events().deviceEvents().contains({fcdAudioInputRemoved, 0}));
        QVERIFY2(timer.elapsed() < KdTest::patience(4000),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
        QVERIFY(recorder->stop());
        QVERIFY2(timer.elapsed() < KdTest::patience(2000),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
    }
    QVERIFY2(timer.elapsed() < KdTest::patience(3000),
             qPrintable(QString::number(timer.elapsed())));
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds > 0.9);
}

void tst_KdAudioRecorderServer::aServerThatHangsHoldsNoOperation()
{
    allowLog(QStringLiteral("does not let go|did not start in time"));
    QVERIFY(startServerWithMicrophone());
    {
        RecorderFixture recorder;
        QVERIFY(recorder.choose(m_microphone.description()));
        recorder->setDevice(-1);
        m_server->hold();
        recorder->setDevice(0); // opens the device, which does not answer
        QElapsedTimer timer;
        timer.start();
        recorder.deviceNames();
        QVERIFY2(timer.elapsed() < KdTest::patience(300),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
        const bool isStarted = recorder.record(takePath());
        QVERIFY2(timer.elapsed() < KdTest::patience(300),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
        QCOMPARE(recorder->stop(), !isStarted); // a take that heard nothing leaves nothing
        QVERIFY2(timer.elapsed() < KdTest::patience(2000),
                 qPrintable(QString::number(timer.elapsed())));
    }
    m_server->letGo();
    QTRY_VERIFY(QDir(temporaryPath(QStringLiteral("takes")))
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    // And what was held before does not stand in the way of what comes now.
    RecorderFixture recorder;
    QVERIFY(recorder.choose(m_microphone.description()));
    QTRY_VERIFY_WITH_TIMEOUT(recorder.events().lastLevel() > 70, 10000);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorderServer>(argc, argv);
}

#include "tst_KdAudioRecorderServer.moc"

#include "WebcamFixture.h"

#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/Patience.h>
#include <Support/SoundServer.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QDir>
#include <QElapsedTimer>

using namespace KdVBLMODEL;

namespace {
constexpr QSize kVga(640, 480);
}

/** Pictures over a video server that is away, dies, comes back or hangs. */
class tst_KdWebcamRecorderServer : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void withoutAServerThereAreNoCamerasAndNobodyWaits();
    void aServerThatIsStartedLaterBringsItsCameras();
    void aPreviewComesBackAfterManyRestarts();
    void aServerThatDiesInMidTakeLeavesAPlayableFile();
    void aServerThatHangsInMidTakeDoesNotHoldTheTake();
    void aServerThatHangsHoldsNoOperation();

private:
    QString takePath() const;
    bool startServerWithCamera();

    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<VirtualCamera> m_camera;
};

void tst_KdWebcamRecorderServer::initTestCase()
{
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->isValid());
}

void tst_KdWebcamRecorderServer::init()
{
    KdTestCase::init();
    allowLog(QStringLiteral("^KdCapturePipeline::handle: |gives nothing"));
    m_camera = std::make_unique<VirtualCamera>();
}

void tst_KdWebcamRecorderServer::cleanup()
{
    m_server->letGo();
    m_camera.reset();
    m_server->kill();
    KdTestCase::cleanup();
}

QString tst_KdWebcamRecorderServer::takePath() const
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(QStringLiteral("take.mp4"));
}

bool tst_KdWebcamRecorderServer::startServerWithCamera()
{
    return m_server->start() && m_camera->plug();
}

void tst_KdWebcamRecorderServer::withoutAServerThereAreNoCamerasAndNobodyWaits()
{
    expectLog(QStringLiteral("no chosen camera is there"));
    WebcamFixture recorder;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(recorder.deviceNames(kdtWebcam), QStringList());
    QCOMPARE(recorder.deviceNames(kdtMicrophone), QStringList());
    QVERIFY(!recorder->startPreview());
    QVERIFY(!recorder.record(takePath()));
    QVERIFY(recorder->stop());
    QVERIFY2(timer.elapsed() < KdTest::patience(900), qPrintable(QString::number(timer.elapsed())));
}

void tst_KdWebcamRecorderServer::aServerThatIsStartedLaterBringsItsCameras()
{
    WebcamFixture recorder;
    QCOMPARE(recorder.deviceNames(kdtWebcam), QStringList());
    QVERIFY(startServerWithCamera());
    QVERIFY(recorder.hears(fcdWebcamListChanged));
    QVERIFY(recorder.open(m_camera->description(), kVga));
}

void tst_KdWebcamRecorderServer::aPreviewComesBackAfterManyRestarts()
{
    WebcamFixture recorder;
    for (int round = 0; round < 4; ++round) {
        QVERIFY(startServerWithCamera());
        QVERIFY(recorder.open(m_camera->description(), kVga));
        recorder.events().clear();
        m_server->kill();
        QVERIFY(recorder.hears(fcdWebcamRemoved));
        QTRY_COMPARE(recorder.deviceNames(kdtWebcam), QStringList());
        QVERIFY(!recorder->startPreview());
        m_camera->unplug();
    }
}

void tst_KdWebcamRecorderServer::aServerThatDiesInMidTakeLeavesAPlayableFile()
{
    QVERIFY(startServerWithCamera());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(1000));
    const qint64 told = recorder.events().lastTime();
    m_server->kill();
    QVERIFY(recorder.hears(fcdWebcamRemoved));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(recorder->stop());
    QVERIFY(timer.elapsed() < KdTest::patience(2000));
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds * 1000.0 > double(told) - 100.0);
}

void tst_KdWebcamRecorderServer::aServerThatHangsInMidTakeDoesNotHoldTheTake()
{
    allowLog(QStringLiteral("does not let go"));
    QVERIFY(startServerWithCamera());
    QElapsedTimer timer;
    {
        WebcamFixture recorder;
        QVERIFY(recorder.open(m_camera->description(), kVga));
        QVERIFY(recorder.record(takePath()));
        QVERIFY(recorder.waitForTime(1000));
        m_server->hold();
        m_camera->hold(); // which could go on giving pictures without the server
        timer.start();
        QVERIFY(recorder.hears(fcdWebcamRemoved));
        QVERIFY2(timer.elapsed() < KdTest::patience(5000),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
        QVERIFY(recorder->stop());
        QVERIFY2(timer.elapsed() < KdTest::patience(2000),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
    }
    QVERIFY2(timer.elapsed() < KdTest::patience(4000),
             qPrintable(QString::number(timer.elapsed())));
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds > 0.9);
}

void tst_KdWebcamRecorderServer::aServerThatHangsHoldsNoOperation()
{
    allowLog(QStringLiteral("does not let go|did not start in time"));
    QVERIFY(startServerWithCamera());
    {
        WebcamFixture recorder;
        QVERIFY(recorder.choose(kdtWebcam, m_camera->description()));
        m_server->hold();
        m_camera->hold();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(recorder.showAt(kVga)); // opens the device, which does not answer
        recorder.deviceNames(kdtWebcam);
        QVERIFY2(timer.elapsed() < KdTest::patience(300),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
        recorder.record(takePath());
        QVERIFY2(timer.elapsed() < KdTest::patience(300),
                 qPrintable(QString::number(timer.elapsed())));
        timer.start();
        recorder->stop();
        QVERIFY2(timer.elapsed() < KdTest::patience(2000),
                 qPrintable(QString::number(timer.elapsed())));
    }
    m_server->letGo();
    m_camera->letGo();
    QTRY_VERIFY(QDir(temporaryPath(QStringLiteral("takes")))
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    // And what was held before does not stand in the way of what comes now.
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderServer>(argc, argv);
}

#include "tst_KdWebcamRecorderServer.moc"

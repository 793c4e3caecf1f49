#include "CameraFixture.h"

#include <Support/ClipProbe.h>
#include <Support/MediaProbe.h>
#include <Support/Patience.h>
#include <Support/ProcessUse.h>

#include <QElapsedTimer>

#include <cmath>

using namespace KdVBLMODEL;

/** Takes whose devices go, whose recorder goes, and what is left of them in the process. */
class tst_KdWebcamRecorderLosses : public CameraFixture
{
    Q_OBJECT

private Q_SLOTS:
    void aCameraThatGoesInMidTakeLeavesAFinishedFile();
    void aCameraThatFallsSilentInMidTakeLeavesAFinishedFile();
    void aMicrophoneThatGoesInMidTakeLeavesAFinishedFile();
    void anotherDeviceThatGoesDoesNotEndTheTake();
    void anOccupiedCameraGivesNoTake();
    void releasingARecorderFinishesItsTake();
    void removingTheObserverInMidTakeIsABarrier();
    void manyTakesLeakNothing();
    void aRecorderThatNobodyObservesHoldsNothing();
};

void tst_KdWebcamRecorderLosses::aCameraThatGoesInMidTakeLeavesAFinishedFile()
{
    allowCameraTrouble();
    QVERIFY(plugBoth());
    VirtualCamera other(QStringLiteral("other_cam"), QStringLiteral("Other"));
    QVERIFY(other.plug());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QVERIFY(recorder.record(takePath(), true));
    QVERIFY(recorder.waitForTime(1000));
    QVERIFY(m_camera->unplug());
    QVERIFY(recorder.hears(fcdWebcamRemoved));
    QVERIFY(!recorder.deviceNames(kdtWebcam).contains(m_camera->description()));
    // It is finished already; the recorder waits to be told.
    QTRY_VERIFY(MediaProbe::probe(takePath()).isReadable);
    QCOMPARE(recorder->curStatus(), fcsRecording);
    const qint64 told = recorder.events().lastTime();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(recorder->stop());
    QVERIFY(timer.elapsed() < KdTest::patience(2000));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY(info.seconds > double(told) / 1000.0 - 0.2);
    // And the next take is one of the camera that came back.
    QVERIFY(m_camera->plug());
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath(QStringLiteral("again.mp4")), true));
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
}

void tst_KdWebcamRecorderLosses::aCameraThatFallsSilentInMidTakeLeavesAFinishedFile()
{
    allowCameraTrouble();
    expectLog(QStringLiteral("The camera HD Webcam gives nothing any more"));
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(700));
    m_camera->hold();
    QVERIFY(recorder.hears(fcdWebcamRemoved));
    // It is listed all the same: nobody else would notice that the take is over.
    QTRY_COMPARE(recorder->curStatus(), fcsEnded);
    QVERIFY(!recorder->pause());
    m_camera->letGo();
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

void tst_KdWebcamRecorderLosses::aMicrophoneThatGoesInMidTakeLeavesAFinishedFile()
{
    allowCameraTrouble();
    QVERIFY(plugBoth());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QVERIFY(recorder.record(takePath(), true));
    QVERIFY(recorder.waitForTime(1000));
    QVERIFY(m_microphone->unplug());
    QVERIFY(recorder.hears(fcdAudioInputRemoved));
    QVERIFY(!recorder.deviceNames(kdtMicrophone).contains(m_microphone->description()));
    QTRY_VERIFY(MediaProbe::probe(takePath()).isReadable);
    QVERIFY(recorder.showsFrame(kVga));
    QVERIFY(recorder->stop());
    const ClipInfo clip = ClipProbe::probe(takePath());
    QVERIFY2(clip.pictureLength > 0.8, qPrintable(QString::number(clip.pictureLength)));
    QVERIFY(std::abs(clip.soundLength - clip.pictureLength) < 0.04);
}

void tst_KdWebcamRecorderLosses::anotherDeviceThatGoesDoesNotEndTheTake()
{
    VirtualCamera other(QStringLiteral("other_cam"), QStringLiteral("Other"));
    VirtualMicrophone otherMicrophone(QStringLiteral("other_mic"), QStringLiteral("Other"));
    QVERIFY(plugBoth() && other.plug() && otherMicrophone.plug());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QVERIFY(recorder.record(takePath(), true));
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(other.unplug() && otherMicrophone.unplug());
    QVERIFY(recorder.hears(fcdWebcamRemoved) && recorder.hears(fcdAudioInputRemoved));
    const qint64 told = recorder.events().lastTime();
    QVERIFY(recorder.waitForTime(told + 700));
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

void tst_KdWebcamRecorderLosses::anOccupiedCameraGivesNoTake()
{
    allowCameraTrouble();
    allowLog(QStringLiteral("The camera HD Webcam gives nothing"));
    QVERIFY(m_camera->plug());
    m_camera->occupy();
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtWebcam, m_camera->description()));
    recorder.record(takePath());
    QVERIFY(recorder.hears(fcdWebcamOccupied));
    QTRY_VERIFY(recorder->curStatus() != fcsRecording);
    QVERIFY(!recorder->stop());
    QVERIFY(!QFile::exists(takePath()));
    QVERIFY(recorder.events().times().isEmpty());
}

void tst_KdWebcamRecorderLosses::releasingARecorderFinishesItsTake()
{
    QVERIFY(plugBoth());
    {
        WebcamFixture recorder;
        QVERIFY(prepare(recorder));
        QVERIFY(recorder.record(takePath(), true));
        QVERIFY(recorder.waitForTime(500));
    }
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
}

void tst_KdWebcamRecorderLosses::removingTheObserverInMidTakeIsABarrier()
{
    QVERIFY(plugBoth());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QVERIFY(recorder.record(takePath(), true));
    recorder->setInterval(10);
    for (int round = 0; round < 50; ++round) {
        auto events = std::make_unique<WebcamEvents>();
        recorder->addEventObserver(events.get());
        if (round % 2) {
            QTRY_VERIFY(events->frameCount() > 0);
        }
        recorder->removeEventObserver(events.get());
        events.reset();
    }
    QVERIFY(recorder->stop());
}

void tst_KdWebcamRecorderLosses::manyTakesLeakNothing()
{
    QVERIFY(plugBoth());
    const auto playOneRound = [this] {
        WebcamFixture recorder;
        const QString path = takePath();
        const bool isRecorded = prepare(recorder, kSmall) && recorder.record(path, true) &&
                                recorder.waitForTime(200) && recorder->stop();
        return isRecorded && QFile::remove(path);
    };
    for (int warmUp = 0; warmUp < 20 / KdTest::patience(1); ++warmUp) {
        QVERIFY(playOneRound());
    }
    const ProcessUse before = ProcessUse::now();
    // As many fewer as a sanitizer, which looks for leaks itself, makes them slower.
    const int rounds = 80 / KdTest::patience(1);
    for (int round = 0; round < rounds; ++round) {
        QVERIFY(playOneRound());
    }
    QTRY_VERIFY2(ProcessUse::now().files <= before.files,
                 qPrintable(QString::number(ProcessUse::now().files - before.files)));
    QTRY_VERIFY2(ProcessUse::now().threads <= before.threads,
                 qPrintable(QString::number(ProcessUse::now().threads - before.threads)));
    const qint64 grownKb = ProcessUse::now().heapKb - before.heapKb;
    QVERIFY2(grownKb < 1000, qPrintable(QStringLiteral("%1 kB more").arg(grownKb)));
}

void tst_KdWebcamRecorderLosses::aRecorderThatNobodyObservesHoldsNothing()
{
    QVERIFY(m_camera->plug());
    {
        WebcamFixture warmUp;
        QVERIFY(warmUp.open(m_camera->description(), kVga));
    }
    const ProcessUse before = ProcessUse::now();
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
    recorder->setRecordFlip(true);
    recorder->removeEventObserver(&recorder.events());
    QTRY_VERIFY2(ProcessUse::now().files <= before.files,
                 qPrintable(QString::number(ProcessUse::now().files - before.files)));
    QTRY_VERIFY2(ProcessUse::now().threads <= before.threads,
                 qPrintable(QString::number(ProcessUse::now().threads - before.threads)));
    // And goes on where it was, for whoever comes back.
    QCOMPARE(recorder->getOutputFile(), takePath());
    recorder->addEventObserver(&recorder.events());
    QVERIFY(recorder->getRecordFlip());
    QVERIFY(recorder->startPreview());
    QVERIFY(recorder.showsFrame(kVga));
    recorder.events().clear();
    QVERIFY(recorder->start());
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderLosses>(argc, argv);
}

#include "tst_KdWebcamRecorderLosses.moc"

#pragma once

#include "KdContractHold.h"
#include "KdContractObserver.h"
#include "KdEngineContractTests.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <functional>
#include <memory>

/** What the tests share. */
namespace KdContract {

constexpr int kPatienceMs = 10000;
constexpr int kCallMs = 300;
constexpr int kStopMs = 2000;
constexpr int kIntervalMs = 20;
constexpr int kRounds = 20;
constexpr int kHoldMs = 200;      ///< of a call that is waited for
constexpr int kLongHoldMs = 3000; ///< of one that must not be waited for

struct Release
{
    template <typename Recorder>
    void operator()(Recorder* recorder) const
    {
        recorder->release();
    }
};
template <typename Recorder>
using Owned = std::unique_ptr<Recorder, Release>;

template <typename Recorder>
void listen(Recorder& recorder, KdVBLMODEL::IKdRecorderEventObserver& observer)
{
    recorder.addEventObserver(&observer);
    recorder.setCallbackSwitch3(true);
    recorder.setCallbackSwitch2(true);
    recorder.setCallbackSwitch1(true);
    recorder.setInterval(kIntervalMs);
}

} // namespace KdContract

/** The tests, one function each. */
class KdEngineContract : public QObject
{
    Q_OBJECT

public:
    explicit KdEngineContract(const KdEngineContractStage& stage) : m_stage(stage) {}

private Q_SLOTS:
    void aNewRecorderHasNotStarted();
    void stoppingWithoutATakeSucceeds();
    void pausingWithoutATakeChangesNothing();
    void microphonesAreNumberedByTheirPlace();
    void anUnknownIndexDoesNotStart_data();
    void anUnknownIndexDoesNotStart();
    void anUnusableFileDoesNotStart();
    void aStrangersFileIsNotOverwritten();
    void theOwnLastTakeIsRecordedAgain();
    void startingInMidTakeEndsTheRunningTake();
    void nothingIsIgnored();
    void aTakeGoesThroughItsStatesAndLeavesAFile();
    void aRecorderMakesOneTakeAfterTheOther();
    void theNextFileIsForTheNextTake();
    void releasingEndsTheTake();
    void timeAndLevelAreReportedOnOtherThreads();
    void switchesTurnReportsOff();
    void removingAnObserverIsABarrier();
    void removingAnObserverWaitsForItsRunningCall();
    void noLockIsHeldDuringACall();
    void noCallTakesLongerThanPromised();
    void webcamsAreNumberedByTheirPlace();
    void anUnknownKindOfDeviceIsRefused();
    void devicesThatAreNotThereAreRefused_data();
    void devicesThatAreNotThereAreRefused();
    void aWebcamSaysWhatItCanDo();
    void whatAWebcamCannotDoIsRefused();
    void unusedRecordersHoldNoThread();
    void thePreviewShowsThePictureInItsSize();
    void thePreviewGoesOnInAnotherSize();
    void thePreviewsObserverIsRemovedByABarrier();
    void removingThePreviewsObserverWaitsForItsRunningCall();
    void noLockIsHeldDuringAPreviewsCall();
    void shapeAndFlipAreKept();
    void anUnknownShapeIsRefused();
    void anUnknownBackgroundCountsAsNone();
    void aClipLeavesAFile();
    void aClipIsPausedAndResumed();
    void aStrangersFileIsNotOverwrittenByAClip();

private:
    KdContract::Owned<KdVBLMODEL::IKdAudioRecorder> audio(int device = 0)
    {
        KdContract::Owned<KdVBLMODEL::IKdAudioRecorder> recorder(
            KdVBLMODEL::createAudioRecorder(this));
        QList<KdVBLMODEL::_KdCaptureDevInf> devices;
        recorder->getDevices(&devices);
        const KdVBLMODEL::KdAudioFormat format;
        recorder->setAudioFormat(&format);
        recorder->setDevice(device);
        recorder->setOutputFile(newFile(QStringLiteral("m4a")));
        return recorder;
    }

    KdContract::Owned<KdVBLMODEL::IKdWebcamRecorder> webcam()
    {
        KdContract::Owned<KdVBLMODEL::IKdWebcamRecorder> recorder(
            KdVBLMODEL::createWebcamRecorder());
        QList<KdVBLMODEL::_KdCaptureDevInf> devices;
        recorder->getDevices(KdVBLMODEL::kdtWebcam, &devices);
        recorder->setDevice(KdVBLMODEL::kdtWebcam, 0);
        recorder->setRecordAudio(false);
        recorder->setOutputFile(newFile(QStringLiteral("mp4")));
        return recorder;
    }

    QString newFile(const QString& suffix)
    {
        return QDir(m_stage.folder)
            .filePath(QStringLiteral("take_%1.%2").arg(++m_files).arg(suffix));
    }

    /** Waits for what comes by callbacks. */
    bool comes(const std::function<bool()>& condition) const
    {
        return QTest::qWaitFor(
            [&] {
                if (m_stage.drive) {
                    m_stage.drive();
                }
                return condition();
            },
            KdContract::kPatienceMs * m_stage.slowdown);
    }

    /** @return whether the call was over in time */
    bool isOver(int milliseconds, const std::function<void()>& call) const
    {
        QElapsedTimer timer;
        timer.start();
        call();
        return timer.elapsed() <= qint64(milliseconds) * m_stage.slowdown;
    }

    static bool isFile(const QString& path)
    {
        return QFileInfo(path).isFile() && QFileInfo(path).size() > 0;
    }

    bool isInTime(const std::function<void()>& call) const
    {
        return isOver(KdContract::kCallMs, call);
    }

    /** Of a file that is there before the take. */
    template <typename Recorder>
    void checkStrangersFileIsKept(Recorder& recorder);
    static void checkNumbers(const QList<KdVBLMODEL::_KdCaptureDevInf>& devices,
                             KdVBLMODEL::_KdDevType type);

    const KdEngineContractStage m_stage;
    int m_files = 0;
};

template <typename Recorder>
void KdEngineContract::checkStrangersFileIsKept(Recorder& recorder)
{
    const QByteArray content("of somebody else");
    QFile file(recorder.getOutputFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
    file.close();
    QVERIFY(!recorder.start());
    QCOMPARE(recorder.curStatus(), KdVBLMODEL::fcsNoStart);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

#define KD_NEEDS_WEBCAM                                                                            \
    if (!m_stage.hasWebcam) {                                                                      \
        return;                                                                                    \
    }

#include "KdEngineContractTests.h"

#include "KdContractObserver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>

using namespace KdVBLMODEL;

namespace {

constexpr int kPatienceMs = 10000;
constexpr int kCallMs = 300;
constexpr int kStopMs = 2000;
constexpr int kIntervalMs = 20;
constexpr int kRounds = 20;

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
void listen(Recorder& recorder, KdContractObserver& observer)
{
    recorder.addEventObserver(&observer);
    recorder.setCallbackSwitch3(true);
    recorder.setCallbackSwitch2(true);
    recorder.setCallbackSwitch1(true);
    recorder.setInterval(kIntervalMs);
}

} // namespace

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
    void aTakeGoesThroughItsStatesAndLeavesAFile();
    void aRecorderMakesOneTakeAfterTheOther();
    void theNextFileIsForTheNextTake();
    void releasingEndsTheTake();
    void timeAndLevelAreReportedOnOtherThreads();
    void switchesTurnReportsOff();
    void removingAnObserverIsABarrier();
    void noCallTakesLongerThanPromised();
    void webcamsAreNumberedByTheirPlace();
    void anUnknownKindOfDeviceIsRefused();
    void aWebcamSaysWhatItCanDo();
    void thePreviewShowsThePictureInItsSize();
    void thePreviewsObserverIsRemovedByABarrier();
    void shapeAndFlipAreKept();
    void aClipLeavesAFile();

private:
    Owned<IKdAudioRecorder> audio(int device = 0)
    {
        Owned<IKdAudioRecorder> recorder(createAudioRecorder(this));
        QList<_KdCaptureDevInf> devices;
        recorder->getDevices(&devices);
        const KdAudioFormat format;
        recorder->setAudioFormat(&format);
        recorder->setDevice(device);
        recorder->setOutputFile(newFile(QStringLiteral("m4a")));
        return recorder;
    }

    Owned<IKdWebcamRecorder> webcam()
    {
        Owned<IKdWebcamRecorder> recorder(createWebcamRecorder());
        QList<_KdCaptureDevInf> devices;
        recorder->getDevices(kdtWebcam, &devices);
        recorder->setDevice(kdtWebcam, 0);
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
            kPatienceMs * m_stage.slowdown);
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

    static void checkNumbers(const QList<_KdCaptureDevInf>& devices, _KdDevType type);

    const KdEngineContractStage m_stage;
    int m_files = 0;
};

#define KD_NEEDS_WEBCAM                                                                            \
    if (!m_stage.hasWebcam) {                                                                      \
        return;                                                                                    \
    }

void KdEngineContract::aNewRecorderHasNotStarted()
{
    QCOMPARE(Owned<IKdAudioRecorder>(createAudioRecorder(nullptr))->curStatus(), fcsNoStart);
    QCOMPARE(Owned<IKdWebcamRecorder>(createWebcamRecorder())->curStatus(), fcsNoStart);
}

void KdEngineContract::stoppingWithoutATakeSucceeds()
{
    QVERIFY(audio()->stop());
}

void KdEngineContract::pausingWithoutATakeChangesNothing()
{
    const auto recorder = audio();
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    recorder->resume();
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::checkNumbers(const QList<_KdCaptureDevInf>& devices, _KdDevType type)
{
    QVERIFY2(!devices.isEmpty(), "the tests need a device");
    QSet<QString> ids;
    for (int i = 0; i < devices.size(); ++i) {
        QCOMPARE(devices.at(i).index, i);
        QCOMPARE(devices.at(i).devType, static_cast<qint32>(type));
        QVERIFY(!devices.at(i).name.isEmpty());
        QVERIFY(!devices.at(i).id.isEmpty());
        ids.insert(devices.at(i).id);
    }
    QCOMPARE(ids.size(), devices.size());
}

void KdEngineContract::microphonesAreNumberedByTheirPlace()
{
    const auto recorder = audio();
    QList<_KdCaptureDevInf> devices;
    recorder->getDevices(&devices);
    checkNumbers(devices, kdtMicrophone);
}

void KdEngineContract::anUnknownIndexDoesNotStart_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("none") << -1;
    QTest::newRow("below") << -2;
    QTest::newRow("above") << 1000;
}

void KdEngineContract::anUnknownIndexDoesNotStart()
{
    QFETCH(int, index);
    const auto recorder = audio(index);
    QVERIFY(!recorder->start());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::anUnusableFileDoesNotStart()
{
    const auto recorder = audio();
    recorder->setOutputFile(QDir(m_stage.folder).filePath(QStringLiteral("missing/take.m4a")));
    QVERIFY(!recorder->start());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void KdEngineContract::aTakeGoesThroughItsStatesAndLeavesAFile()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    QVERIFY(recorder->start());
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(comes([&] { return observer.lastTime() > 0; }));
    recorder->pause();
    QCOMPARE(recorder->curStatus(), fcsPaused);
    recorder->resume();
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(isFile(recorder->getOutputFile()));
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::aRecorderMakesOneTakeAfterTheOther()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    for (int take = 0; take < 3; ++take) {
        const QString file = newFile(QStringLiteral("m4a"));
        const int before = observer.times();
        recorder->setOutputFile(file);
        QVERIFY(recorder->start());
        QVERIFY(comes([&] { return observer.times() > before + 1; }));
        QVERIFY(recorder->stop());
        QVERIFY(isFile(file));
    }
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::theNextFileIsForTheNextTake()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    const QString first = newFile(QStringLiteral("m4a"));
    const QString second = newFile(QStringLiteral("m4a"));
    recorder->setOutputFile(first);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 1; }));
    recorder->setOutputFile(second);
    QCOMPARE(recorder->getOutputFile(), first);
    QVERIFY(recorder->stop());
    QVERIFY(isFile(first));
    QVERIFY(!QFileInfo::exists(second));
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::releasingEndsTheTake()
{
    KdContractObserver observer;
    auto recorder = audio();
    listen(*recorder, observer);
    const QString file = newFile(QStringLiteral("m4a"));
    recorder->setOutputFile(file);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 1; }));
    recorder->removeEventObserver(&observer);
    recorder.reset();
    QVERIFY(isFile(file));
}

void KdEngineContract::timeAndLevelAreReportedOnOtherThreads()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.times() > 3 && observer.volumes() > 3; }));
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&observer);
    QVERIFY(!observer.wasCalledOnTheMainThread());
    QVERIFY(!observer.hasHeardNonsense());
}

void KdEngineContract::switchesTurnReportsOff()
{
    KdContractObserver observer;
    const auto recorder = audio();
    listen(*recorder, observer);
    recorder->setCallbackSwitch2(false);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.volumes() > 3; }));
    QCOMPARE(observer.times(), 0);
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::removingAnObserverIsABarrier()
{
    const auto recorder = audio();
    KdContractObserver stays;
    listen(*recorder, stays);
    QVERIFY(recorder->start());
    for (int round = 0; round < kRounds; ++round) {
        KdContractObserver goes;
        recorder->addEventObserver(&goes);
        QVERIFY(comes([&] { return goes.times() + goes.volumes() > 0; }));
        recorder->removeEventObserver(&goes);
        goes.setRemoved();
        const int before = stays.times();
        QVERIFY(comes([&] { return stays.times() > before; }));
        QVERIFY(!goes.wasCalledAfterRemoval());
    }
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&stays);
}

void KdEngineContract::noCallTakesLongerThanPromised()
{
    KdContractObserver observer;
    const auto recorder = audio();
    QVERIFY(isOver(kCallMs, [&] { listen(*recorder, observer); }));
    QVERIFY(isOver(kCallMs, [&] { QVERIFY(recorder->start()); }));
    QVERIFY(comes([&] { return observer.times() > 1; }));
    QVERIFY(isOver(kCallMs, [&] { recorder->pause(); }));
    QVERIFY(isOver(kCallMs, [&] { recorder->resume(); }));
    QVERIFY(isOver(kStopMs, [&] { QVERIFY(recorder->stop()); }));
    QVERIFY(isOver(kCallMs, [&] { recorder->removeEventObserver(&observer); }));
}

void KdEngineContract::webcamsAreNumberedByTheirPlace()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    QList<_KdCaptureDevInf> devices;
    QVERIFY(recorder->getDevices(kdtWebcam, &devices));
    checkNumbers(devices, kdtWebcam);
    QVERIFY(!recorder->setDevice(kdtWebcam, static_cast<int>(devices.size())));
    QVERIFY(recorder->setDevice(kdtWebcam, 0));
}

void KdEngineContract::anUnknownKindOfDeviceIsRefused()
{
    const Owned<IKdWebcamRecorder> recorder(createWebcamRecorder());
    QVERIFY(!recorder->setDevice(kdtKeyboard, 0));
}

void KdEngineContract::aWebcamSaysWhatItCanDo()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    QList<QSize> resolutions;
    recorder->getResolutions(&resolutions);
    QVERIFY(!resolutions.isEmpty());
    for (const QSize& resolution : qAsConst(resolutions)) {
        QVERIFY(recorder->setResolution(resolution));
        QList<double> rates;
        recorder->getFrameRates(&rates);
        QVERIFY(!rates.isEmpty());
        QVERIFY(std::all_of(rates.begin(), rates.end(), [](double rate) { return rate > 0.0; }));
    }
}

void KdEngineContract::thePreviewShowsThePictureInItsSize()
{
    KD_NEEDS_WEBCAM
    KdContractObserver observer;
    const auto recorder = webcam();
    QList<QSize> resolutions;
    recorder->getResolutions(&resolutions);
    QVERIFY(recorder->setResolution(resolutions.value(0)));
    listen(*recorder, observer);
    QVERIFY(recorder->startPreview());
    QVERIFY(comes([&] { return observer.frames() > 2; }));
    QVERIFY(!observer.lastFrame().isEmpty());
    QVERIFY(recorder->stopPreview());
    recorder->removeEventObserver(&observer);
    QVERIFY(!observer.wasCalledOnTheMainThread());
    QVERIFY(!observer.hasHeardNonsense());
}

void KdEngineContract::thePreviewsObserverIsRemovedByABarrier()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    KdContractObserver stays;
    listen(*recorder, stays);
    QVERIFY(recorder->startPreview());
    for (int round = 0; round < kRounds; ++round) {
        KdContractObserver goes;
        recorder->addEventObserver(&goes);
        QVERIFY(comes([&] { return goes.frames() > 0; }));
        recorder->removeEventObserver(&goes);
        goes.setRemoved();
        const int before = stays.frames();
        QVERIFY(comes([&] { return stays.frames() > before; }));
        QVERIFY(!goes.wasCalledAfterRemoval());
    }
    recorder->stopPreview();
    recorder->removeEventObserver(&stays);
}

void KdEngineContract::shapeAndFlipAreKept()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    for (const _KdCaptureRecordShape shape : {fcrsCircle, fcrsSquare}) {
        QVERIFY(recorder->setRecordDisplayShape(shape));
        QCOMPARE(recorder->getRecordDisplayShape(), shape);
    }
    for (const bool flip : {true, false}) {
        recorder->setRecordFlip(flip);
        QCOMPARE(recorder->getRecordFlip(), flip);
    }
}

void KdEngineContract::aClipLeavesAFile()
{
    KD_NEEDS_WEBCAM
    KdContractObserver observer;
    const auto recorder = webcam();
    listen(*recorder, observer);
    QVERIFY(recorder->startPreview());
    QVERIFY(comes([&] { return observer.frames() > 0; }));
    QVERIFY(recorder->start());
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(comes([&] { return observer.lastTime() > 0; }));
    QVERIFY(recorder->stop());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(isFile(recorder->getOutputFile()));
    recorder->stopPreview();
    recorder->removeEventObserver(&observer);
}

int KdEngineContractTests::run(const KdEngineContractStage& stage, int argc, char** argv)
{
    KdEngineContract contract(stage);
    return QTest::qExec(&contract, argc, argv);
}

#include "KdEngineContractTests.moc"

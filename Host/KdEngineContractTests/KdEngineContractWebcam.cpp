#include "KdContractThreads.h"
#include "KdEngineContract.h"

#include <algorithm>
#include <vector>

using namespace KdContract;
using namespace KdVBLMODEL;

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
    QList<_KdCaptureDevInf> devices{_KdCaptureDevInf()};
    QVERIFY(!recorder->getDevices(kdtKeyboard, &devices));
    QVERIFY(devices.isEmpty());
    QVERIFY(!recorder->getDevices(kdtWebcam, nullptr));
    QVERIFY(!recorder->getDevices(kdtMicrophone, nullptr));
}

void KdEngineContract::devicesThatAreNotThereAreRefused_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("webcam") << int(kdtWebcam);
    QTest::newRow("microphone") << int(kdtMicrophone);
}

void KdEngineContract::devicesThatAreNotThereAreRefused()
{
    KD_NEEDS_WEBCAM
    QFETCH(int, type);
    const auto kind = static_cast<_KdDevType>(type);
    KdContractObserver observer;
    const auto recorder = webcam();
    listen(*recorder, observer);
    QList<_KdCaptureDevInf> devices;
    QVERIFY(recorder->getDevices(kind, &devices));
    QVERIFY(recorder->setDevice(kind, 0));
    const int count = static_cast<int>(devices.size());
    for (const int index : {-2, -1, count, count + 1000}) {
        QVERIFY(!recorder->setDevice(kind, index));
    }
    QList<QSize> resolutions;
    recorder->getResolutions(&resolutions);
    QVERIFY2(!resolutions.isEmpty(), "the webcam that was set before stays");
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return observer.lastTime() > 0; }));
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&observer);
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

void KdEngineContract::whatAWebcamCannotDoIsRefused()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    QVERIFY(!recorder->setResolution(QSize(-1, -1)));
    QVERIFY(!recorder->setResolution(QSize(3, 100000)));
    QVERIFY(!recorder->setVideoFormat(nullptr));
    QVERIFY(!recorder->setAudioFormat(nullptr));
    recorder->getResolutions(nullptr);
    recorder->getFrameRates(nullptr);
    QList<double> rates;
    recorder->getFrameRates(&rates);
    KdVideoFormat format;
    format.frameRate = rates.value(0);
    QVERIFY(recorder->setVideoFormat(&format));
    format.frameRate = 12345.0;
    QVERIFY(!recorder->setVideoFormat(&format));
    format.frameRate = rates.value(0);
    format.fourcc = 0;
    QVERIFY(!recorder->setVideoFormat(&format));
}

// Not every caller releases a recorder that it observes no more.
void KdEngineContract::unusedRecordersHoldNoThread()
{
    KD_NEEDS_WEBCAM
    const auto first = webcam();
    const int before = kdContractThreads();
    if (before < 0) {
        QSKIP("The system does not tell how many threads there are.");
    }
    std::vector<Owned<IKdWebcamRecorder>> recorders;
    for (int i = 0; i < kRounds; ++i) {
        KdContractObserver observer;
        recorders.push_back(webcam());
        recorders.back()->addEventObserver(&observer);
        recorders.back()->removeEventObserver(&observer);
    }
    // What an engine does for all of them at once may come and go.
    QVERIFY(comes([&] { return kdContractThreads() - before < kRounds / 2; }));
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
    QCOMPARE(observer.lastFrame(), resolutions.value(0));
    QVERIFY(recorder->stopPreview());
    recorder->removeEventObserver(&observer);
    QVERIFY(!observer.wasCalledOnTheMainThread());
    QVERIFY(!observer.hasHeardNonsense());
}

void KdEngineContract::thePreviewGoesOnInAnotherSize()
{
    KD_NEEDS_WEBCAM
    KdContractObserver observer;
    const auto recorder = webcam();
    QList<QSize> resolutions;
    recorder->getResolutions(&resolutions);
    listen(*recorder, observer);
    QVERIFY(recorder->startPreview());
    for (const QSize& resolution : {resolutions.first(), resolutions.last()}) {
        QVERIFY(recorder->setResolution(resolution));
        QVERIFY(comes([&] { return observer.lastFrame() == resolution; }));
    }
    QVERIFY(recorder->stopPreview());
    recorder->removeEventObserver(&observer);
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

void KdEngineContract::anUnknownShapeIsRefused()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    QCOMPARE(recorder->getRecordDisplayShape(), fcrsSquare);
    QVERIFY(recorder->setRecordDisplayShape(fcrsCircle));
    for (const int unknown : {-1, 2, 1000}) {
        QVERIFY(!recorder->setRecordDisplayShape(static_cast<_KdCaptureRecordShape>(unknown)));
        QCOMPARE(recorder->getRecordDisplayShape(), fcrsCircle);
    }
}

void KdEngineContract::anUnknownBackgroundCountsAsNone()
{
    KD_NEEDS_WEBCAM
    const auto recorder = webcam();
    QCOMPARE(recorder->getBackgroundMode(), fcbmNone);
    for (const int unknown : {-2, 2, 1000}) {
        recorder->setBackgroundMode(static_cast<_KdCaptureRecordBackgroundMode>(unknown));
        QCOMPARE(recorder->getBackgroundMode(), fcbmNone);
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

void KdEngineContract::aClipIsPausedAndResumed()
{
    KD_NEEDS_WEBCAM
    KdContractObserver observer;
    const auto recorder = webcam();
    listen(*recorder, observer);
    QVERIFY(!recorder->pause());
    QVERIFY(!recorder->resume());
    QVERIFY(recorder->startPreview());
    QVERIFY(comes([&] { return observer.frames() > 0; }));
    QVERIFY(recorder->start());
    QVERIFY(!recorder->resume());
    QVERIFY(comes([&] { return observer.lastTime() > 0; }));
    QVERIFY(recorder->pause());
    QCOMPARE(recorder->curStatus(), fcsPaused);
    QVERIFY(!recorder->pause());
    const int before = observer.frames();
    QVERIFY2(comes([&] { return observer.frames() > before; }), "the preview goes on");
    QVERIFY(recorder->resume());
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QVERIFY(recorder->stop());
    QVERIFY(!recorder->pause());
    QVERIFY(isFile(recorder->getOutputFile()));
    recorder->stopPreview();
    recorder->removeEventObserver(&observer);
}

void KdEngineContract::aStrangersFileIsNotOverwrittenByAClip()
{
    KD_NEEDS_WEBCAM
    checkStrangersFileIsKept(*webcam());
}

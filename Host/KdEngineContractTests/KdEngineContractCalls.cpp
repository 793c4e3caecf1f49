// What holds while a call on an observer is running.

#include "KdEngineContract.h"

using namespace KdContract;
using namespace KdVBLMODEL;

void KdEngineContract::removingAnObserverWaitsForItsRunningCall()
{
    KdContractHold hold(kHoldMs);
    const auto recorder = audio();
    listen(*recorder, hold);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return hold.isInside(); }));
    recorder->removeEventObserver(&hold);
    const bool wasInside = hold.isInside();
    hold.letGo();
    QVERIFY(comes([&] { return !hold.isInside(); }));
    QVERIFY(!wasInside);
    QVERIFY(recorder->stop());
}

void KdEngineContract::noLockIsHeldDuringACall()
{
    KdContractHold hold(kLongHoldMs * m_stage.slowdown);
    const auto recorder = audio();
    listen(*recorder, hold);
    QVERIFY(recorder->start());
    QVERIFY(comes([&] { return hold.isInside(); }));
    QVERIFY(isInTime([&] { QCOMPARE(recorder->curStatus(), fcsRecording); }));
    QVERIFY(isInTime([&] { recorder->setInterval(kIntervalMs * 2); }));
    QVERIFY(isInTime([&] { recorder->setCallbackSwitch1(false); }));
    QVERIFY(isInTime([&] { recorder->getOutputFile(); }));
    QVERIFY(isInTime([&] { recorder->setOutputFile(newFile(QStringLiteral("m4a"))); }));
    QList<_KdCaptureDevInf> devices;
    QVERIFY(isInTime([&] { recorder->getDevices(&devices); }));
    QVERIFY(isInTime([&] { recorder->pause(); }));
    QVERIFY(isInTime([&] { recorder->resume(); }));
    hold.letGo();
    QVERIFY(recorder->stop());
    recorder->removeEventObserver(&hold);
}

void KdEngineContract::removingThePreviewsObserverWaitsForItsRunningCall()
{
    KD_NEEDS_WEBCAM
    KdContractHold hold(kHoldMs);
    const auto recorder = webcam();
    listen(*recorder, hold);
    QVERIFY(recorder->startPreview());
    QVERIFY(comes([&] { return hold.isInside(); }));
    recorder->removeEventObserver(&hold);
    const bool wasInside = hold.isInside();
    hold.letGo();
    QVERIFY(comes([&] { return !hold.isInside(); }));
    QVERIFY(!wasInside);
    recorder->stopPreview();
}

void KdEngineContract::noLockIsHeldDuringAPreviewsCall()
{
    KD_NEEDS_WEBCAM
    KdContractHold hold(kLongHoldMs * m_stage.slowdown);
    const auto recorder = webcam();
    listen(*recorder, hold);
    QVERIFY(recorder->startPreview());
    QVERIFY(comes([&] { return hold.isInside(); }));
    QVERIFY(isInTime([&] { QCOMPARE(recorder->curStatus(), fcsNoStart); }));
    QVERIFY(isInTime([&] { recorder->setInterval(kIntervalMs * 2); }));
    QVERIFY(isInTime([&] { recorder->setCallbackSwitch1(false); }));
    QVERIFY(isInTime([&] { recorder->setRecordFlip(true); }));
    QVERIFY(isInTime([&] { recorder->setRecordDisplayShape(fcrsCircle); }));
    QList<_KdCaptureDevInf> devices;
    QVERIFY(isInTime([&] { recorder->getDevices(kdtWebcam, &devices); }));
    QList<QSize> resolutions;
    QVERIFY(isInTime([&] { recorder->getResolutions(&resolutions); }));
    hold.letGo();
    recorder->stopPreview();
    recorder->removeEventObserver(&hold);
}

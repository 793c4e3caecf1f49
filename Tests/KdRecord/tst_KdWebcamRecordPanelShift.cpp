#include "WebcamRecordFixture.h"

#include <KdRecord/KdCountCtrlVideo.h>

#include <QComboBox>
#include <QDoubleSpinBox>

using namespace KdVBLMODEL;

/** The panel's lists and the engine's, which have drifted apart: what is shown is what is used. */
class tst_KdWebcamRecordPanelShift : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void takeHasTheMicrophoneThatIsShown();
    void takeWithoutAMicrophoneHasNone();
    void cameraChosenDuringTheCountdownIsTheShownOne();
    void microphoneChosenDuringTheCountdownIsTheShownOne();
    void cameraThatIsGoneCannotBeChosen();
    void microphoneThatIsGoneCannotBeChosen();
    void goneCameraIsLookedFor();
    void cameraChosenWhileALossWaitsIsTheShownOne();

    void camerasOfOneNameAreToldApart();
    void microphonesOfOneNameAreToldApart();

private:
    void countDown();
    void finishCountdown();
    QString usedCamera() const { return engine->selectedDevice(kdtWebcam).name; }
    QString usedMicrophone() const { return engine->selectedDevice(kdtMicrophone).name; }
};

void tst_KdWebcamRecordPanelShift::init()
{
    WebcamRecordFixture::init();
    setCameras(texts({"Cam A", "Cam B", "Cam C"}));
    setMicrophones(texts({"Mic A", "Mic B", "Mic C"}));
}

void tst_KdWebcamRecordPanelShift::countDown()
{
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    QVERIFY(isCountingDown());
}

void tst_KdWebcamRecordPanelShift::finishCountdown()
{
    QVERIFY(isCountingDown());
    auto* const countdown = control<KdCountCtrlVideo>(kCountdown);
    countdown->Abort();
    Q_EMIT countdown->sigFinish();
    QCOMPARE(panel->status(), fcsRecording);
}

void tst_KdWebcamRecordPanelShift::takeHasTheMicrophoneThatIsShown()
{
    showPanel();
    choose(kMicrophone, QStringLiteral("Mic B"));
    countDown();
    setMicrophones(texts({"Mic B", "Mic C"}));
    deliverDevice(fcdAudioInputRemoved);
    finishCountdown();
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic B"));
    QCOMPARE(usedMicrophone(), QStringLiteral("Mic B"));
}

void tst_KdWebcamRecordPanelShift::takeWithoutAMicrophoneHasNone()
{
    setMicrophones({});
    showPanel();
    countDown();
    // What has come is not chosen, and not listed before the take's end.
    setMicrophones(texts({"Mic A"}));
    setCameras(texts({"Cam A", "Cam B"}));
    deliverDevice(fcdWebcamRemoved);
    finishCountdown();
    QCOMPARE(engine->callsOf("setRecordAudio").last(), QStringLiteral("setRecordAudio(false)"));
    QCOMPARE(usedMicrophone(), QString());
}

void tst_KdWebcamRecordPanelShift::cameraChosenDuringTheCountdownIsTheShownOne()
{
    showPanel();
    countDown();
    setCameras(texts({"Cam A", "Cam C"}));
    deliverDevice(fcdWebcamRemoved);
    choose(kCamera, QStringLiteral("Cam C"));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam C"));
    QCOMPARE(usedCamera(), QStringLiteral("Cam C"));
    QVERIFY(engine->isPreviewing());
    // Back to one above the gap.
    choose(kCamera, QStringLiteral("Cam A"));
    QCOMPARE(usedCamera(), QStringLiteral("Cam A"));
}

void tst_KdWebcamRecordPanelShift::microphoneChosenDuringTheCountdownIsTheShownOne()
{
    showPanel();
    countDown();
    setMicrophones(texts({"Mic A", "Mic C"}));
    deliverDevice(fcdAudioInputRemoved);
    choose(kMicrophone, QStringLiteral("Mic C"));
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic C"));
    QCOMPARE(usedMicrophone(), QStringLiteral("Mic C"));
    finishCountdown();
    QCOMPARE(usedMicrophone(), QStringLiteral("Mic C"));
}

void tst_KdWebcamRecordPanelShift::cameraThatIsGoneCannotBeChosen()
{
    showPanel();
    countDown();
    setCameras(texts({"Cam A", "Cam C"}));
    deliverDevice(fcdWebcamRemoved);
    choose(kCamera, QStringLiteral("Cam B"));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QCOMPARE(usedCamera(), QStringLiteral("Cam A"));
    // Its picture was stopped for the choice, and is shown again.
    QVERIFY(engine->isPreviewing());
    QVERIFY(isCountingDown());
    click(kStart);
    fire(kDeviceChangeTimer);
    QCOMPARE(choices(kCamera), texts({"Cam A", "Cam C"}));
}

void tst_KdWebcamRecordPanelShift::microphoneThatIsGoneCannotBeChosen()
{
    showPanel();
    countDown();
    setMicrophones(texts({"Mic A", "Mic C"}));
    deliverDevice(fcdAudioInputRemoved);
    choose(kMicrophone, QStringLiteral("Mic B"));
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic A"));
    QCOMPARE(usedMicrophone(), QStringLiteral("Mic A"));
    click(kStart);
    fire(kDeviceChangeTimer);
    QCOMPARE(choices(kMicrophone), texts({"Mic A", "Mic C"}));
}

void tst_KdWebcamRecordPanelShift::goneCameraIsLookedFor()
{
    showPanel();
    setCameras(texts({"Cam B"}));
    lookAtDevices(fcdWebcamRemoved);
    QVERIFY(isRunning(kDeviceLostTimer));
    QVERIFY(!isRunning(kDeviceChangeTimer));
    engine->clearCalls();
    choose(kCamera, QStringLiteral("Cam C"));
    QVERIFY(isRunning(kDeviceChangeTimer));
    QCOMPARE(engine->count("setDevice"), 0);
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(choices(kCamera), texts({"Cam B"}));
}

void tst_KdWebcamRecordPanelShift::cameraChosenWhileALossWaitsIsTheShownOne()
{
    showPanel();
    setCameras(texts({"Cam B", "Cam C"}));
    lookAtDevices(fcdWebcamRemoved);
    QVERIFY(isRunning(kDeviceLostTimer));
    choose(kCamera, QStringLiteral("Cam B"));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    QCOMPARE(usedCamera(), QStringLiteral("Cam B"));
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(answers->messages(), texts({"The Camera Cam A is lost."}));
}

void tst_KdWebcamRecordPanelShift::camerasOfOneNameAreToldApart()
{
    const QString name = QStringLiteral("Cam");
    const QString one = QStringLiteral("one");
    const QString two = QStringLiteral("two");
    engine->script().webcams = {{kdtWebcam, 0, name, one}, {kdtWebcam, 1, name, two}};
    showPanel();
    auto* const list = control<QComboBox>(kCamera);
    list->setCurrentIndex(1);
    QCOMPARE(engine->selectedDevice(kdtWebcam).id, two);
    engine->script().webcams = {{kdtWebcam, 0, QStringLiteral("New"), QString()},
                                {kdtWebcam, 1, name, one},
                                {kdtWebcam, 2, name, two}};
    lookAtDevices(fcdWebcamListChanged);
    QCOMPARE(list->currentIndex(), 2);
    QCOMPARE(engine->selectedDevice(kdtWebcam).id, two);
}

void tst_KdWebcamRecordPanelShift::microphonesOfOneNameAreToldApart()
{
    const QString name = QStringLiteral("Mic");
    const QString one = QStringLiteral("one");
    const QString two = QStringLiteral("two");
    engine->script().microphones = {{kdtMicrophone, 0, name, one}, {kdtMicrophone, 1, name, two}};
    showPanel();
    auto* const list = control<QComboBox>(kMicrophone);
    list->setCurrentIndex(1);
    engine->script().microphones = {{kdtMicrophone, 0, QStringLiteral("New"), QString()},
                                    {kdtMicrophone, 1, name, one},
                                    {kdtMicrophone, 2, name, two}};
    lookAtDevices(fcdAudioInputAdded);
    QCOMPARE(list->currentIndex(), 2);
    QCOMPARE(engine->selectedDevice(kdtMicrophone).id, two);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelShift>(argc, argv);
}

#include "tst_KdWebcamRecordPanelShift.moc"

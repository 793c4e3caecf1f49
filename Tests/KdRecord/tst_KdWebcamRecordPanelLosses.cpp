#include "WebcamRecordFixture.h"

#include <KdWidgets/KdAudioVolumeWidget.h>

#include <QDoubleSpinBox>
#include <QFile>
#include <QTimer>

using namespace KdVBLMODEL;

/** Cameras and microphones that are lost, in the preview, the countdown and the take. */
class tst_KdWebcamRecordPanelLosses : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cameraLostInThePreview();
    void cameraAndMicrophoneLostTogetherAreOneMessage();
    void lastCameraLostClearsItsRecord();
    void lastMicrophoneLostIsToldOnce();
    void cameraLostInMidTakeEndsItWithTheFile();
    void microphoneLostInMidTakeEndsItWithTheFile();
    void cameraLostDuringTheCountdownAbortsIt();
    void cameraBackAfterItAbortedTheCountdownEndsIdle();
    void cameraBackInMidTakeLeavesTheTakeAlone();
    void lossWhileTheCountdownRunsStartsNothingBehindTheMessage();
    void levelIsZeroWhileTheMicrophoneIsLost();
    void lossWaitsForAnOpenMessage();
    void lossDuringAReportHasAReportOfItsOwn();
    void timerThatALossLeftBehindDoesNothing();
    void abortedInsideTheReportReloadsNothing();

private:
    int started(const char* message) const;
    void loseCameraInTake();
};

int tst_KdWebcamRecordPanelLosses::started(const char* message) const
{
    return logLines().filter(QLatin1String(message)).size();
}

/** Up to the message. */
void tst_KdWebcamRecordPanelLosses::loseCameraInTake()
{
    setCameras({QStringLiteral("Cam B")});
    deliverDevice(fcdWebcamRemoved);
    fire(kDeviceChangeTimer);
    fire(kDeviceLostTimer);
}

void tst_KdWebcamRecordPanelLosses::cameraLostInThePreview()
{
    showPanel();
    setCameras({QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamRemoved);
    QVERIFY(isRunning(kDeviceLostTimer));
    QCOMPARE(panel->findChild<QTimer*>(QLatin1String(kDeviceLostTimer))->interval(), 500);
    QCOMPARE(started("WebcamDevice DeviceLostTimer Started"), 1);
    signalTexts.clear();
    engine->clearCalls();
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(answers->messages(), texts({"The Camera Cam A is lost."}));
    QCOMPARE(signalTexts, texts({"order 8", "order 7", "camera 0", "microphone 0"}));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    QVERIFY(engine->isPreviewing());
    QVERIFY(logLines().contains(
        QStringLiteral("KdWebcamRecordPanel::slotDeviceLostTimer: Camera device lost")));
}

void tst_KdWebcamRecordPanelLosses::cameraAndMicrophoneLostTogetherAreOneMessage()
{
    showPanel();
    setCameras({QStringLiteral("Cam B")});
    setMicrophones({QStringLiteral("Mic B")});
    deliverDevice(fcdWebcamRemoved);
    deliverDevice(fcdAudioInputRemoved);
    fire(kDeviceChangeTimer);
    // The second loss starts nothing while the timer runs.
    QCOMPARE(started("DeviceLostTimer Started"), 1);
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(answers->messages(),
             texts({"The Camera Cam A is lost.\nAudio device Mic A connection lost."}));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic B"));
    QVERIFY(!isRunning(kDeviceLostTimer));
}

void tst_KdWebcamRecordPanelLosses::lastCameraLostClearsItsRecord()
{
    showPanel();
    setCameras({});
    lookAtDevices(fcdWebcamRemoved);
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(statusText(), QStringLiteral("No Device"));
    QVERIFY(!button(kStart)->isEnabled());
    // A cleared record counts as present: nothing is lost once more.
    lookAtDevices(fcdWebcamListChanged);
    QVERIFY(!isRunning(kDeviceLostTimer));
    setCameras({QStringLiteral("Cam A")});
    lookAtDevices(fcdWebcamListChanged);
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QVERIFY(engine->isPreviewing());
}

void tst_KdWebcamRecordPanelLosses::lastMicrophoneLostIsToldOnce()
{
    showPanel();
    setMicrophones({});
    lookAtDevices(fcdAudioInputRemoved);
    QCOMPARE(started("AudioDeviceLost DeviceLostTimer Started"), 1);
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(answers->messages(), texts({"Audio device Mic A connection lost."}));
    QCOMPARE(choices(kMicrophone), texts({"No Device"}));
    setCameras({QStringLiteral("New"), QStringLiteral("Cam A")});
    lookAtDevices(fcdWebcamListChanged);
    QVERIFY(!isRunning(kDeviceLostTimer));
}

void tst_KdWebcamRecordPanelLosses::cameraLostInMidTakeEndsItWithTheFile()
{
    showPanel();
    const QString path = startTake();
    engine->deliverTime(5000);
    drain();
    passTime(5000);
    signalTexts.clear();
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        // The recorder has finished the file before anyone is asked to wait.
        QCOMPARE(signalTexts, texts({"microphone 0", "order 9", "order 8"}));
        QCOMPARE(panel->status(), fcsNoStart);
        box.close();
    });
    loseCameraInTake();
    QCOMPARE(answers->messages(), texts({"The Camera Cam A is lost."}));
    // What was recorded from counts, not what the lists show by now.
    QCOMPARE(signalTexts.mid(3), texts({"order 7", "camera 0", "microphone 0", "order 5",
                                        "sigCaptureFinished(path, 1920x1080, 30, 5, Cam A)"}));
    QCOMPARE(finishedPath, path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
    QCOMPARE(engine->count("start"), 1);
}

void tst_KdWebcamRecordPanelLosses::microphoneLostInMidTakeEndsItWithTheFile()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    setMicrophones({});
    deliverDevice(fcdAudioInputRemoved);
    fire(kDeviceChangeTimer);
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(answers->messages(), texts({"Audio device Mic A connection lost."}));
    QCOMPARE(finishedPath, path);
    QVERIFY(!button(kStart)->isChecked());
}

void tst_KdWebcamRecordPanelLosses::cameraLostDuringTheCountdownAbortsIt()
{
    reachState(QStringLiteral("counting"));
    setCameras({QStringLiteral("Cam B")});
    deliverDevice(fcdWebcamRemoved);
    QVERIFY(!isCountingDown());
    QVERIFY(!control<QWidget>(kCountdown)->isVisible());
    fire(kDeviceChangeTimer);
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QCOMPARE(answers->messages(), texts({"The Camera Cam A is lost."}));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QCOMPARE(orders(5), 1);
    QCOMPARE(signalTexts.filter(QStringLiteral("sigCaptureFinished")),
             texts({"sigCaptureFinished(, 1920x1080, 30, 0, Cam B)"}));
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdWebcamRecordPanelLosses::cameraBackAfterItAbortedTheCountdownEndsIdle()
{
    reachState(QStringLiteral("counting"));
    setCameras({QStringLiteral("Cam B")});
    deliverDevice(fcdWebcamRemoved);
    QVERIFY(!isCountingDown());
    setCameras({QStringLiteral("Cam A"), QStringLiteral("Cam B")});
    deliverDevice(fcdWebcamListChanged);
    fire(kDeviceChangeTimer);
    QVERIFY(!isRunning(kDeviceLostTimer));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QVERIFY(engine->isPreviewing());
    control<QDoubleSpinBox>(kSeconds)->setValue(0);
    startTake();
}

void tst_KdWebcamRecordPanelLosses::cameraBackInMidTakeLeavesTheTakeAlone()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    setCameras({QStringLiteral("Cam B")});
    deliverDevice(fcdWebcamRemoved);
    setCameras({QStringLiteral("Cam A"), QStringLiteral("Cam B")});
    fire(kDeviceChangeTimer);
    QVERIFY(!isRunning(kDeviceLostTimer));
    QVERIFY(button(kStart)->isChecked());
    QCOMPARE(statusText(), QStringLiteral("Recording"));
    stopTake();
    QCOMPARE(finishedPath, path);
}

void tst_KdWebcamRecordPanelLosses::lossWhileTheCountdownRunsStartsNothingBehindTheMessage()
{
    showPanel();
    setCameras({QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamRemoved);
    click(kStart);
    QVERIFY(isCountingDown());
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        QVERIFY(!isCountingDown());
        box.close();
    });
    signalTexts.clear();
    fire(kDeviceLostTimer);
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QCOMPARE(orders(5), 0);
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdWebcamRecordPanelLosses::levelIsZeroWhileTheMicrophoneIsLost()
{
    showPanel();
    const auto* const meter = control<KdAudioVolumeWidget>("KCameraCapture_VolumeMeter");
    setMicrophones({QStringLiteral("Mic B")});
    lookAtDevices(fcdAudioInputRemoved);
    engine->deliverVolume(30);
    drain();
    QCOMPARE(meter->volume(), 0.0);
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    engine->deliverVolume(30);
    drain();
    QCOMPARE(meter->volume(), 90.0);
}

void tst_KdWebcamRecordPanelLosses::lossWaitsForAnOpenMessage()
{
    showPanel();
    panel->setFolderCheck(withFreeSpace(1));
    setCameras({QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamRemoved);
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        fire(kDeviceLostTimer);
        QVERIFY(isRunning(kDeviceLostTimer));
        QCOMPARE(answers->messages().size(), 1);
        box.close();
    });
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->messages().size(), 2);
    QCOMPARE(answers->messages().last(), QStringLiteral("The Camera Cam A is lost."));
    QTRY_COMPARE(choice(kCamera), QStringLiteral("Cam B"));
}

void tst_KdWebcamRecordPanelLosses::lossDuringAReportHasAReportOfItsOwn()
{
    showPanel();
    setCameras({QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamRemoved);
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        setMicrophones({QStringLiteral("Mic B")});
        lookAtDevices(fcdAudioInputRemoved);
        QVERIFY(isRunning(kDeviceLostTimer));
        box.close();
    });
    answers->answerMessage(QDialogButtonBox::Ok);
    fire(kDeviceLostTimer);
    QTRY_COMPARE(answers->messages(),
                 texts({"The Camera Cam A is lost.", "Audio device Mic A connection lost."}));
}

void tst_KdWebcamRecordPanelLosses::timerThatALossLeftBehindDoesNothing()
{
    showPanel();
    setCameras({QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamRemoved);
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        // The same camera is missed once more.
        lookAtDevices(fcdWebcamListChanged);
        box.close();
    });
    fire(kDeviceLostTimer);
    QVERIFY(isRunning(kDeviceLostTimer));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    signalTexts.clear();
    fire(kDeviceLostTimer);
    QVERIFY(isCountingDown());
    QCOMPARE(signalTexts, QStringList());
    QVERIFY(!isRunning(kDeviceLostTimer));
}

void tst_KdWebcamRecordPanelLosses::abortedInsideTheReportReloadsNothing()
{
    showPanel();
    setCameras({QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamRemoved);
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        panel->AbordRecorder();
        box.close();
    });
    fire(kDeviceLostTimer);
    QCOMPARE(answers->pending(), 0);
    QVERIFY(!engine->isPreviewing());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelLosses>(argc, argv);
}

#include "tst_KdWebcamRecordPanelLosses.moc"

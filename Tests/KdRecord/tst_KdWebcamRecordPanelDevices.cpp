#include "WebcamRecordFixture.h"

#include <KdWidgets/KdAudioVolumeWidget.h>

#include <QComboBox>
#include <QTimer>

using namespace KdVBLMODEL;

namespace {

constexpr const char* kOccupied = "Webcam is being used by another application, please close other "
                                  "application and try again.";

} // namespace

/** Devices that come and go while the webcam panel is open. */
class tst_KdWebcamRecordPanelDevices : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void burstOfEventsIsOneLook();
    void eventsDuringATakeWaitForItsEnd();
    void eventsDuringACountdownWaitForItsEnd();
    void newCameraKeepsTheChosenOne();
    void newMicrophoneKeepsTheChosenOne();
    void firstCameraStartsThePreview();
    void unknownEventsAndResponsesAreSilent_data();
    void unknownEventsAndResponsesAreSilent();
    void everyResponseClearsTheLevel();
    void timerThatRunsIsNotStartedAnew_data();
    void timerThatRunsIsNotStartedAnew();

    void occupiedCameraIsTold_data();
    void occupiedCameraIsTold();
    void occupiedCameraIsToldOnceAtATime();
    void occupiedCameraIsToldAfterAnotherMessage();
    void occupiedCameraIsNotToldOnceThePanelIsAborted();

private:
    int started(const char* message) const;
};

int tst_KdWebcamRecordPanelDevices::started(const char* message) const
{
    return logLines().filter(QLatin1String(message)).size();
}

void tst_KdWebcamRecordPanelDevices::burstOfEventsIsOneLook()
{
    showPanel();
    const auto* const timer = panel->findChild<QTimer*>(QLatin1String(kDeviceChangeTimer));
    QCOMPARE(timer->interval(), 1200);
    deliverDevice(fcdWebcamListChanged);
    QVERIFY(timer->isActive());
    for (const int status : {1, 2, 3, 4, 1, 3}) {
        deliverDevice(status);
    }
    // Nothing starts it anew while it runs.
    QCOMPARE(started("DeviceChangeTimer Started"), 1);
    QCOMPARE(orders(9), 0);
    fire(kDeviceChangeTimer);
    QCOMPARE(orders(9), 1);
    QVERIFY(!timer->isActive());
    // What was pending was looked at with it.
    startTake();
    passTime(5000);
    stopTake();
    QVERIFY(!timer->isActive());
}

void tst_KdWebcamRecordPanelDevices::eventsDuringATakeWaitForItsEnd()
{
    showPanel();
    startTake();
    passTime(5000);
    for (const int status : {1, 3, 1}) {
        deliverDevice(status);
    }
    QVERIFY(!isRunning(kDeviceChangeTimer));
    QCOMPARE(started("DeviceChangeTimer Started"), 0);
    stopTake();
    QVERIFY(isRunning(kDeviceChangeTimer));
    QCOMPARE(started("DeviceChangeTimer Started"), 1);
    fire(kDeviceChangeTimer);
    QCOMPARE(orders(9), 1);
    // The flag was used up: the next take's end starts nothing.
    startTake();
    passTime(5000);
    stopTake();
    QVERIFY(!isRunning(kDeviceChangeTimer));
}

void tst_KdWebcamRecordPanelDevices::eventsDuringACountdownWaitForItsEnd()
{
    reachState(QStringLiteral("counting"));
    deliverDevice(fcdWebcamListChanged);
    QVERIFY(!isRunning(kDeviceChangeTimer));
    click(kStart);
    QVERIFY(!isCountingDown());
    QVERIFY(isRunning(kDeviceChangeTimer));
}

void tst_KdWebcamRecordPanelDevices::newCameraKeepsTheChosenOne()
{
    showPanel();
    choose(kCamera, QStringLiteral("Cam B"));
    setCameras({QStringLiteral("New"), QStringLiteral("Cam A"), QStringLiteral("Cam B")});
    lookAtDevices(fcdWebcamListChanged);
    QCOMPARE(choices(kCamera), texts({"New", "Cam A", "Cam B"}));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    QCOMPARE(engine->selectedDevice(kdtWebcam).name, QStringLiteral("Cam B"));
    QVERIFY(engine->isPreviewing());
    QVERIFY(logLines().contains(
        QStringLiteral("KdWebcamRecordPanel::slotRecorderResponeType: Camera device changed")));
}

void tst_KdWebcamRecordPanelDevices::newMicrophoneKeepsTheChosenOne()
{
    showPanel();
    choose(kMicrophone, QStringLiteral("Mic B"));
    setMicrophones({QStringLiteral("New"), QStringLiteral("Mic A"), QStringLiteral("Mic B")});
    lookAtDevices(fcdAudioInputAdded);
    QCOMPARE(choices(kMicrophone), texts({"New", "Mic A", "Mic B"}));
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic B"));
    QCOMPARE(engine->selectedDevice(kdtMicrophone).name, QStringLiteral("Mic B"));
    QVERIFY(logLines().contains(
        QStringLiteral("KdWebcamRecordPanel::slotRecorderResponeType: Audio device changed")));
}

void tst_KdWebcamRecordPanelDevices::firstCameraStartsThePreview()
{
    setCameras({});
    setMicrophones({});
    showPanel();
    setCameras({QStringLiteral("Cam A")});
    setMicrophones({QStringLiteral("Mic A")});
    lookAtDevices(fcdWebcamListChanged);
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic A"));
    QVERIFY(button(kStart)->isEnabled());
    QVERIFY(engine->isPreviewing());
    QVERIFY(logLines().contains(QStringLiteral("KdWebcamRecordPanel::InitUI: InitUI END")));
}

void tst_KdWebcamRecordPanelDevices::unknownEventsAndResponsesAreSilent_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("preview") << QStringLiteral("preview");
    QTest::newRow("take") << QStringLiteral("recording");
}

void tst_KdWebcamRecordPanelDevices::unknownEventsAndResponsesAreSilent()
{
    QFETCH(QString, state);
    reachState(state);
    signalTexts.clear();
    engine->clearCalls();
    for (const int status : {0, 6, 99, -1}) {
        deliverDevice(status);
    }
    for (const int response : {2, 12, 99, -1}) {
        QVERIFY(QMetaObject::invokeMethod(panel, "slotRecorderResponeType", Q_ARG(int, response)));
    }
    QCOMPARE(signalTexts, QStringList());
    QCOMPARE(engine->commands(), QStringList());
    QVERIFY(!isRunning(kDeviceChangeTimer));
    QVERIFY(!isRunning(kDeviceLostTimer));
}

void tst_KdWebcamRecordPanelDevices::everyResponseClearsTheLevel()
{
    showPanel();
    const auto* const meter = control<KdAudioVolumeWidget>("KCameraCapture_VolumeMeter");
    for (const int response : {2, 5, 12, -1}) {
        engine->deliverVolume(20);
        drain();
        QCOMPARE(meter->volume(), 60.0);
        QVERIFY(QMetaObject::invokeMethod(panel, "slotRecorderResponeType", Q_ARG(int, response)));
        QCOMPARE(meter->volume(), 0.0);
    }
}

void tst_KdWebcamRecordPanelDevices::timerThatRunsIsNotStartedAnew_data()
{
    QTest::addColumn<QString>("timer");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("response");
    const QString change = QString::fromLatin1(kDeviceChangeTimer);
    for (const int response : {5, 6, 10, 11}) {
        QTest::addRow("change, %d", response) << change << 5 << response;
    }
    const QString lost = QString::fromLatin1(kDeviceLostTimer);
    for (const int response : {3, 4}) {
        QTest::addRow("loss, %d", response) << lost << 3 << response;
    }
}

void tst_KdWebcamRecordPanelDevices::timerThatRunsIsNotStartedAnew()
{
    QFETCH(QString, timer);
    QFETCH(int, first);
    QFETCH(int, response);
    showPanel();
    auto* const running = panel->findChild<QTimer*>(timer);
    // So long that it does not fire here.
    running->setInterval(600000);
    const auto respond = [this](int number) {
        QVERIFY(QMetaObject::invokeMethod(panel, "slotRecorderResponeType", Q_ARG(int, number)));
    };
    respond(first);
    QVERIFY(running->isActive());
    const int atFirst = running->remainingTime();
    QTRY_VERIFY(running->remainingTime() < atFirst - 10);
    const int left = running->remainingTime();
    respond(response);
    QVERIFY(running->isActive());
    QVERIFY(running->remainingTime() <= left);
    QCOMPARE(started("Timer Started"), 1);
    panel->AbordRecorder();
}

void tst_KdWebcamRecordPanelDevices::occupiedCameraIsTold_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"preview", "counting", "recording"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdWebcamRecordPanelDevices::occupiedCameraIsTold()
{
    QFETCH(QString, state);
    reachState(state);
    const bool wasChecked = button(kStart)->isChecked();
    const _KdCaptureStatus status = panel->status();
    signalTexts.clear();
    answers->answerMessage(QDialogButtonBox::Ok);
    deliverDevice(fcdWebcamOccupied);
    QTRY_COMPARE(answers->messages(), texts({kOccupied}));
    QCOMPARE(button(kStart)->isChecked(), wasChecked);
    QCOMPARE(panel->status(), status);
    QCOMPARE(signalTexts, QStringList());
}

void tst_KdWebcamRecordPanelDevices::occupiedCameraIsToldOnceAtATime()
{
    showPanel();
    answers->answerMessage(QDialogButtonBox::Ok);
    for (int i = 0; i < 5; ++i) {
        engine->deliverDevice(fcdWebcamOccupied, 0);
    }
    QTRY_COMPARE(answers->pending(), 0);
    drain();
    QCOMPARE(answers->messages().size(), 1);
}

void tst_KdWebcamRecordPanelDevices::occupiedCameraIsToldAfterAnotherMessage()
{
    showPanel();
    panel->setFolderCheck(withFreeSpace(1));
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        deliverDevice(fcdWebcamOccupied);
        deliverDevice(fcdWebcamOccupied);
        QCOMPARE(answers->messages().size(), 1);
        box.close();
    });
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->messages().size(), 2);
    QCOMPARE(answers->messages().last(), QString::fromLatin1(kOccupied));
    QTRY_COMPARE(answers->pending(), 0);
    drain();
    // That was all of it.
    QCOMPARE(answers->messages().size(), 2);
}

void tst_KdWebcamRecordPanelDevices::occupiedCameraIsNotToldOnceThePanelIsAborted()
{
    showPanel();
    panel->setFolderCheck(withFreeSpace(1));
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        deliverDevice(fcdWebcamOccupied);
        panel->AbordRecorder();
        box.close();
    });
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    drain();
    QCOMPARE(answers->messages().size(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelDevices>(argc, argv);
}

#include "tst_KdWebcamRecordPanelDevices.moc"

#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdCountCtrl.h>
#include <KdVBLModel/KdProject.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdToast.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>

using namespace KdVBLMODEL;

namespace {

KAudioAdvanceSettings* advanceSettings()
{
    return KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
}

} // namespace

/** A take from the button to the report. */
class tst_KdAudioRecordPanel : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void declaresItsSignalsAndSlotsInOrder();
    void takeGoesFromTheButtonToTheReport();
    void engineGetsEverythingBeforeTheStart();
    void fileIsNamedByTheLocalTime();
    void folderIsTakenAsItIs_data();
    void folderIsTakenAsItIs();
    void settingsAreLockedWhileCountingAndRecording();

    void tooShortTakeIsDiscarded_data();
    void tooShortTakeIsDiscarded();
    void secondTakeIsMeasuredAnew();

    void fileThatCouldNotBeFinishedIsNoSuccess();
    void fileThatIsNotThereIsNoSuccess();
    void folderDeletedInMidTakeIsNoSuccess();

    void pauseAndResumeReachEngineAndHost();
    void pausedTakeCanBeStopped();

    void timeIsShownAndReportedInFrames();
    void timeOfATakeThatIsOverIsDropped();
    void levelIsShownBeforeAndDuringATake();

    void startKeepsTheStoredPreviewFlagAndTheRest();

    void takeStoppedByTheSlotThatLearnsOfItsStart();
    void takeBegunByTheSlotThatLearnsOfAnEnd();
    void countdownBegunByTheSlotThatLearnsOfAnEnd();
};

void tst_KdAudioRecordPanel::declaresItsSignalsAndSlotsInOrder()
{
    const QStringList expected =
        texts({"sigClose()",
               "sigCaptureFinished(QString,int,int,int,QString)",
               "sigMute(bool)",
               "sigPause()",
               "sigResume()",
               "sigStartCapture(bool)",
               "sigStartCaptureFailed()",
               "sigEndCapture()",
               "sigCaptureDoing(qlonglong)",
               "sigStartRecordBtnClick()",
               "slotOnAudioDeviceChanged(int)",
               "slotOnStartStopClicked()",
               "slotOnOkButtonClicked()",
               "slotOnAdvanceButtonClicked()",
               "slotCountViewFinished()",
               "slotRefreshDevices()",
               "slotSpaceShortcutActivated()",
               "slotStopButtonClicked()",
               "slotCountViewPressed(QPoint)",
               "slotCaptureTime(qlonglong)",
               "slotCaptureVolume(int)",
               "slotOnSavePathChanged(QString)",
               "slotCountdownChanged(double)",
               "slotDeviceStatusChanged(KdVBLMODEL::KdCaptureDeviceStatus,int)",
               "slotReRecord()",
               "slotPauseContinue()"});
    QCOMPARE(methodsOf(KdAudioRecordPanel::staticMetaObject), expected);
}

void tst_KdAudioRecordPanel::takeGoesFromTheButtonToTheReport()
{
    showPanel();
    signalTexts.clear();
    const QString path = startTake();
    engine->deliverTime(10400);
    drain();
    passTime(10400);
    stopTake();
    QCOMPARE(signalTexts,
             texts({"sigStartRecordBtnClick", "sigStartCapture(0)", "sigCaptureDoing(260)",
                    "sigCaptureFinished(path, 2, 16, 10, Mic A)"}));
    QCOMPARE(finishedPath, path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!button(kStart)->isChecked());
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
}

void tst_KdAudioRecordPanel::engineGetsEverythingBeforeTheStart()
{
    advanceSettings()->SetAudioEncode(kFourCcAac);
    advanceSettings()->SetBitrate(192);
    advanceSettings()->SetChannels(1);
    advanceSettings()->SetSampleRate(48000);
    advanceSettings()->SetBitrateMode(2);
    showPanel();
    control<QComboBox>(kDevice)->setCurrentIndex(1);
    engine->clearCalls();
    const QString path = startTake();
    const QStringList operations = engine->commands();
    QCOMPARE(operations.size(), 5);
    QCOMPARE(operations.at(0), QStringLiteral("setOutputFile(%1)").arg(path));
    QCOMPARE(operations.at(1), QStringLiteral("setDevice(1)"));
    QCOMPARE(operations.at(2), QStringLiteral("setInterval(50)"));
    QCOMPARE(operations.at(4), QStringLiteral("start()"));
    const auto format = engine->lastCall("setAudioFormat").argument<KdAudioFormat>(0);
    QCOMPARE(format.bitrate, 192000);
    QCOMPARE(format.channels, 1);
    QCOMPARE(format.samplerate, 48000);
    QCOMPARE(format.bitrateMode, 2);
    QCOMPARE(format.fourcc, kFourCcAac);
    QCOMPARE(format.bitPerSample, 16);
    QCOMPARE(format.volume, -1.0);
}

void tst_KdAudioRecordPanel::fileIsNamedByTheLocalTime()
{
    showPanel();
    const QString path = startTake();
    QCOMPARE(QFileInfo(path).fileName(), QStringLiteral("REC_20260309_080507.m4a"));
    QVERIFY(QFileInfo(path).isAbsolute());
}

void tst_KdAudioRecordPanel::folderIsTakenAsItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral("my takes");
    QTest::newRow("place marker") << QStringLiteral("%1 %2 takes");
    QTest::newRow("other scripts") << QStringLiteral("録音 تسجيل");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('x'));
    QTest::newRow("markup") << QStringLiteral("<b>takes & co");
    QTest::newRow("separator at the end") << QStringLiteral("takes/");
    QTest::newRow("doubled separators") << QStringLiteral("a//takes//");
}

void tst_KdAudioRecordPanel::folderIsTakenAsItIs()
{
    QFETCH(QString, name);
    setVoiceFolder(temporaryPath(name));
    showPanel();
    const QString path = startTake();
    passTime(1000);
    stopTake();
    QCOMPARE(finishedPath, path);
    QVERIFY(!path.contains(QStringLiteral("//")));
    QCOMPARE(QFileInfo(path).absolutePath(), QDir::cleanPath(temporaryPath(name)));
}

void tst_KdAudioRecordPanel::settingsAreLockedWhileCountingAndRecording()
{
    showPanel();
    const auto areSettingsEnabled = [this] {
        QSet<bool> states;
        for (const char* name : {kDevice, "KAudioCapture_InputBox", "KAudioCapture_ButtonRefresh",
                                 kOk, "KAudioCapture_CountdownBox", "KAudioCapture_MuteBox",
                                 "KAudioCapture_FolderEdit", "KAudioCapture_ButtonAdvance"}) {
            states.insert(control<QWidget>(name)->isEnabled());
        }
        return states;
    };
    const auto isTimeEnabled = [this] {
        return control<QWidget>("KAudioCapture_TimeLabel")->isEnabled();
    };
    QCOMPARE(areSettingsEnabled(), QSet<bool>{true});
    QVERIFY(!isTimeEnabled());
    QVERIFY(!isLocked());

    click(kStart);
    QCOMPARE(areSettingsEnabled(), QSet<bool>{false});
    QVERIFY(isTimeEnabled());
    QVERIFY(isLocked());
    QVERIFY(!button(kPause)->isVisible());

    QTRY_COMPARE(panel->status(), fcsRecording);
    QCOMPARE(areSettingsEnabled(), QSet<bool>{false});
    QVERIFY(isLocked());
    QVERIFY(button(kPause)->isVisible());
    QVERIFY(button(kReRecord)->isVisible());
    QVERIFY(!button(kStop)->isVisible());

    passTime(1000);
    stopTake();
    QCOMPARE(areSettingsEnabled(), QSet<bool>{true});
    QVERIFY(!isTimeEnabled());
    QVERIFY(!isLocked());
    QVERIFY(!button(kPause)->isVisible());
    QVERIFY(!button(kReRecord)->isVisible());
}

void tst_KdAudioRecordPanel::tooShortTakeIsDiscarded_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("at once") << 0 << false;
    QTest::newRow("0.9 s") << 900 << false;
    QTest::newRow("just too short") << 999 << false;
    QTest::newRow("just long enough") << 1000 << true;
}

void tst_KdAudioRecordPanel::tooShortTakeIsDiscarded()
{
    QFETCH(int, milliseconds);
    QFETCH(bool, isKept);
    showPanel();
    const QString path = startTake();
    // What the engine says of the time is of no account.
    engine->deliverTime(isKept ? 0 : 60000);
    drain();
    passTime(milliseconds);
    if (!isKept) {
        answers->answerMessage(QDialogButtonBox::Ok);
    }
    stopTake();
    QCOMPARE(answers->messages(), isKept ? QStringList() : texts({kTooShort}));
    QVERIFY(signalTexts.last().startsWith(isKept ? QStringLiteral("sigCaptureFinished(path, ")
                                                 : QStringLiteral("sigCaptureFinished(, ")));
    QCOMPARE(QFile::exists(path), isKept);
}

void tst_KdAudioRecordPanel::secondTakeIsMeasuredAnew()
{
    showPanel();
    startTake();
    passTime(5000);
    stopTake();
    startTake();
    passTime(500);
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(answers->messages(), texts({kTooShort}));
    QCOMPARE(takes().size(), 1);
}

void tst_KdAudioRecordPanel::fileThatCouldNotBeFinishedIsNoSuccess()
{
    expectLog(QStringLiteral("Failed to stop the audio record process"));
    showPanel();
    const QString path = startTake();
    passTime(5000);
    engine->fail("stop");
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(answers->messages(), texts({kDeviceIssue}));
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)"));
    // Perhaps it can be repaired.
    QVERIFY(QFile::exists(path));
    QVERIFY(!button(kStart)->isChecked());
}

void tst_KdAudioRecordPanel::fileThatIsNotThereIsNoSuccess()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    QVERIFY(QFile::remove(path));
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(answers->messages(), texts({kDeviceIssue}));
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)"));
}

void tst_KdAudioRecordPanel::folderDeletedInMidTakeIsNoSuccess()
{
    showPanel();
    startTake();
    passTime(5000);
    QVERIFY(QDir(voiceFolder()).removeRecursively());
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(answers->messages(), texts({kPermission}));
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)"));
}

void tst_KdAudioRecordPanel::pauseAndResumeReachEngineAndHost()
{
    showPanel();
    startTake();
    signalTexts.clear();
    engine->clearCalls();
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));

    click(kPause);
    QCOMPARE(panel->status(), fcsPaused);
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Resume"));
    QCOMPARE(button(kPause)->property("WITH_SHORTCUT").toBool(), false);
    const auto toast = [] {
        for (QWidget* const top : QApplication::topLevelWidgets()) {
            const auto* const shown = qobject_cast<KdToast*>(top);
            if (shown && shown->isVisible()) {
                return shown->text();
            }
        }
        return QString();
    };
    QCOMPARE(toast(), QStringLiteral("Recording is paused. Click Resume to continue recording."));

    click(kPause);
    QCOMPARE(panel->status(), fcsRecording);
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
    QCOMPARE(signalTexts, texts({"sigPause", "sigResume"}));
    QCOMPARE(engine->commands(), texts({"pause()", "resume()"}));
    QCOMPARE(toast(), QString());
}

void tst_KdAudioRecordPanel::pausedTakeCanBeStopped()
{
    showPanel();
    const QString path = startTake();
    passTime(2000);
    click(kPause);
    stopTake();
    QCOMPARE(finishedPath, path);

    startTake();
    QVERIFY(!button(kPause)->isChecked());
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
}

void tst_KdAudioRecordPanel::timeIsShownAndReportedInFrames()
{
    IKdProjectManager::getInstance()->setFrameRate(KdFrameRate::Fps23_976);
    showPanel();
    startTake();
    signalTexts.clear();
    engine->deliverTime(10000);
    drain();
    QCOMPARE(signalTexts, texts({"sigCaptureDoing(240)"}));
    QCOMPARE(timeText(), QStringLiteral(" 00:00:10"));
    engine->deliverTime(3661999);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 01:01:01"));
}

void tst_KdAudioRecordPanel::timeOfATakeThatIsOverIsDropped()
{
    showPanel();
    startTake();
    passTime(5000);
    // Still on its way when the take ends.
    engine->deliverTime(5000);
    button(kStart)->click();
    QCOMPARE(panel->status(), fcsNoStart);
    signalTexts.clear();
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
    QCOMPARE(signalTexts, QStringList());
}

void tst_KdAudioRecordPanel::levelIsShownBeforeAndDuringATake()
{
    showPanel();
    const auto* const meter = control<KdAudioVolumeWidget>("KAudioCapture_VolumeMeter");
    engine->deliverVolume(30);
    drain();
    QCOMPARE(meter->volume(), 30.0);
    startTake();
    engine->deliverVolume(40);
    drain();
    QCOMPARE(meter->volume(), 40.0);
    passTime(5000);
    stopTake();
    QCOMPARE(meter->volume(), 0.0);
    engine->deliverVolume(20);
    drain();
    QCOMPARE(meter->volume(), 20.0);
    setMicrophones({});
    click("KAudioCapture_ButtonRefresh");
    QCOMPARE(meter->volume(), 0.0);
}

void tst_KdAudioRecordPanel::startKeepsTheStoredPreviewFlagAndTheRest()
{
    KRecordSettingData stored;
    stored.selectedCameraDeviceName = QStringLiteral("Camera");
    stored.cameraWidth = 1280;
    stored.cameraHeight = 720;
    stored.frameRate = 29.97;
    stored.recordPreview = false;
    KRecordSettingParam::instance()->setData(stored);
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(1);
    control<QComboBox>(kDevice)->setCurrentIndex(1);
    startTake();
    const KRecordSettingData data = KRecordSettingParam::instance()->data();
    QCOMPARE(data.selectedAudioDeviceName, QStringLiteral("Mic B"));
    QCOMPARE(data.countdown, 1);
    QCOMPARE(data.recordPreview, false);
    QCOMPARE(data.selectedCameraDeviceName, QStringLiteral("Camera"));
    QCOMPARE(data.cameraWidth, 1280);
    QCOMPARE(data.cameraHeight, 720);
    QCOMPARE(data.frameRate, 29.97);
}

void tst_KdAudioRecordPanel::takeStoppedByTheSlotThatLearnsOfItsStart()
{
    showPanel();
    answers->answerMessage(QDialogButtonBox::Ok);
    connect(panel, &KdAudioRecordPanel::sigStartCapture, this,
            [this] { panel->stopFromOutside(); });
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({kTooShort}));
    QTRY_VERIFY(!isLocked());
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!button(kPause)->isVisible());
    QCOMPARE(panel->status(), fcsNoStart);
}

void tst_KdAudioRecordPanel::takeBegunByTheSlotThatLearnsOfAnEnd()
{
    showPanel();
    startTake();
    passTime(2000);
    QString next;
    connect(panel, &KdAudioRecordPanel::sigCaptureFinished, this, [this, &next] {
        if (next.isEmpty()) {
            next = startTake();
            engine->deliverTime(3000);
            drain();
        }
    });
    click(kStart);
    QVERIFY(!next.isEmpty());
    QCOMPARE(panel->status(), fcsRecording);
    QVERIFY(button(kStart)->isChecked());
    QVERIFY(button(kPause)->isVisible());
    QVERIFY(button(kReRecord)->isVisible());
    QVERIFY(!button(kStop)->isVisible());
    QVERIFY(isLocked());
    QCOMPARE(timeText(), QStringLiteral(" 00:00:03"));
    passTime(2000);
    stopTake();
    QCOMPARE(finishedPath, next);
    QVERIFY(!isLocked());
}

void tst_KdAudioRecordPanel::countdownBegunByTheSlotThatLearnsOfAnEnd()
{
    showPanel();
    startTake();
    passTime(2000);
    connect(panel, &KdAudioRecordPanel::sigCaptureFinished, this, [this] {
        if (!isCountingDown()) {
            reachState(QStringLiteral("counting"));
            drain();
        }
    });
    click(kStart);
    QVERIFY(isCountingDown());
    QVERIFY(control<KdCountCtrl>("KAudioCapture_Countdown")->isVisible());
    QVERIFY(button(kStart)->isChecked());
    QVERIFY(button(kStop)->isVisible());
    QVERIFY(isLocked());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanel>(argc, argv);
}

#include "tst_KdAudioRecordPanel.moc"

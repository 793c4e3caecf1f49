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

const char kTooShort[] = "The recording is too short. Data cannot be saved.";
const char kDeviceIssue[] = "Unable to record due to an issue with the device.";
const char kPermission[] = "Please check whether you have permission to write or read on the path, "
                           "or choose other path to create.";

QStringList texts(std::initializer_list<const char*> lines)
{
    QStringList list;
    for (const char* line : lines) {
        list.append(QString::fromUtf8(line));
    }
    return list;
}

KdOutputFolderCheck withFreeSpace(qint64 megabytes)
{
    return KdOutputFolderCheck([megabytes](const QString&) { return megabytes; });
}

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
    void takeGoesFromTheButtonToTheReport();
    void engineGetsEverythingBeforeTheStart();
    void fileIsNamedByTheLocalTime();
    void folderIsTakenAsItIs_data();
    void folderIsTakenAsItIs();
    void settingsAreLockedWhileCountingAndRecording();

    void countdownOfZeroStartsAtTheFirstTick();
    void emptyCountdownCountsThree();
    void countdownIsCancelled_data();
    void countdownIsCancelled();
    void pressBesideTheButtonDoesNotCancel();
    void countdownFollowsTheWindow();

    void tooShortTakeIsDiscarded_data();
    void tooShortTakeIsDiscarded();
    void secondTakeIsMeasuredAnew();

    void missingFolderIsMade();
    void unusableFolderRefusesTheStart_data();
    void unusableFolderRefusesTheStart();
    void onlyAnExplicitNoRecordsOnLittleSpace_data();
    void onlyAnExplicitNoRecordsOnLittleSpace();

    void refusedStartEndsIdle();
    void fileThatCouldNotBeFinishedIsNoSuccess();
    void fileThatIsNotThereIsNoSuccess();
    void folderDeletedInMidTakeIsNoSuccess();

    void pauseAndResumeReachEngineAndHost();
    void pausedTakeCanBeStopped();

    void timeIsShownAndReportedInFrames();
    void timeOfATakeThatIsOverIsDropped();
    void levelIsShownBeforeAndDuringATake();

    void startKeepsTheStoredPreviewFlagAndTheRest();
    void startThatFailsStoresNothing();

    void reRecordDeletesTheOldTakeWhenTheNewOneRuns();
    void reRecordWithinOneSecondKeepsTheNewTake();
    void reRecordThatFailsDeletesTheOldTakeAndEndsIdle();
    void reRecordCancelledGoesOn();
    void reRecordIsAskedOnce();
    void reRecordQuestionGoesWithTheTake();
    void reRecordOfAPausedTakeRecords();
    void timeOfTheFormerTakeIsDroppedAfterReRecording();
    void takeStoppedByTheSlotThatLearnsOfItsStart();

private:
    bool isCountdownCentred() const;
};

bool tst_KdAudioRecordPanel::isCountdownCentred() const
{
    const auto middle = [](const QWidget& widget) {
        return widget.mapToGlobal(widget.rect().center());
    };
    const auto* const countdown = control<KdCountCtrl>("KAudioCapture_Countdown");
    return (middle(*countdown) - middle(*button(kStart))).manhattanLength() <= 2;
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

void tst_KdAudioRecordPanel::countdownOfZeroStartsAtTheFirstTick()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(0);
    click(kStart);
    QVERIFY(isCountingDown());
    QCOMPARE(engine->count("start"), 0);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE(engine->count("start"), 1);
    QVERIFY2(timer.elapsed() < 1000, "A countdown of 0 took as long as one of 1");
    QVERIFY(!isCountingDown());
}

void tst_KdAudioRecordPanel::emptyCountdownCountsThree()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->findChild<QLineEdit*>()->clear();
    click(kStart);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE_WITH_TIMEOUT(engine->count("start"), 1, 6000);
    QVERIFY2(timer.elapsed() > 2500, "The empty countdown was shorter than three seconds");
    QCOMPARE(KRecordSettingParam::instance()->data().countdown, 3);
}

void tst_KdAudioRecordPanel::countdownIsCancelled_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"button", "shortcut", "countdown", "outside"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordPanel::countdownIsCancelled()
{
    QFETCH(QString, way);
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    QVERIFY(isCountingDown());
    QVERIFY(button(kStop)->isVisible());
    auto* const countdown = control<KdCountCtrl>("KAudioCapture_Countdown");
    QVERIFY(countdown->isVisible());
    signalTexts.clear();
    if (way == QLatin1String("button")) {
        click(kStop);
    } else if (way == QLatin1String("shortcut")) {
        pressKey(Qt::Key_Space);
    } else if (way == QLatin1String("countdown")) {
        QTRY_VERIFY(isCountdownCentred());
        QTest::mousePress(countdown, Qt::LeftButton);
    } else {
        panel->stopFromOutside();
    }
    QVERIFY(!isCountingDown());
    QVERIFY(!countdown->isVisible());
    QVERIFY(!button(kStop)->isVisible());
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QCOMPARE(engine->count("start"), 0);
    QCOMPARE(engine->count("stop"), 0);
    QCOMPARE(signalTexts, QStringList());
}

void tst_KdAudioRecordPanel::pressBesideTheButtonDoesNotCancel()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    auto* const countdown = control<KdCountCtrl>("KAudioCapture_Countdown");
    Q_EMIT countdown->sigPressed(panel->mapToGlobal(QPoint(1, 1)));
    QVERIFY(isCountingDown());
}

void tst_KdAudioRecordPanel::countdownFollowsTheWindow()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    QTRY_VERIFY(isCountdownCentred());
    window->move(window->pos() + QPoint(150, 90));
    QTRY_VERIFY(isCountdownCentred());
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

void tst_KdAudioRecordPanel::missingFolderIsMade()
{
    setVoiceFolder(temporaryPath(QStringLiteral("not/there/yet")));
    showPanel();
    startTake();
    QCOMPARE(takes().size(), 1);
}

void tst_KdAudioRecordPanel::unusableFolderRefusesTheStart_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("a file") << QStringLiteral("file");
    QTest::newRow("below a file") << QStringLiteral("file/takes");
}

void tst_KdAudioRecordPanel::unusableFolderRefusesTheStart()
{
    QFETCH(QString, folder);
    QFile file(temporaryPath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    setVoiceFolder(temporaryPath(folder));
    showPanel();
    signalTexts.clear();
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({kPermission}));
    QTRY_VERIFY(!signalTexts.isEmpty());
    // There is nothing to import, and the host is told so.
    QCOMPARE(signalTexts, texts({"sigCaptureFinished(, 2, 16, 0, Mic A)"}));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isCountingDown());
    QVERIFY(!isLocked());
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdAudioRecordPanel::onlyAnExplicitNoRecordsOnLittleSpace_data()
{
    QTest::addColumn<int>("freeMegabytes");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("records");
    QTest::newRow("yes means another folder") << 499 << QStringLiteral("yes") << false;
    QTest::newRow("no records all the same") << 499 << QStringLiteral("no") << true;
    QTest::newRow("closing is no answer") << 0 << QStringLiteral("close") << false;
    QTest::newRow("escape is no answer") << 12 << QStringLiteral("escape") << false;
    QTest::newRow("enough is not asked") << 500 << QString() << true;
    QTest::newRow("unknown is not asked") << -1 << QString() << true;
}

void tst_KdAudioRecordPanel::onlyAnExplicitNoRecordsOnLittleSpace()
{
    QFETCH(int, freeMegabytes);
    QFETCH(QString, answer);
    QFETCH(bool, records);
    showPanel();
    panel->setFolderCheck(withFreeSpace(freeMegabytes));
    if (answer == QLatin1String("yes") || answer == QLatin1String("no")) {
        answers->answerMessage(answer == QLatin1String("yes") ? QDialogButtonBox::Yes
                                                              : QDialogButtonBox::No);
    } else if (!answer.isEmpty()) {
        answers->handle(QStringLiteral("KOldMessageDialog"), [answer](QWidget& box) {
            if (answer == QLatin1String("escape")) {
                QTest::keyClick(&box, Qt::Key_Escape);
            } else {
                box.close();
            }
        });
    }
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    if (records) {
        QTRY_COMPARE(panel->status(), fcsRecording);
    } else {
        QTRY_VERIFY(!button(kStart)->isChecked());
        QCOMPARE(engine->count("start"), 0);
        QCOMPARE(finishedPath, QString());
    }
    const QString question =
        QStringLiteral("There is only %1MB space in the specified output directory, Would you "
                       "choose another directory?");
    QCOMPARE(answers->messages(),
             answer.isEmpty() ? QStringList() : QStringList{question.arg(freeMegabytes)});
}

void tst_KdAudioRecordPanel::refusedStartEndsIdle()
{
    engine->fail("start");
    showPanel();
    signalTexts.clear();
    engine->clearCalls();
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({kDeviceIssue}));
    QTRY_VERIFY(!button(kStart)->isChecked());
    QCOMPARE(signalTexts, texts({"sigStartRecordBtnClick", "sigStartCaptureFailed"}));
    // The adapter's stop() asks for the status first and has nothing to stop.
    QCOMPARE(engine->commands().mid(4), texts({"start()", "resume()"}));
    QVERIFY(!isLocked());
    QVERIFY(!button(kPause)->isVisible());
    QVERIFY(button(kStart)->toolTip().startsWith(QStringLiteral("Start")));

    engine->succeed("start");
    startTake();
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

void tst_KdAudioRecordPanel::startThatFailsStoresNothing()
{
    engine->fail("start");
    showPanel();
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    QVERIFY(KRecordSettingParam::instance()->data().selectedAudioDeviceName.isEmpty());
}

void tst_KdAudioRecordPanel::reRecordDeletesTheOldTakeWhenTheNewOneRuns()
{
    showPanel();
    const QString former = startTake();
    localTime = localTime.addSecs(10);
    passTime(10000);
    signalTexts.clear();
    engine->clearCalls();
    bool existedAtStart = false;
    engine->during("start", [&] { existedAtStart = QFile::exists(former); });
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 1);
    QTRY_VERIFY(!QFile::exists(former));
    QVERIFY2(existedAtStart, "The old take was gone before the new one had begun");
    QCOMPARE(answers->popovers(), texts({"Re-recording will overwrite the already recorded "
                                         "content, are you sure?"}));
    QCOMPARE(engine->count("stop"), 0);
    QCOMPARE(signalTexts, texts({"sigStartCapture(1)"}));
    QCOMPARE(takes(), texts({"REC_20260309_080517.m4a"}));

    passTime(1000);
    stopTake();
    QCOMPARE(QFileInfo(finishedPath).fileName(), QStringLiteral("REC_20260309_080517.m4a"));
}

void tst_KdAudioRecordPanel::reRecordWithinOneSecondKeepsTheNewTake()
{
    showPanel();
    const QString former = startTake();
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    QTRY_VERIFY(!QFile::exists(former));
    const QString later = engine->lastCall("setOutputFile").argument<QString>(0);
    QVERIFY(later != former);
    QVERIFY(QFile::exists(later));
    passTime(1000);
    stopTake();
    QCOMPARE(finishedPath, later);
    QVERIFY(QFile::exists(later));
}

void tst_KdAudioRecordPanel::reRecordThatFailsDeletesTheOldTakeAndEndsIdle()
{
    showPanel();
    const QString former = startTake();
    passTime(5000);
    signalTexts.clear();
    engine->fail("start");
    answers->answerPopover(true);
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kReRecord);
    QTRY_COMPARE(answers->messages(), texts({kDeviceIssue}));
    QTRY_VERIFY(!QFile::exists(former));
    QTRY_COMPARE(signalTexts,
                 texts({"sigStartCaptureFailed", "sigCaptureFinished(, 2, 16, 0, Mic A)"}));
    QCOMPARE(panel->status(), fcsNoStart);
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!button(kReRecord)->isVisible());
    QVERIFY(!isLocked());
    QCOMPARE(takes(), QStringList());
}

void tst_KdAudioRecordPanel::reRecordCancelledGoesOn()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    answers->answerPopover(false);
    click(kReRecord);
    QTRY_COMPARE(answers->pending(), 0);
    QCOMPARE(engine->count("start"), 1);
    stopTake();
    QCOMPARE(finishedPath, path);
}

void tst_KdAudioRecordPanel::reRecordIsAskedOnce()
{
    showPanel();
    startTake();
    button(kReRecord)->click();
    button(kReRecord)->click();
    QCOMPARE(panel->findChildren<QWidget*>(QStringLiteral("KdPopovers")).size(), 1);
}

void tst_KdAudioRecordPanel::reRecordQuestionGoesWithTheTake()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    button(kReRecord)->click();
    QPointer<QWidget> question = panel->findChild<QWidget*>(QStringLiteral("KdPopovers"));
    QVERIFY(question);
    panel->stopFromOutside();
    QCOMPARE(finishedPath, path);
    QTRY_VERIFY(!question);
    QCOMPARE(engine->count("start"), 1);
}

void tst_KdAudioRecordPanel::reRecordOfAPausedTakeRecords()
{
    showPanel();
    startTake();
    click(kPause);
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    QCOMPARE(panel->status(), fcsRecording);
    QVERIFY(!button(kPause)->isChecked());
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
}

void tst_KdAudioRecordPanel::timeOfTheFormerTakeIsDroppedAfterReRecording()
{
    showPanel();
    startTake();
    engine->deliverTime(7000);
    drain();
    signalTexts.clear();
    // Comes just before the former take ends, and is delivered when the new one runs.
    engine->during("start", [this] { engine->deliverTime(8000); });
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
    QCOMPARE(signalTexts, texts({"sigStartCapture(1)"}));

    engine->deliverTime(1000);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:01"));
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanel>(argc, argv);
}

#include "tst_KdAudioRecordPanel.moc"

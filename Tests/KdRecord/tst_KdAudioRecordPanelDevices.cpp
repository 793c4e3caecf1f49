#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdOpenFileLineEdit.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <QAbstractEventDispatcher>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

using namespace KdVBLMODEL;

namespace {

QString lostMessage(const QString& name)
{
    return QStringLiteral("Audio device ") + name + QStringLiteral(" connection lost.");
}

KSettings* settings()
{
    return KdAppSettings::GetInstance()->GetSettings();
}

/** Those that wait, in ms. */
QVector<int> singleShotDelays()
{
    QVector<int> delays;
    auto* const dispatcher = QAbstractEventDispatcher::instance();
    for (QObject* const timer : dispatcher->children()) {
        for (const auto& registered : dispatcher->registeredTimers(timer)) {
            delays.append(registered.interval);
        }
    }
    return delays;
}

} // namespace

/** The voice-over panel's devices and settings. */
class tst_KdAudioRecordPanelDevices : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void storedMicrophoneIsSelected();
    void choiceReachesEngineAndConfiguration();
    void refreshReadsTheListAnew();
    void anyStatusRebuildsTheList_data();
    void anyStatusRebuildsTheList();
    void openListIsClosedByARebuild();
    void withoutDeviceNothingStarts();
    void pressWithoutDeviceSaysSo();
    void deviceThatComesBackCanRecord();

    void deviceAddedInMidTakeLeavesTheTakeAlone();
    void anotherDeviceUnpluggedInMidTakeLeavesTheTakeAlone();
    void takeCanBeStoppedThoughTheListBecameEmpty();
    void deviceLostInMidTakeEndsItWithTheFile_data();
    void deviceLostInMidTakeEndsItWithTheFile();
    void lostDeviceIsNamedThoughTheListMovedOn();
    void engineThatEndedALostTakeByItselfIsBelieved();
    void deviceLostWhilePausedEndsTheTake();
    void deviceLostWithinASecondSaysBoth();
    void deviceLostOutsideATakeIsNoMessage();
    void deviceLostDuringTheCountdownIsNoMessage();
    void deviceLostWhileAMessageIsOpen();

    void settingsAreLoaded();
    void muteIsStoredAndReported();
    void folderIsStoredWithEveryChange();
    void countdownIsStoredAsWholeSeconds();
};

void tst_KdAudioRecordPanelDevices::storedMicrophoneIsSelected()
{
    KRecordSettingData stored;
    stored.selectedAudioDeviceName = QStringLiteral("Mic B");
    KRecordSettingParam::instance()->setData(stored);
    showPanel();
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic B"));
    QCOMPARE(engine->selectedDevice(kdtMicrophone).name, QStringLiteral("Mic B"));
}

void tst_KdAudioRecordPanelDevices::choiceReachesEngineAndConfiguration()
{
    setMicrophones({QStringLiteral("A"), QStringLiteral("\"<b>%1</b>\"\n2")});
    showPanel();
    control<QComboBox>(kDevice)->setCurrentIndex(1);
    QCOMPARE(engine->selectedDevice(kdtMicrophone).index, 1);
    const QString group = QStringLiteral("AudioRecord");
    QCOMPARE(KdConfigEngine::instance()->value(1, group, QStringLiteral("AudioDevice")).toString(),
             QStringLiteral("\"<b>%1</b>\"\n2"));
}

void tst_KdAudioRecordPanelDevices::refreshReadsTheListAnew()
{
    showPanel();
    control<QComboBox>(kDevice)->setCurrentIndex(1);
    setMicrophones({QStringLiteral("New"), QStringLiteral("Mic A"), QStringLiteral("Mic B")});
    click("KAudioCapture_ButtonRefresh");
    QCOMPARE(control<QComboBox>(kDevice)->count(), 3);
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic B"));
    QCOMPARE(engine->selectedDevice(kdtMicrophone).index, 2);
}

void tst_KdAudioRecordPanelDevices::anyStatusRebuildsTheList_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {0, 1, 2, 3, 4, 5, 6, -1}) {
        QTest::newRow(qPrintable(QString::number(status))) << status;
    }
}

void tst_KdAudioRecordPanelDevices::anyStatusRebuildsTheList()
{
    QFETCH(int, status);
    showPanel();
    setMicrophones({QStringLiteral("Only")});
    const int formerCount = engine->count("getDevices");
    const QVector<int> formerDelays = singleShotDelays();
    QElapsedTimer sinceStatus;
    sinceStatus.start();
    engine->deliverDevice(status, 0);
    drain();
    if (engine->count("getDevices") == formerCount) {
        QCOMPARE(singleShotDelays().count(100), formerDelays.count(100) + 1);
    }
    QVERIFY(waitForRebuild(formerCount));
    QVERIFY2(sinceStatus.elapsed() >= 95, qPrintable(QString::number(sinceStatus.elapsed())));
    QCOMPARE(control<QComboBox>(kDevice)->count(), 1);
}

void tst_KdAudioRecordPanelDevices::openListIsClosedByARebuild()
{
    showPanel();
    auto* const box = control<KdComboBox>(kDevice);
    box->showPopup();
    QVERIFY(box->isPopupVisible());
    engine->deliverDevice(3, 0);
    QTRY_VERIFY(!box->isPopupVisible());
}

void tst_KdAudioRecordPanelDevices::withoutDeviceNothingStarts()
{
    setMicrophones({});
    showPanel();
    signalTexts.clear();
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("No Device"));
    QCOMPARE(control<QComboBox>("KAudioCapture_InputBox")->currentText(),
             QStringLiteral("No Device"));
    QVERIFY(!button(kStart)->isEnabled());
    pressKey(Qt::Key_Space);
    QVERIFY(!button(kStart)->isChecked());
    QCOMPARE(signalTexts, QStringList());
}

void tst_KdAudioRecordPanelDevices::pressWithoutDeviceSaysSo()
{
    setMicrophones({});
    showPanel();
    signalTexts.clear();
    answers->answerMessage(QDialogButtonBox::Ok);
    panel->startFromOutside();
    QCOMPARE(answers->messages(), QStringList{QStringLiteral("No Device")});
    QCOMPARE(signalTexts, QStringList{QStringLiteral("sigStartRecordBtnClick")});
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdAudioRecordPanelDevices::deviceThatComesBackCanRecord()
{
    setMicrophones({});
    showPanel();
    setMicrophones({QStringLiteral("Mic A")});
    engine->deliverDevice(3, 0);
    QTRY_VERIFY(button(kStart)->isEnabled());
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic A"));
    startTake();
}

void tst_KdAudioRecordPanelDevices::deviceAddedInMidTakeLeavesTheTakeAlone()
{
    showPanel();
    control<QComboBox>(kDevice)->setCurrentIndex(1);
    const QString path = startTake();
    passTime(2000);
    setMicrophones({QStringLiteral("New"), QStringLiteral("Mic A"), QStringLiteral("Mic B")});
    signalTexts.clear();
    engine->clearCalls();
    engine->deliverDevice(3, 0);
    QVERIFY(waitForRebuild(0));
    // It is told the device's new place, which counts from the next start.
    QCOMPARE(engine->callsOf("setDevice"), QStringList{QStringLiteral("setDevice(2)")});
    QCOMPARE(engine->count("start") + engine->count("stop") + engine->count("pause"), 0);
    QCOMPARE(signalTexts, QStringList());
    QCOMPARE(panel->status(), fcsRecording);
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic B"));
    stopTake();
    QCOMPARE(finishedPath, path);
}

void tst_KdAudioRecordPanelDevices::anotherDeviceUnpluggedInMidTakeLeavesTheTakeAlone()
{
    showPanel();
    control<QComboBox>(kDevice)->setCurrentIndex(1);
    const QString path = startTake();
    passTime(2000);
    setMicrophones({QStringLiteral("Mic B")});
    const int formerCount = engine->count("getDevices");
    engine->deliverDevice(3, 0);
    QVERIFY(waitForRebuild(formerCount));
    QCOMPARE(panel->status(), fcsRecording);
    QCOMPARE(engine->count("stop"), 0);
    stopTake();
    QCOMPARE(finishedPath, path);
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(path, 2, 16, 0, Mic B)"));
}

void tst_KdAudioRecordPanelDevices::takeCanBeStoppedThoughTheListBecameEmpty()
{
    showPanel();
    const QString path = startTake();
    passTime(2000);
    setMicrophones({});
    engine->deliverDevice(3, 0);
    QTRY_COMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("No Device"));
    stopTake();
    QCOMPARE(finishedPath, path);
    QVERIFY(!button(kStart)->isEnabled());
}

void tst_KdAudioRecordPanelDevices::deviceLostInMidTakeEndsItWithTheFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("Mic 1");
    QTest::newRow("empty") << QString();
    QTest::newRow("place marker") << QStringLiteral("Mic %1 %2");
    QTest::newRow("markup") << QStringLiteral("<h1>Mic</h1>&amp;");
    QTest::newRow("quotes") << QStringLiteral("\"Mic\"");
    QTest::newRow("right to left") << QStringLiteral("ميكروفون");
}

void tst_KdAudioRecordPanelDevices::deviceLostInMidTakeEndsItWithTheFile()
{
    QFETCH(QString, name);
    setMicrophones({name, QStringLiteral("Other")});
    showPanel();
    const QString path = startTake();
    engine->deliverTime(5000);
    passTime(5000);
    setMicrophones({QStringLiteral("Other")});
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->deliverDevice(4, 0);
    QTRY_COMPARE(answers->messages(), QStringList{lostMessage(name)});
    QCOMPARE(finishedPath, path);
    QCOMPARE(signalTexts.last(),
             QStringLiteral("sigCaptureFinished(path, 2, 16, 5, ") + name + QLatin1Char(')'));
    QVERIFY(QFile::exists(path));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    // Never goes on with another one.
    QCOMPARE(engine->count("start"), 1);
    QTRY_COMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Other"));
}

void tst_KdAudioRecordPanelDevices::lostDeviceIsNamedThoughTheListMovedOn()
{
    showPanel();
    startTake();
    passTime(5000);
    setMicrophones({QStringLiteral("Mic B")});
    const int formerCount = engine->count("getDevices");
    engine->deliverDevice(3, 0);
    QVERIFY(waitForRebuild(formerCount));
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic B"));
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->deliverDevice(4, 0);
    QTRY_COMPARE(answers->messages(), QStringList{lostMessage(QStringLiteral("Mic A"))});
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(path, 2, 16, 0, Mic A)"));
}

void tst_KdAudioRecordPanelDevices::engineThatEndedALostTakeByItselfIsBelieved()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    engine->script().status = [](int) { return int(fcsNoStart); };
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->deliverDevice(4, 0);
    QTRY_COMPARE(answers->messages(), QStringList{lostMessage(QStringLiteral("Mic A"))});
    QCOMPARE(finishedPath, path);
    QVERIFY(!button(kStart)->isChecked());
}

void tst_KdAudioRecordPanelDevices::deviceLostWhilePausedEndsTheTake()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    click(kPause);
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->deliverDevice(4, 0);
    QTRY_COMPARE(answers->pending(), 0);
    QCOMPARE(finishedPath, path);
    QVERIFY(!button(kPause)->isVisible());
}

void tst_KdAudioRecordPanelDevices::deviceLostWithinASecondSaysBoth()
{
    showPanel();
    startTake();
    passTime(500);
    answers->answerMessage(QDialogButtonBox::Ok);
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->deliverDevice(4, 0);
    QTRY_COMPARE(answers->messages().size(), 2);
    QCOMPARE(answers->messages().at(0),
             QStringLiteral("The recording is too short. Data cannot be saved."));
    QCOMPARE(answers->messages().at(1), lostMessage(QStringLiteral("Mic A")));
    QCOMPARE(takes(), QStringList());
}

void tst_KdAudioRecordPanelDevices::deviceLostOutsideATakeIsNoMessage()
{
    showPanel();
    const int formerCount = engine->count("getDevices");
    engine->deliverDevice(4, 0);
    QVERIFY(waitForRebuild(formerCount));
    QCOMPARE(answers->messages(), QStringList());
    QVERIFY(!button(kStart)->isChecked());
}

void tst_KdAudioRecordPanelDevices::deviceLostDuringTheCountdownIsNoMessage()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    const int formerCount = engine->count("getDevices");
    setMicrophones({});
    engine->deliverDevice(4, 0);
    QVERIFY(waitForRebuild(formerCount));
    QVERIFY(isCountingDown());
    click(kStop);
    QVERIFY(!isCountingDown());
    QVERIFY(!button(kStart)->isEnabled());
}

void tst_KdAudioRecordPanelDevices::deviceLostWhileAMessageIsOpen()
{
    showPanel();
    panel->setFolderCheck(KdOutputFolderCheck([](const QString&) { return qint64(1); }));
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        setMicrophones({});
        engine->deliverDevice(4, 0);
        QTRY_COMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("No Device"));
        // Neither can another start be asked for from within.
        panel->startFromOutside();
        panel->stopFromOutside();
        box.close();
    });
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    QTRY_VERIFY(!button(kStart)->isChecked());
    QVERIFY(!button(kStart)->isEnabled());
    QCOMPARE(answers->messages().size(), 1);
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdAudioRecordPanelDevices::settingsAreLoaded()
{
    settings()->GetGeneralSettings()->setIsAudioRecordingCheckMult(true);
    KRecordSettingData stored;
    stored.countdown = 5;
    KRecordSettingParam::instance()->setData(stored);
    showPanel();
    QVERIFY(panel->isMuted());
    QCOMPARE(control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->value(), 5.0);
    QCOMPARE(control<KdOpenFileLineEdit>("KAudioCapture_FolderEdit")->text(), voiceFolder());
    QCOMPARE(signalTexts, QStringList{QStringLiteral("sigMute(1)")});
}

void tst_KdAudioRecordPanelDevices::muteIsStoredAndReported()
{
    showPanel();
    signalTexts.clear();
    click("KAudioCapture_MuteBox");
    QVERIFY(settings()->GetGeneralSettings()->isAudioRecordingCheckMult());
    QVERIFY(panel->isMuted());
    click("KAudioCapture_MuteBox");
    QVERIFY(!settings()->GetGeneralSettings()->isAudioRecordingCheckMult());
    const QStringList expected{QStringLiteral("sigMute(1)"), QStringLiteral("sigMute(0)")};
    QCOMPARE(signalTexts, expected);
}

void tst_KdAudioRecordPanelDevices::folderIsStoredWithEveryChange()
{
    showPanel();
    auto* const edit = control<KdOpenFileLineEdit>("KAudioCapture_FolderEdit");
    QString folder = temporaryPath(QStringLiteral("%1 録音"));
    edit->setFolderChooser([&folder](QWidget*, const QString&) { return folder; });
    click("KdOpenFileLineEdit_Browse");
    QCOMPARE(voiceFolder(), folder);
    const QString path = startTake();
    QCOMPARE(QFileInfo(path).absolutePath(), folder);
}

void tst_KdAudioRecordPanelDevices::countdownIsStoredAsWholeSeconds()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(7);
    QCOMPARE(settings()->GetGeneralSettings()->GetRecordAudioCountdown(), 7);
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(99);
    QCOMPARE(settings()->GetGeneralSettings()->GetRecordAudioCountdown(), 9);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelDevices>(argc, argv);
}

#include "tst_KdAudioRecordPanelDevices.moc"

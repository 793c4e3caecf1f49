#include "WebcamRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdToast.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileInfo>

using namespace KdVBLMODEL;

/** A webcam take from the button to the report. */
class tst_KdWebcamRecordPanel : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void takeGoesFromTheButtonToTheReport();
    void engineGetsEverythingBeforeTheStart();
    void takeWithoutMicrophoneIsSilent();
    void fileIsNamedByTheLocalTime();
    void secondTakeWithinASecondGetsANameOfItsOwn();
    void separatorsOfTheFolderCollapse();

    void optionsAreStoredWhenTheTakeIsAskedFor();
    void choicesAreStoredWhenTheTakeBegins();
    void choicesAreLockedWhileRecordingOnly();
    void mainWindowIsLockedFromTheCountdownToTheEnd();

    void tooShortTakeIsDiscarded_data();
    void tooShortTakeIsDiscarded();
    void fileThatIsNotThereIsNoSuccess();

    void pauseAndResumeAreOrdered();
    void pausedTakeCanBeStopped();
    void timeIsShown_data();
    void timeIsShown();
    void timeOfATakeThatIsOverIsDropped();
    void levelIsShownThreefold();
    void takeThatTheEngineEndedIsHandedOver_data();
    void takeThatTheEngineEndedIsHandedOver();
};

void tst_KdWebcamRecordPanel::takeGoesFromTheButtonToTheReport()
{
    showPanel();
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
    const QString path = startTake();
    QCOMPARE(statusText(), QStringLiteral("Recording"));
    engine->deliverTime(10400);
    drain();
    passTime(10400);
    stopTake();
    QCOMPARE(signalTexts, texts({"sigStartRecordBtnClick", "order 2", "order 5",
                                 "sigCaptureFinished(path, 1920x1080, 30, 10, Cam A)"}));
    QCOMPARE(finishedPath, path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!button(kStart)->isChecked());
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
}

void tst_KdWebcamRecordPanel::engineGetsEverythingBeforeTheStart()
{
    showPanel();
    choose(kMicrophone, QStringLiteral("Mic B"));
    engine->clearCalls();
    const QString path = startTake();
    QCOMPARE(
        engine->commands(),
        (QStringList{QStringLiteral("setOnlyWebcam(true)"), QStringLiteral("setDevice(8, 1)"),
                     QStringLiteral("setRecordAudio(true)"), QStringLiteral("setInterval(100)"),
                     QStringLiteral("setOutputFile(%1)").arg(path),
                     QStringLiteral("setVideoFormat(fourcc=C264 rate=30)"),
                     QStringLiteral("start()")}));
}

void tst_KdWebcamRecordPanel::takeWithoutMicrophoneIsSilent()
{
    setMicrophones({});
    showPanel();
    engine->clearCalls();
    startTake();
    QCOMPARE(engine->callsOf("setRecordAudio"),
             QStringList{QStringLiteral("setRecordAudio(false)")});
    QCOMPARE(engine->count("setDevice"), 0);
}

void tst_KdWebcamRecordPanel::fileIsNamedByTheLocalTime()
{
    showPanel();
    const QString path = startTake();
    QCOMPARE(QFileInfo(path).fileName(), QStringLiteral("VID_20260309_080507.mp4"));
    QVERIFY(QFileInfo(path).isAbsolute());
}

void tst_KdWebcamRecordPanel::secondTakeWithinASecondGetsANameOfItsOwn()
{
    showPanel();
    const QString first = startTake();
    passTime(2000);
    stopTake();
    const QString second = startTake();
    QVERIFY(first != second);
    QVERIFY(QFile::exists(first));
}

void tst_KdWebcamRecordPanel::separatorsOfTheFolderCollapse()
{
    setCaptureFolder(temporaryPath(QStringLiteral("a//clips//")));
    showPanel();
    const QString path = startTake();
    QVERIFY(!path.contains(QStringLiteral("//")));
    QCOMPARE(QFileInfo(path).absolutePath(), temporaryPath(QStringLiteral("a/clips")));
}

void tst_KdWebcamRecordPanel::optionsAreStoredWhenTheTakeIsAskedFor()
{
    const QString group = QStringLiteral("WebCamFuncConfig");
    auto* const config = KdConfigEngine::instance();
    config->setValue(1, group, QStringLiteral("WebCamFuncShape"), 0);
    config->setValue(1, group, QStringLiteral("WebCamFuncFlip"), true);
    reachState(QStringLiteral("preview"));
    // The recorder has learned them, and what it says is what is stored.
    QCOMPARE(panel->recordDisplayShape(), fcrsCircle);
    QVERIFY(panel->isRecordFlipped());
    for (const char* key : {"WebCamFuncShape", "WebCamFuncBackground", "WebCamFuncFlip"}) {
        config->setValue(1, group, QLatin1String(key), 77);
    }
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    engine->clearCalls();
    click(kStart);
    QVERIFY(isCountingDown());
    QCOMPARE(config->value(1, group, QStringLiteral("WebCamFuncShape")).toInt(), 0);
    QCOMPARE(config->value(1, group, QStringLiteral("WebCamFuncBackground")).toInt(), -1);
    QCOMPARE(config->value(1, group, QStringLiteral("WebCamFuncFlip")).toBool(), true);
    const QStringList calls = engine->calls();
    QVERIFY(calls.indexOf(QStringLiteral("getRecordDisplayShape()")) <
            calls.indexOf(QStringLiteral("getBackgroundMode()")));
    QVERIFY(calls.indexOf(QStringLiteral("getBackgroundMode()")) <
            calls.indexOf(QStringLiteral("getRecordFlip()")));
}

void tst_KdWebcamRecordPanel::choicesAreStoredWhenTheTakeBegins()
{
    engine->script().frameRates = {30.0, 29.97, 15.0};
    showPanel();
    choose(kCamera, QStringLiteral("Cam B"));
    choose(kMicrophone, QStringLiteral("Mic B"));
    choose(kResolution, QStringLiteral("640x480"));
    control<QComboBox>(kFrameRate)->setCurrentIndex(1);
    control<QDoubleSpinBox>(kSeconds)->setValue(1);
    control<QCheckBox>(kPreview)->setChecked(false);
    QCOMPARE(stored().selectedCameraDeviceName, QString());
    startTake();
    const KRecordSettingData data = stored();
    QCOMPARE(data.selectedCameraDeviceName, QStringLiteral("Cam B"));
    QCOMPARE(data.selectedAudioDeviceName, QStringLiteral("Mic B"));
    QCOMPARE(data.countdown, 1);
    QCOMPARE(data.recordPreview, false);
    QCOMPARE(data.cameraWidth, 640);
    QCOMPARE(data.cameraHeight, 480);
    QCOMPARE(data.frameRate, 29.97);
}

void tst_KdWebcamRecordPanel::choicesAreLockedWhileRecordingOnly()
{
    showPanel();
    const auto areChoicesEnabled = [this] {
        QSet<bool> states;
        for (const char* name : {kCamera, kMicrophone, kResolution, kFrameRate, kSeconds}) {
            states.insert(control<QWidget>(name)->isEnabled());
        }
        for (const QLabel* const label :
             panel->findChildren<QLabel*>(QStringLiteral("KCameraCapture_LabelBack"))) {
            states.insert(label->isEnabled());
        }
        return states;
    };
    control<QDoubleSpinBox>(kSeconds)->setValue(1);
    QCOMPARE(areChoicesEnabled(), QSet<bool>{true});
    click(kStart);
    QVERIFY(isCountingDown());
    QCOMPARE(areChoicesEnabled(), QSet<bool>{true});
    QVERIFY(!button(kPause)->isVisible());
    QTRY_COMPARE(panel->status(), fcsRecording);
    QCOMPARE(areChoicesEnabled(), QSet<bool>{false});
    QVERIFY(button(kPause)->isVisible());
    QVERIFY(button(kReRecord)->isVisible());
    QVERIFY(button(kOk)->isEnabled());
    passTime(1000);
    stopTake();
    QCOMPARE(areChoicesEnabled(), QSet<bool>{true});
    QVERIFY(!button(kPause)->isVisible());
    QVERIFY(!button(kReRecord)->isVisible());
}

void tst_KdWebcamRecordPanel::mainWindowIsLockedFromTheCountdownToTheEnd()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->setValue(1);
    QVERIFY(!isLocked());
    click(kStart);
    QVERIFY(isCountingDown());
    QVERIFY(isLocked());
    QTRY_COMPARE(panel->status(), fcsRecording);
    QVERIFY(isLocked());
    click(kPause);
    QVERIFY(isLocked());
    passTime(1000);
    stopTake();
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordPanel::tooShortTakeIsDiscarded_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("at once") << 0 << false;
    QTest::newRow("just too short") << 999 << false;
    QTest::newRow("just long enough") << 1000 << true;
}

void tst_KdWebcamRecordPanel::tooShortTakeIsDiscarded()
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

void tst_KdWebcamRecordPanel::fileThatIsNotThereIsNoSuccess()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    QVERIFY(QFile::remove(path));
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(answers->messages(), texts({kDeviceIssue}));
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(, 1920x1080, 30, 0, Cam A)"));
}

void tst_KdWebcamRecordPanel::pauseAndResumeAreOrdered()
{
    showPanel();
    startTake();
    signalTexts.clear();
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));

    click(kPause);
    QCOMPARE(panel->status(), fcsPaused);
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Resume"));
    QCOMPARE(button(kPause)->property("WITH_SHORTCUT").toBool(), false);
    const KdToast* const toast = shownWindow<KdToast>();
    QVERIFY(toast);
    QCOMPARE(toast->text(),
             QStringLiteral("Recording is paused. Click Resume to continue recording."));

    click(kPause);
    QCOMPARE(panel->status(), fcsRecording);
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
    QCOMPARE(signalTexts, texts({"order 3", "order 4"}));
    QVERIFY(!shownWindow<KdToast>());
}

void tst_KdWebcamRecordPanel::pausedTakeCanBeStopped()
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

void tst_KdWebcamRecordPanel::timeIsShown_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("0.9 s") << qint64(999) << QStringLiteral(" 00:00:00");
    QTest::newRow("10 s") << qint64(10000) << QStringLiteral(" 00:00:10");
    QTest::newRow("more than an hour") << qint64(3661999) << QStringLiteral(" 01:01:01");
}

void tst_KdWebcamRecordPanel::timeIsShown()
{
    QFETCH(qint64, milliseconds);
    QFETCH(QString, text);
    showPanel();
    startTake();
    engine->deliverTime(milliseconds);
    drain();
    QCOMPARE(timeText(), text);
}

void tst_KdWebcamRecordPanel::timeOfATakeThatIsOverIsDropped()
{
    showPanel();
    startTake();
    passTime(5000);
    // Still on its way when the take ends.
    engine->deliverTime(5000);
    button(kStart)->click();
    QCOMPARE(panel->status(), fcsNoStart);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
}

void tst_KdWebcamRecordPanel::levelIsShownThreefold()
{
    showPanel();
    const auto* const meter = control<KdAudioVolumeWidget>("KCameraCapture_VolumeMeter");
    engine->deliverVolume(20);
    drain();
    QCOMPARE(meter->volume(), 60.0);
    // Every response of the recorder begins by clearing it.
    choose(kMicrophone, QStringLiteral("Mic B"));
    QCOMPARE(meter->volume(), 0.0);
    startTake();
    engine->deliverVolume(10);
    drain();
    QCOMPARE(meter->volume(), 30.0);
}

void tst_KdWebcamRecordPanel::takeThatTheEngineEndedIsHandedOver_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("freeMegabytes");
    QTest::addColumn<QString>("message");
    const QString device = QString::fromLatin1(kDeviceIssue);
    QTest::newRow("disk full") << int(fcsEnded) << 0 << QStringLiteral("the disk is full");
    QTest::newRow("silent camera") << int(fcsEnded) << 9000 << device;
    QTest::newRow("otherwise") << int(fcsNoStart) << 0 << device;
}

void tst_KdWebcamRecordPanel::takeThatTheEngineEndedIsHandedOver()
{
    QFETCH(int, status);
    QFETCH(int, freeMegabytes);
    QFETCH(QString, message);
    showPanel();
    const QString path = startTake();
    passTime(5000);
    panel->setFolderCheck(withFreeSpace(freeMegabytes));
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->script().status = [status](int) { return status; };
    QTRY_COMPARE(finishedPath, path);
    QTRY_COMPARE(answers->messages().size(), 1);
    QVERIFY2(answers->messages().first().contains(message),
             qPrintable(answers->messages().first()));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanel>(argc, argv);
}

#include "tst_KdWebcamRecordPanel.moc"

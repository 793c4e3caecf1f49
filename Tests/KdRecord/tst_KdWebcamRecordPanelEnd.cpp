#include "WebcamRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>

#include <QDoubleSpinBox>
#include <QFile>
#include <QFileInfo>

using namespace KdVBLMODEL;

/** Recording a take anew, and leaving the panel. */
class tst_KdWebcamRecordPanelEnd : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void confirmedReRecordStartsAnewInTheSameFile();
    void cancelledReRecordGoesOn();
    void reRecordIsAskedOnce();
    void reRecordQuestionGoesWithTheTake();
    void reRecordOfAPausedTakeRecords();
    void reRecordedTakeIsMeasuredAnew();
    void timeOfTheFormerTakeIsDropped();
    void reRecordThatFailsKeepsTheFormerTake();

    void okDuringATakeHandsItOver();
    void okDuringATakeThatIsTooShortSaysSo();
    void okWithoutATakeOnlyCloses_data();
    void okWithoutATakeOnlyCloses();

    void abortDeletesTheUnfinishedFile_data();
    void abortDeletesTheUnfinishedFile();
    void abortDuringTheCountdownOrdersNoStop();
    void abortInThePreviewStopsItOnly();
    void abortTwiceIsHarmless();
    void abortForgetsWhatTheTimersWaitFor();
};

void tst_KdWebcamRecordPanelEnd::confirmedReRecordStartsAnewInTheSameFile()
{
    showPanel();
    const QString path = startTake();
    localTime = localTime.addSecs(10);
    passTime(10000);
    signalTexts.clear();
    engine->clearCalls();
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 1);
    QCOMPARE(answers->popovers(), texts({"Re-recording will overwrite the already recorded "
                                         "content, are you sure?"}));
    QCOMPARE(signalTexts, texts({"order 5", "order 2"}));
    // File and parameters stay those of the current take.
    QCOMPARE(engine->commands(), texts({"stop()", "start()"}));
    QCOMPARE(statusText(), QStringLiteral("Recording"));
    QVERIFY(isLocked());

    passTime(1000);
    stopTake();
    QCOMPARE(finishedPath, path);
    QCOMPARE(takes(), texts({"VID_20260309_080507.mp4"}));
}

void tst_KdWebcamRecordPanelEnd::cancelledReRecordGoesOn()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    answers->answerPopover(false);
    signalTexts.clear();
    click(kReRecord);
    QTRY_COMPARE(answers->pending(), 0);
    drain();
    QCOMPARE(signalTexts, QStringList());
    QCOMPARE(panel->status(), fcsRecording);
    stopTake();
    QCOMPARE(finishedPath, path);
}

void tst_KdWebcamRecordPanelEnd::reRecordIsAskedOnce()
{
    showPanel();
    startTake();
    button(kReRecord)->click();
    button(kReRecord)->click();
    QCOMPARE(panel->findChildren<QWidget*>(QStringLiteral("KdPopovers")).size(), 1);
}

void tst_KdWebcamRecordPanelEnd::reRecordQuestionGoesWithTheTake()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    button(kReRecord)->click();
    const QPointer<QWidget> question = panel->findChild<QWidget*>(QStringLiteral("KdPopovers"));
    QVERIFY(question);
    button(kStart)->click();
    QCOMPARE(finishedPath, path);
    QTRY_VERIFY(!question);
    QCOMPARE(engine->count("start"), 1);
}

void tst_KdWebcamRecordPanelEnd::reRecordOfAPausedTakeRecords()
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

void tst_KdWebcamRecordPanelEnd::reRecordedTakeIsMeasuredAnew()
{
    showPanel();
    const QString path = startTake();
    passTime(60000);
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    passTime(900);
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(answers->messages(), texts({kTooShort}));
    QVERIFY(!QFile::exists(path));
}

void tst_KdWebcamRecordPanelEnd::timeOfTheFormerTakeIsDropped()
{
    showPanel();
    startTake();
    engine->deliverTime(7000);
    drain();
    // Comes just before the former take ends, and is delivered when the new one runs.
    engine->during("start", [this] { engine->deliverTime(8000); });
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
    engine->deliverTime(1000);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:01"));
}

void tst_KdWebcamRecordPanelEnd::reRecordThatFailsKeepsTheFormerTake()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    engine->fail("start");
    expectLog(QStringLiteral("Failed to start the webcam record process"));
    answers->answerPopover(true);
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kReRecord);
    QTRY_COMPARE(answers->messages(), texts({kDeviceIssue}));
    QTRY_COMPARE(finishedPath, path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!button(kReRecord)->isVisible());
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordPanelEnd::okDuringATakeHandsItOver()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->setValue(1);
    const QString path = startTake();
    passTime(5000);
    signalTexts.clear();
    click(kOk);
    QCOMPARE(signalTexts,
             texts({"order 5", "sigCaptureFinished(path, 1920x1080, 30, 0, Cam A)", "sigClose"}));
    QCOMPARE(finishedPath, path);
    QVERIFY(!isLocked());
    KdAppSettings::GetInstance()->Load();
    QCOMPARE(KdAppSettings::GetInstance()
                 ->GetSettings()
                 ->GetGeneralSettings()
                 ->GetRecordVideoCountdown(),
             1);
}

void tst_KdWebcamRecordPanelEnd::okDuringATakeThatIsTooShortSaysSo()
{
    showPanel();
    const QString path = startTake();
    passTime(999);
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kOk);
    QTRY_COMPARE(answers->messages(), texts({kTooShort}));
    QTRY_COMPARE(signalTexts.last(), QStringLiteral("sigClose"));
    QVERIFY(signalTexts.contains(QStringLiteral("sigCaptureFinished(, 1920x1080, 30, 0, Cam A)")));
    QVERIFY(!QFile::exists(path));
}

void tst_KdWebcamRecordPanelEnd::okWithoutATakeOnlyCloses_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("preview") << QStringLiteral("preview");
    QTest::newRow("countdown") << QStringLiteral("counting");
    QTest::newRow("take whose file is not there") << QStringLiteral("recording");
}

void tst_KdWebcamRecordPanelEnd::okWithoutATakeOnlyCloses()
{
    QFETCH(QString, state);
    engine->script().take = QByteArray();
    reachState(state);
    signalTexts.clear();
    click(kOk);
    QCOMPARE(signalTexts, texts({"sigClose"}));
    QVERIFY(panel->isVisible());
}

void tst_KdWebcamRecordPanelEnd::abortDeletesTheUnfinishedFile_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"recording", "paused", "asking"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdWebcamRecordPanelEnd::abortDeletesTheUnfinishedFile()
{
    QFETCH(QString, state);
    reachState(state);
    passTime(5000);
    QCOMPARE(takes().size(), 1);
    signalTexts.clear();
    bool existedAtStop = false;
    engine->during("stop", [&] { existedAtStop = takes().size() == 1; });
    panel->AbordRecorder();
    QVERIFY(existedAtStop);
    QCOMPARE(signalTexts, texts({"order 5", "order 7"}));
    QCOMPARE(takes(), QStringList());
    QVERIFY(!engine->isPreviewing());
    QCOMPARE(panel->status(), fcsNoStart);
    QVERIFY(!isLocked());
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!button(kPause)->isVisible());
}

void tst_KdWebcamRecordPanelEnd::abortDuringTheCountdownOrdersNoStop()
{
    reachState(QStringLiteral("counting"));
    signalTexts.clear();
    panel->AbordRecorder();
    QCOMPARE(signalTexts, texts({"order 7"}));
    QVERIFY(!isCountingDown());
    QVERIFY(!control<QWidget>(kCountdown)->isVisible());
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordPanelEnd::abortInThePreviewStopsItOnly()
{
    showPanel();
    QVERIFY(engine->isPreviewing());
    panel->AbordRecorder();
    QCOMPARE(signalTexts, texts({"order 7"}));
    QVERIFY(!engine->isPreviewing());
}

void tst_KdWebcamRecordPanelEnd::abortTwiceIsHarmless()
{
    showPanel();
    startTake();
    panel->AbordRecorder();
    signalTexts.clear();
    engine->clearCalls();
    panel->AbordRecorder();
    QCOMPARE(signalTexts, texts({"order 7"}));
    QCOMPARE(engine->commands(), QStringList());
}

void tst_KdWebcamRecordPanelEnd::abortForgetsWhatTheTimersWaitFor()
{
    showPanel();
    deliverDevice(fcdWebcamListChanged);
    panel->AbordRecorder();
    QVERIFY(!isRunning(kDeviceChangeTimer));

    panel->InitUI();
    deliverDevice(fcdWebcamListChanged);
    setCameras({});
    fire(kDeviceChangeTimer);
    QVERIFY(isRunning(kDeviceLostTimer));
    panel->AbordRecorder();
    QVERIFY(!isRunning(kDeviceLostTimer));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelEnd>(argc, argv);
}

#include "tst_KdWebcamRecordPanelEnd.moc"

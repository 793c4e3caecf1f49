#include "AudioRecordFixture.h"

#include <KdWidgets/KdToast.h>

#include <QFile>
#include <QFileInfo>

using namespace KdVBLMODEL;

/** Recording a take anew. */
class tst_KdAudioRecordPanelReRecord : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void reRecordDeletesTheOldTakeWhenTheNewOneRuns();
    void reRecordWithinOneSecondKeepsTheNewTake();
    void reRecordThatFailsDeletesTheOldTakeAndEndsIdle();
    void reRecordCancelledGoesOn();
    void reRecordIsAskedOnce();
    void reRecordQuestionGoesWithTheTake();
    void reRecordOfAPausedTakeRecords();
    void timeOfTheFormerTakeIsDroppedAfterReRecording();
    void lateTimeOfTheFormerTakeIsDropped();
};

void tst_KdAudioRecordPanelReRecord::reRecordDeletesTheOldTakeWhenTheNewOneRuns()
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

void tst_KdAudioRecordPanelReRecord::reRecordWithinOneSecondKeepsTheNewTake()
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

void tst_KdAudioRecordPanelReRecord::reRecordThatFailsDeletesTheOldTakeAndEndsIdle()
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

void tst_KdAudioRecordPanelReRecord::reRecordCancelledGoesOn()
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

void tst_KdAudioRecordPanelReRecord::reRecordIsAskedOnce()
{
    showPanel();
    startTake();
    button(kReRecord)->click();
    button(kReRecord)->click();
    QCOMPARE(panel->findChildren<QWidget*>(QStringLiteral("KdPopovers")).size(), 1);
}

void tst_KdAudioRecordPanelReRecord::reRecordQuestionGoesWithTheTake()
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

void tst_KdAudioRecordPanelReRecord::reRecordOfAPausedTakeRecords()
{
    showPanel();
    startTake();
    click(kPause);
    QVERIFY(shownWindow<KdToast>());
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    QCOMPARE(panel->status(), fcsRecording);
    QVERIFY(!shownWindow<KdToast>());
    QVERIFY(!button(kPause)->isChecked());
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
}

void tst_KdAudioRecordPanelReRecord::timeOfTheFormerTakeIsDroppedAfterReRecording()
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

void tst_KdAudioRecordPanelReRecord::lateTimeOfTheFormerTakeIsDropped()
{
    showPanel();
    startTake();
    engine->deliverTime(7000);
    drain();
    answers->answerPopover(true);
    click(kReRecord);
    QTRY_COMPARE(engine->count("start"), 2);
    drain();
    signalTexts.clear();
    // From a thread that was about to report when the take ended.
    engine->deliverTime(7040);
    engine->deliverTime(40);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:00"));
    QCOMPARE(signalTexts, texts({"sigCaptureDoing(1)"}));

    passTime(7500);
    engine->deliverTime(7500);
    drain();
    QCOMPARE(timeText(), QStringLiteral(" 00:00:07"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelReRecord>(argc, argv);
}

#include "tst_KdAudioRecordPanelReRecord.moc"

#include "WebcamStage.h"

#include <KdRecord/KdCountCtrl.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/KdWindowsApi.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/ProcessUse.h>
#include <Support/WindowAnswers.h>

#include <QDir>
#include <QFileInfo>

/** Clips that are begun again, given up, too short or finished by OK. */
class tst_WebcamCancel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void reRecordReplacesTheClipUnderItsName();
    void countdownIsCancelled();
    void tooShortClipIsReportedWithoutAFile();
    void okFinishesTheClipAndCloses();
    void closingInMidTakeLeavesNothing();
    void mainWindowIsLockedDuringTheTake();
    void manyRoundsLeaveNothingBehind();

private:
    QString folder() const { return temporaryPath(QStringLiteral("clips")); }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden); }
    static void recordOnce(const QString& folder);
};

void tst_WebcamCancel::reRecordReplacesTheClipUnderItsName()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(4000));
    const QStringList former = QDir(folder()).entryList(QDir::Files);
    QCOMPARE(former.size(), 1);

    WindowAnswers answers;
    answers.answerPopover(true);
    stage.press(WebcamStage::kReRecord);
    QTRY_COMPARE_WITH_TIMEOUT(answers.pending(), 0, 10000);
    // The new take's time begins anew.
    QTRY_VERIFY_WITH_TIMEOUT(stage.lastElapsed() < 2000, 10000);
    QVERIFY(stage.waitForElapsed(1500));
    QVERIFY(stage.stopTake());

    QCOMPARE(stage.reports().size(), 1);
    QCOMPARE(files(), former);
    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds >= 1.3 && media.seconds <= 3.2,
             qPrintable(QString::number(media.seconds)));
}

void tst_WebcamCancel::countdownIsCancelled()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    stage.setCountdown(9);
    stage.press(WebcamStage::kStart);
    auto* const countdown = stage.control<KdCountCtrl>("KCameraCapture_Countdown");
    QTRY_VERIFY_WITH_TIMEOUT(countdown->isVisible(), 5000);
    stage.press(WebcamStage::kStart);
    QTRY_VERIFY_WITH_TIMEOUT(!countdown->isVisible(), 5000);
    QVERIFY(!stage.control<KdToolButton>(WebcamStage::kStart)->isChecked());
    QVERIFY(files().isEmpty());
    stage.setCountdown(0);
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1200));
    QVERIFY(stage.stopTake());
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_WebcamCancel::tooShortClipIsReportedWithoutAFile()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.stopTake());
    QCOMPARE(answers.messages(),
             QStringList(QStringLiteral("The recording is too short. Data cannot be saved.")));
    QVERIFY(stage.lastReport().path.isEmpty());
    QCOMPARE(stage.lastReport().fileInfo.size(), 9);
}

void tst_WebcamCancel::okFinishesTheClipAndCloses()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1500));
    stage.press(WebcamStage::kOk);
    QTRY_VERIFY_WITH_TIMEOUT(!stage.view(), 10000);
    QCOMPARE(stage.closings(), 1);
    QCOMPARE(stage.reports().size(), 1);
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_WebcamCancel::closingInMidTakeLeavesNothing()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1500));
    QCOMPARE(QDir(folder()).entryList(QDir::Files).size(), 1);
    QTest::keyClick(stage.view(), Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(!stage.view(), 10000);
    QCOMPARE(stage.closings(), 1);
    QVERIFY(stage.reports().isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(files(), QStringList(), 5000);
}

void tst_WebcamCancel::mainWindowIsLockedDuringTheTake()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    const WId window = stage.mainWindow().winId();
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(window));
    QVERIFY(stage.startTake());
    QVERIFY(!KdWindowsApi::IsWindowsEnableApi(window));
    QVERIFY(stage.waitForElapsed(1200));
    QVERIFY(stage.stopTake());
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(window));
}

void tst_WebcamCancel::recordOnce(const QString& folder)
{
    WebcamStage stage(folder);
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1100));
    QVERIFY(stage.stopTake());
    stage.view()->close();
    QTRY_VERIFY(!stage.view());
}

void tst_WebcamCancel::manyRoundsLeaveNothingBehind()
{
    VirtualCamera camera(QStringLiteral("lasting_cam"));
    QVERIFY(camera.plug());
    // What is made once, lists and pools, is made in the first rounds.
    for (int round = 0; round < 5; ++round) {
        recordOnce(folder());
    }
    const ProcessUse before = ProcessUse::now();
    for (int round = 0; round < 50 && !QTest::currentTestFailed(); ++round) {
        recordOnce(folder());
    }
    const ProcessUse after = ProcessUse::now();
    QVERIFY2(after.files <= before.files + 2,
             qPrintable(QStringLiteral("%1 files, then %2").arg(before.files).arg(after.files)));
    QVERIFY2(
        after.threads <= before.threads + 1,
        qPrintable(QStringLiteral("%1 threads, then %2").arg(before.threads).arg(after.threads)));
    QVERIFY2(after.heapKb <= before.heapKb + 2500,
             qPrintable(QStringLiteral("%1 kB, then %2").arg(before.heapKb).arg(after.heapKb)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamCancel>(argc, argv);
}

#include "tst_WebcamCancel.moc"

#include "WebcamStage.h"

#include <KdRecord/KdCountCtrl.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/KdWindowsApi.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/ProcessUse.h>

#include <QDir>
#include <QFileInfo>
#include <QPixmapCache>

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
    void manyRoundsLeaveNothingBehind_data();
    void manyRoundsLeaveNothingBehind();

private:
    QString folder() const { return temporaryPath(QStringLiteral("clips")); }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden); }
    static void recordOnce(const QString& folder);
    static ProcessUse useAtRest();

    /** After the first of many rounds. */
    ProcessUse m_former;
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

    stage.answers().answerPopover(true);
    stage.press(WebcamStage::kReRecord);
    QTRY_COMPARE_WITH_TIMEOUT(stage.answers().pending(), 0, 10000);
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
    stage.answers().answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.stopTake());
    QCOMPARE(stage.answers().messages(),
             QStringList(QStringLiteral("The recording is too short. Data cannot be saved.")));
    QVERIFY(stage.lastReport().path.isEmpty());
    QCOMPARE(stage.lastReport().fileInfo.size(), 9);
    QCOMPARE(files(), QStringList());
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
    QVERIFY(stage.waitForElapsed(1300));
    QVERIFY(stage.stopTake());
    stage.view()->close();
    QTRY_VERIFY(!stage.view());
}

ProcessUse tst_WebcamCancel::useAtRest()
{
    // Qt keeps rendered icons up to a limit of its own, which a few hundred dialogs reach.
    QPixmapCache::clear();
    return ProcessUse::now();
}

// In parts, each of which has its own time.
void tst_WebcamCancel::manyRoundsLeaveNothingBehind_data()
{
    QTest::addColumn<int>("rounds");
    // What is made once, lists and pools, is made in the first rounds.
    QTest::newRow("to begin with") << 5;
    for (int part = 1; part <= 5; ++part) {
        QTest::newRow(qPrintable(QStringLiteral("part %1").arg(part))) << 10;
    }
}

void tst_WebcamCancel::manyRoundsLeaveNothingBehind()
{
    QFETCH(int, rounds);
    {
        VirtualCamera camera(QStringLiteral("lasting_cam"));
        QVERIFY(camera.plug());
        for (int round = 0; round < rounds && !QTest::currentTestFailed(); ++round) {
            recordOnce(folder());
        }
    }
    if (m_former.threads == 0) {
        m_former = useAtRest();
    }
    // Devices are closed, and idle threads end, some time after the dialog.
    DialogDriver::waitUntil([this] { return ProcessUse::now().threads <= m_former.threads + 1; },
                            QStringLiteral("the end of threads"), 60000);
    const ProcessUse now = useAtRest();
    qDebug("%lld kB after %d rounds", static_cast<long long>(now.heapKb), rounds);
    QVERIFY2(now.files <= m_former.files + 2,
             qPrintable(QStringLiteral("%1 files, then %2").arg(m_former.files).arg(now.files)));
    QVERIFY2(now.heapKb <= m_former.heapKb + 800,
             qPrintable(QStringLiteral("%1 kB, then %2").arg(m_former.heapKb).arg(now.heapKb)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamCancel>(argc, argv);
}

#include "tst_WebcamCancel.moc"

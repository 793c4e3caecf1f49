#include "VoiceOverStage.h"

#include <KdWidgets/KdToolButton.h>
#include <Support/KdTestCase.h>
#include <Support/WindowAnswers.h>

#include <QDir>
#include <QFileInfo>

/** Takes that are begun again, given up or too short. */
class tst_VoiceOverCancel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void reRecordReplacesTheTake();
    void countdownIsCancelled_data();
    void countdownIsCancelled();
    void takeOfHalfASecondIsReportedWithoutAFile();
    void closingInMidTakeStillDeliversTheTake();

private:
    QStringList takeFiles() const
    {
        return QDir(temporaryPath(QStringLiteral("takes"))).entryList(QDir::Files | QDir::Hidden);
    }
};

void tst_VoiceOverCancel::reRecordReplacesTheTake()
{
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    const QString tone = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 1000.0, -12.0, 60.0));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.microphone().play(tone));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1500));
    const QStringList former = QDir(temporaryPath(QStringLiteral("takes"))).entryList(QDir::Files);
    QCOMPARE(former.size(), 1);

    WindowAnswers answers;
    answers.answerPopover(true);
    stage.press(QStringLiteral("KAudioCapture_ButtonReRecord"));
    QTRY_COMPARE_WITH_TIMEOUT(stage.restarts(), 1, 10000);
    // Frames, since the engine may still report the former take's time.
    QTRY_VERIFY_WITH_TIMEOUT(!stage.frames().isEmpty() && stage.frames().last() >= 45, 10000);
    QVERIFY(stage.stopTake());

    QCOMPARE(stage.reports().size(), 1);
    QCOMPARE(takeFiles(), QStringList(QFileInfo(stage.lastReport().path).fileName()));
    QVERIFY(takeFiles().first() != former.first());
    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY(media.seconds >= 1.4 && media.seconds <= 3.0);
}

void tst_VoiceOverCancel::countdownIsCancelled_data()
{
    QTest::addColumn<QString>("means");
    QTest::newRow("by the button") << QStringLiteral("button");
    QTest::newRow("by the shortcut") << QStringLiteral("shortcut");
    QTest::newRow("by pressing the countdown") << QStringLiteral("countdown");
}

void tst_VoiceOverCancel::countdownIsCancelled()
{
    QFETCH(QString, means);
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    stage.setCountdown(9);
    stage.pressRecord();
    auto* const countdown =
        stage.view()->findChild<QWidget*>(QStringLiteral("KAudioCapture_Countdown"));
    QVERIFY(countdown);
    QTRY_VERIFY_WITH_TIMEOUT(countdown->isVisible(), 5000);

    if (means == QLatin1String("button")) {
        stage.press(QStringLiteral("KAudioCapture_pButtonStop"));
    } else if (means == QLatin1String("shortcut")) {
        QTest::keyClick(stage.view(), Qt::Key_Space);
    } else {
        QTest::mouseClick(countdown, Qt::LeftButton, Qt::NoModifier, countdown->rect().center());
    }

    QTRY_VERIFY_WITH_TIMEOUT(!countdown->isVisible(), 5000);
    QVERIFY(
        !stage.control<KdToolButton>(QStringLiteral("KAudioCapture_RecorderButton"))->isChecked());
    QCOMPARE(stage.starts(), 0);
    QVERIFY(takeFiles().isEmpty());
    stage.setCountdown(0);
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1100));
    QVERIFY(stage.stopTake());
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_VoiceOverCancel::takeOfHalfASecondIsReportedWithoutAFile()
{
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(500));
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.stopTake());
    QCOMPARE(answers.messages(),
             QStringList(QStringLiteral("The recording is too short. Data cannot be saved.")));
    QVERIFY(stage.lastReport().path.isEmpty());
    QCOMPARE(takeFiles(), QStringList());
}

void tst_VoiceOverCancel::closingInMidTakeStillDeliversTheTake()
{
    VoiceOverStage stage(temporaryPath(QStringLiteral("takes")));
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1500));
    const QPointer<KdAudioRecordView> view(stage.view());
    QTest::keyClick(stage.view(), Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(view.isNull(), 10000);
    QCOMPARE(stage.closings(), 1);
    QCOMPARE(stage.reports().size(), 1);
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_VoiceOverCancel>(argc, argv);
}

#include "tst_VoiceOverCancel.moc"

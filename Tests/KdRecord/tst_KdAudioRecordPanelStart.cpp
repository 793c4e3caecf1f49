#include "AudioRecordFixture.h"

#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdCountCtrl.h>

#include <QDoubleSpinBox>
#include <QFile>
#include <QLineEdit>

using namespace KdVBLMODEL;

/** From the press of the record button to the recording: countdown, folder, refusal. */
class tst_KdAudioRecordPanelStart : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void countdownOfZeroStartsAtTheFirstTick();
    void emptyCountdownCountsThree();
    void countdownIsCancelled_data();
    void countdownIsCancelled();
    void pressBesideTheButtonDoesNotCancel();
    void countdownFollowsTheWindow();
    void missingFolderIsMade();
    void unusableFolderRefusesTheStart_data();
    void unusableFolderRefusesTheStart();
    void onlyAnExplicitNoRecordsOnLittleSpace_data();
    void onlyAnExplicitNoRecordsOnLittleSpace();
    void refusedStartEndsIdle();
    void startThatFailsStoresNothing();

private:
    bool isCountdownCentred() const;
};

bool tst_KdAudioRecordPanelStart::isCountdownCentred() const
{
    const auto middle = [](const QWidget& widget) {
        return widget.mapToGlobal(widget.rect().center());
    };
    const auto* const countdown = control<KdCountCtrl>("KAudioCapture_Countdown");
    return (middle(*countdown) - middle(*button(kStart))).manhattanLength() <= 2;
}

void tst_KdAudioRecordPanelStart::countdownOfZeroStartsAtTheFirstTick()
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

void tst_KdAudioRecordPanelStart::emptyCountdownCountsThree()
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

void tst_KdAudioRecordPanelStart::countdownIsCancelled_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"button", "shortcut", "countdown", "outside"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordPanelStart::countdownIsCancelled()
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

void tst_KdAudioRecordPanelStart::pressBesideTheButtonDoesNotCancel()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    auto* const countdown = control<KdCountCtrl>("KAudioCapture_Countdown");
    Q_EMIT countdown->sigPressed(panel->mapToGlobal(QPoint(1, 1)));
    QVERIFY(isCountingDown());
}

void tst_KdAudioRecordPanelStart::countdownFollowsTheWindow()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    QTRY_VERIFY(isCountdownCentred());
    window->move(window->pos() + QPoint(150, 90));
    QTRY_VERIFY(isCountdownCentred());
}

void tst_KdAudioRecordPanelStart::missingFolderIsMade()
{
    setVoiceFolder(temporaryPath(QStringLiteral("not/there/yet")));
    showPanel();
    startTake();
    QCOMPARE(takes().size(), 1);
}

void tst_KdAudioRecordPanelStart::unusableFolderRefusesTheStart_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("a file") << QStringLiteral("file");
    QTest::newRow("below a file") << QStringLiteral("file/takes");
}

void tst_KdAudioRecordPanelStart::unusableFolderRefusesTheStart()
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

void tst_KdAudioRecordPanelStart::onlyAnExplicitNoRecordsOnLittleSpace_data()
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

void tst_KdAudioRecordPanelStart::onlyAnExplicitNoRecordsOnLittleSpace()
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

void tst_KdAudioRecordPanelStart::refusedStartEndsIdle()
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

void tst_KdAudioRecordPanelStart::startThatFailsStoresNothing()
{
    engine->fail("start");
    showPanel();
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    QVERIFY(KRecordSettingParam::instance()->data().selectedAudioDeviceName.isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelStart>(argc, argv);
}

#include "tst_KdAudioRecordPanelStart.moc"

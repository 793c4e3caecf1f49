#include "WebcamRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdZentraCore/KdUtility.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>

using namespace KdVBLMODEL;

/** From the press of the record button to the recording: countdown, folder, refusal. */
class tst_KdWebcamRecordPanelStart : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void countdownOfZeroStartsAtTheFirstTick();
    void emptyCountdownCountsThree();
    void countdownIsLaunchedInOrder();
    void stoppingDuringTheCountdownOrdersNothing_data();
    void stoppingDuringTheCountdownOrdersNothing();
    void countdownStandsInTheMiddleOfThePicture();
    void countdownIsStoredForTheHost();
    void missingFolderIsMade();
    void unusableFolderGoesOnAsForAnUncheckedButton();
    void refusedStartAfterAShortTakeIsNotTooShort();
    void onlyAnExplicitNoRecordsOnLittleSpace_data();
    void onlyAnExplicitNoRecordsOnLittleSpace();
    void abortedInsideTheFolderQuestionStartsNothing();
    void startThatTheEngineRefusesEndsInThePreview();
    void pressWithoutCameraSaysSo();

private:
    bool isCountdownCentred() const;
};

bool tst_KdWebcamRecordPanelStart::isCountdownCentred() const
{
    const auto middle = [](const QWidget& widget) {
        return widget.mapToGlobal(widget.rect().center());
    };
    const auto* const countdown = control<KdCountCtrlVideo>(kCountdown);
    return (middle(*countdown) - middle(*control<QWidget>(kDisplay))).manhattanLength() <= 2;
}

void tst_KdWebcamRecordPanelStart::countdownOfZeroStartsAtTheFirstTick()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->setValue(0);
    click(kStart);
    QVERIFY(isCountingDown());
    QCOMPARE(engine->count("start"), 0);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE(engine->count("start"), 1);
    QVERIFY2(timer.elapsed() < 1000, "A countdown of 0 took as long as one of 1");
    QVERIFY(!isCountingDown());
    QVERIFY(!control<QWidget>(kCountdown)->isVisible());
}

void tst_KdWebcamRecordPanelStart::emptyCountdownCountsThree()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->findChild<QLineEdit*>()->clear();
    click(kStart);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE_WITH_TIMEOUT(engine->count("start"), 1, 6000);
    QVERIFY2(timer.elapsed() > 2500, "The empty countdown was shorter than three seconds");
    QCOMPARE(stored().countdown, 3);
}

void tst_KdWebcamRecordPanelStart::countdownIsLaunchedInOrder()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    engine->clearCalls();
    bool wasVisible = false;
    bool wasCounting = false;
    engine->during("setOnlyWebcam", [&] {
        wasVisible = control<QWidget>(kCountdown)->isVisible();
        wasCounting = isCountingDown();
    });
    bool wasLocked = false;
    connect(panel, &KdWebcamRecordPanel::sigStartRecordBtnClick, this,
            [&] { wasLocked = isLocked(); });
    click(kStart);
    QVERIFY(wasVisible);
    QVERIFY(wasCounting);
    QVERIFY(wasLocked);
    QCOMPARE(engine->commands(), texts({"setOnlyWebcam(true)"}));
    QCOMPARE(signalTexts, texts({"sigStartRecordBtnClick"}));
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Stop (Space)"));
    // The adapter takes the loss of a device for one in a take from now on.
    setCameras({QStringLiteral("Cam B")});
    deliverDevice(fcdWebcamRemoved);
    QVERIFY(!isCountingDown());
}

void tst_KdWebcamRecordPanelStart::stoppingDuringTheCountdownOrdersNothing_data()
{
    QTest::addColumn<bool>("byShortcut");
    QTest::newRow("button") << false;
    QTest::newRow("shortcut") << true;
}

void tst_KdWebcamRecordPanelStart::stoppingDuringTheCountdownOrdersNothing()
{
    QFETCH(bool, byShortcut);
    reachState(QStringLiteral("counting"));
    QVERIFY(isCountingDown());
    QVERIFY(control<QWidget>(kCountdown)->isVisible());
    signalTexts.clear();
    if (byShortcut) {
        pressKey(Qt::Key_Space);
    } else {
        click(kStart);
    }
    QVERIFY(!isCountingDown());
    QVERIFY(!control<QWidget>(kCountdown)->isVisible());
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Start (Space)"));
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
    QCOMPARE(signalTexts, QStringList());
    QCOMPARE(engine->count("start"), 0);
    QCOMPARE(engine->count("stop"), 0);
}

void tst_KdWebcamRecordPanelStart::countdownStandsInTheMiddleOfThePicture()
{
    reachState(QStringLiteral("counting"));
    QCOMPARE(control<QWidget>(kCountdown)->size(), QSize(152, 152));
    QTRY_VERIFY(isCountdownCentred());
    window->resize(window->width() + 60, window->height() + 90);
    QTRY_VERIFY(isCountdownCentred());
    window->move(window->pos() + QPoint(70, 40));
    // The window's owner says so.
    QTRY_VERIFY((panel->placeCountdown(), isCountdownCentred()));
}

void tst_KdWebcamRecordPanelStart::countdownIsStoredForTheHost()
{
    KRecordSettingData choices;
    choices.countdown = 5;
    store(choices);
    showPanel();
    auto* const seconds = control<QDoubleSpinBox>(kSeconds);
    QCOMPARE(seconds->value(), 5.0);
    const auto* const general = KdAppSettings::GetInstance()->GetSettings()->GetGeneralSettings();
    seconds->setValue(7);
    QCOMPARE(general->GetRecordVideoCountdown(), 7);
    seconds->setValue(99);
    QCOMPARE(general->GetRecordVideoCountdown(), 9);
    QCOMPARE(seconds->decimals(), 0);
    QCOMPARE(seconds->buttonSymbols(), QAbstractSpinBox::NoButtons);
}

void tst_KdWebcamRecordPanelStart::missingFolderIsMade()
{
    setCaptureFolder(temporaryPath(QStringLiteral("not/there/yet")));
    showPanel();
    startTake();
    QCOMPARE(takes().size(), 1);
}

void tst_KdWebcamRecordPanelStart::unusableFolderGoesOnAsForAnUncheckedButton()
{
    const QString file = temporaryPath(QStringLiteral("file"));
    TestFiles::write(file, "no folder");
    setCaptureFolder(file);
    showPanel();
    QString title;
    answers->handle(QStringLiteral("KOldMessageDialog"), [&title](QWidget& box) {
        title = box.windowTitle();
        DialogDriver::click(box, QStringLiteral("KOldMessageDialog_Ok"));
    });
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({kPermission}));
    QCOMPARE(title, KdUtility::gGetProductName());
    // There is nothing to import, and the host is told so.
    QTRY_COMPARE(signalTexts, texts({"order 5", "sigCaptureFinished(, 1920x1080, 30, 0, Cam A)"}));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isCountingDown());
    QVERIFY(!isLocked());
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdWebcamRecordPanelStart::refusedStartAfterAShortTakeIsNotTooShort()
{
    showPanel();
    startTake();
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    panel->setFolderCheck(withFreeSpace(1));
    answers->answerMessage(QDialogButtonBox::Yes);
    click(kStart);
    QTRY_COMPARE(answers->messages().size(), 2);
    QCOMPARE(answers->messages().count(QLatin1String(kTooShort)), 1);
}

void tst_KdWebcamRecordPanelStart::onlyAnExplicitNoRecordsOnLittleSpace_data()
{
    QTest::addColumn<int>("freeMegabytes");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("records");
    QTest::newRow("yes means another folder") << 499 << QStringLiteral("yes") << false;
    QTest::newRow("no records all the same") << 499 << QStringLiteral("no") << true;
    QTest::newRow("closing is no answer") << 0 << QStringLiteral("close") << false;
    QTest::newRow("enough is not asked") << 500 << QString() << true;
}

void tst_KdWebcamRecordPanelStart::onlyAnExplicitNoRecordsOnLittleSpace()
{
    QFETCH(int, freeMegabytes);
    QFETCH(QString, answer);
    QFETCH(bool, records);
    showPanel();
    panel->setFolderCheck(withFreeSpace(freeMegabytes));
    if (answer == QLatin1String("close")) {
        answers->handle(QStringLiteral("KOldMessageDialog"), [](QWidget& box) { box.close(); });
    } else if (!answer.isEmpty()) {
        answers->answerMessage(answer == QLatin1String("yes") ? QDialogButtonBox::Yes
                                                              : QDialogButtonBox::No);
    }
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    if (records) {
        QTRY_COMPARE(panel->status(), fcsRecording);
    } else {
        QTRY_VERIFY(!button(kStart)->isChecked());
        QCOMPARE(engine->count("start"), 0);
    }
    const QString question =
        QStringLiteral("There is only %1MB space in the specified output directory, Would you "
                       "choose another directory?");
    QCOMPARE(answers->messages(),
             answer.isEmpty() ? QStringList() : QStringList{question.arg(freeMegabytes)});
}

void tst_KdWebcamRecordPanelStart::abortedInsideTheFolderQuestionStartsNothing()
{
    showPanel();
    panel->setFolderCheck(withFreeSpace(1));
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        panel->AbordRecorder();
        box.close();
    });
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isCountingDown());
    QVERIFY(!isLocked());
    QVERIFY(!signalTexts.join(QLatin1Char(' ')).contains(QStringLiteral("sigCaptureFinished")));
}

void tst_KdWebcamRecordPanelStart::startThatTheEngineRefusesEndsInThePreview()
{
    engine->fail("start");
    expectLog(QStringLiteral("Failed to start the webcam record process"));
    showPanel();
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({kDeviceIssue}));
    QTRY_VERIFY(!button(kStart)->isChecked());
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(, 1920x1080, 30, 0, Cam A)"));
    QVERIFY(!isLocked());
    QVERIFY(!button(kPause)->isVisible());
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
    QVERIFY(stored().selectedCameraDeviceName.isEmpty());

    engine->succeed("start");
    startTake();
}

void tst_KdWebcamRecordPanelStart::pressWithoutCameraSaysSo()
{
    setCameras({});
    showPanel();
    QVERIFY(!button(kStart)->isEnabled());
    answers->answerMessage(QDialogButtonBox::Ok);
    // As someone else who holds the panel may do.
    button(kStart)->setEnabled(true);
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({"No Device"}));
    QTRY_COMPARE(signalTexts, texts({"sigStartRecordBtnClick"}));
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isLocked());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelStart>(argc, argv);
}

#include "tst_KdWebcamRecordPanelStart.moc"

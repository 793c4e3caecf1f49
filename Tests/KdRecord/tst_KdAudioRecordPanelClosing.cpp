#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>

#include <QDoubleSpinBox>
#include <QFile>

using namespace KdVBLMODEL;

/** Closing the voice-over panel. */
class tst_KdAudioRecordPanelClosing : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void closingWithoutATakeReportsAnEmptyPath();
    void closingDuringTheCountdownAbortsIt();
    void closingInMidTakeDeliversTheFile_data();
    void closingInMidTakeDeliversTheFile();
    void closingInMidTakeThatIsTooShortSaysSo();
    void closingTwiceIsHarmless();
    void closedPanelDoesNothing();
    void closingSavesTheSettings();
    void okClosesThroughItsOwner();
    void closedInsideTheMessageOfItsOwnClosing();
};

void tst_KdAudioRecordPanelClosing::closingWithoutATakeReportsAnEmptyPath()
{
    showPanel();
    signalTexts.clear();
    panel->close();
    const QStringList expected{QStringLiteral("sigEndCapture"),
                               QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)")};
    QCOMPARE(signalTexts, expected);
    QCOMPARE(engine->count("stop"), 0);
    QCOMPARE(answers->messages(), QStringList());
    QCOMPARE(engine->alive(), 0);
}

void tst_KdAudioRecordPanelClosing::closingDuringTheCountdownAbortsIt()
{
    showPanel();
    reachState(QStringLiteral("counting"));
    signalTexts.clear();
    panel->close();
    QVERIFY(!isCountingDown());
    QVERIFY(!isLocked());
    const QStringList expected{QStringLiteral("sigEndCapture"),
                               QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)")};
    QCOMPARE(signalTexts, expected);
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdAudioRecordPanelClosing::closingInMidTakeDeliversTheFile_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("recording") << QStringLiteral("recording");
    QTest::newRow("paused") << QStringLiteral("paused");
}

void tst_KdAudioRecordPanelClosing::closingInMidTakeDeliversTheFile()
{
    QFETCH(QString, state);
    showPanel();
    reachState(state);
    passTime(5000);
    engine->deliverTime(5000);
    drain();
    signalTexts.clear();
    engine->clearCalls();
    panel->close();
    const QStringList expected{QStringLiteral("sigEndCapture"),
                               QStringLiteral("sigCaptureFinished(path, 2, 16, 5, Mic A)")};
    QCOMPARE(signalTexts, expected);
    QVERIFY(QFile::exists(finishedPath));
    QVERIFY(!isLocked());
    // Finished first, then detached, then released.
    const QStringList commands = engine->commands();
    QCOMPARE(commands.first(), QStringLiteral("stop()"));
    QCOMPARE(commands.mid(1, 3), (QStringList{QStringLiteral("setCallbackSwitch3(false)"),
                                              QStringLiteral("setCallbackSwitch2(false)"),
                                              QStringLiteral("setCallbackSwitch1(false)")}));
    QCOMPARE(commands.last(), QStringLiteral("release()"));
    QCOMPARE(engine->alive(), 0);
}

void tst_KdAudioRecordPanelClosing::closingInMidTakeThatIsTooShortSaysSo()
{
    showPanel();
    reachState(QStringLiteral("recording"));
    answers->answerMessage(QDialogButtonBox::Ok);
    panel->close();
    QCOMPARE(answers->messages(),
             QStringList{QStringLiteral("The recording is too short. Data cannot be saved.")});
    QCOMPARE(signalTexts.last(), QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)"));
    QCOMPARE(takes(), QStringList());
}

void tst_KdAudioRecordPanelClosing::closingTwiceIsHarmless()
{
    showPanel();
    panel->close();
    signalTexts.clear();
    panel->close();
    QCOMPARE(signalTexts, QStringList());
    QCOMPARE(engine->released(), 1);
}

void tst_KdAudioRecordPanelClosing::closedPanelDoesNothing()
{
    showPanel();
    panel->close();
    signalTexts.clear();
    engine->clearCalls();
    QCOMPARE(panel->status(), fcsNoStart);
    panel->startFromOutside();
    panel->stopFromOutside();
    pressKey(Qt::Key_Space);
    button("KAudioCapture_ButtonRefresh")->click();
    button(kPause)->click();
    button(kReRecord)->click();
    QCOMPARE(engine->calls(), QStringList());
    QVERIFY(!isCountingDown());
    QVERIFY(!signalTexts.join(QLatin1Char(' ')).contains(QStringLiteral("sigStart")));
}

void tst_KdAudioRecordPanelClosing::closingSavesTheSettings()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(4);
    panel->close();
    KdAppSettings::GetInstance()->Load();
    QCOMPARE(KdAppSettings::GetInstance()
                 ->GetSettings()
                 ->GetGeneralSettings()
                 ->GetRecordAudioCountdown(),
             4);
}

void tst_KdAudioRecordPanelClosing::okClosesThroughItsOwner()
{
    showPanel();
    signalTexts.clear();
    click(kOk);
    QCOMPARE(signalTexts, QStringList{QStringLiteral("sigClose")});
    QVERIFY(panel->isVisible());
}

void tst_KdAudioRecordPanelClosing::closedInsideTheMessageOfItsOwnClosing()
{
    showPanel();
    startTake();
    signalTexts.clear();
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        panel->close();
        panel->close();
        box.close();
    });
    panel->close();
    const QStringList expected{QStringLiteral("sigEndCapture"),
                               QStringLiteral("sigCaptureFinished(, 2, 16, 0, Mic A)")};
    QCOMPARE(signalTexts, expected);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelClosing>(argc, argv);
}

#include "tst_KdAudioRecordPanelClosing.moc"

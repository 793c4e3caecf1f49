#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdAudioRecordHelper.h>
#include <KdZentraCore/KdUtility.h>
#include <KdZentraCore/KdWindowsApi.h>

#include <Support/TestFiles.h>

#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>

using namespace KdVBLMODEL;

namespace {

using Action = std::function<void()>;
using Connector = std::function<void(KdAudioRecordPanel*, const Action&)>;

template <typename Signal>
Connector onSignal(Signal signal)
{
    return [signal](KdAudioRecordPanel* panel, const Action& action) {
        QObject::connect(panel, signal, panel, [action] { action(); });
    };
}

} // namespace

Q_DECLARE_METATYPE(Connector)

/** Closing the voice-over panel and destroying it at any moment. */
class tst_KdAudioRecordPanelLife : public AudioRecordFixture
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

    void destroyedInAnyState_data();
    void destroyedInAnyState();
    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void deletedLaterFromTheShowing();
    void destroyedInsideAMessage_data();
    void destroyedInsideAMessage();
    void closedInsideTheMessageOfItsOwnClosing();

    void panelWithoutParentOrMainWindow();
    void mainWindowDestroyedInMidTake();
    void panelWithoutDevicesClosesQuietly();

private:
    using Triggers = QHash<QString, Action>;

    void makeTakeLong() { passTime(5000); }
    void reachState(const QString& state);
    /** What makes the panel emit or tell something, by name: from the start, */
    Triggers startTriggers();
    /** while a take runs that is still too short, */
    Triggers takeTriggers();
    /** and while one runs that is not. */
    Triggers longTakeTriggers();
    void trigger(const QString& what);
    void leaveBy(const QString& way);
};

void tst_KdAudioRecordPanelLife::closingWithoutATakeReportsAnEmptyPath()
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

void tst_KdAudioRecordPanelLife::closingDuringTheCountdownAbortsIt()
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

void tst_KdAudioRecordPanelLife::closingInMidTakeDeliversTheFile_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("recording") << QStringLiteral("recording");
    QTest::newRow("paused") << QStringLiteral("paused");
}

void tst_KdAudioRecordPanelLife::closingInMidTakeDeliversTheFile()
{
    QFETCH(QString, state);
    showPanel();
    reachState(state);
    makeTakeLong();
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

void tst_KdAudioRecordPanelLife::closingInMidTakeThatIsTooShortSaysSo()
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

void tst_KdAudioRecordPanelLife::closingTwiceIsHarmless()
{
    showPanel();
    panel->close();
    signalTexts.clear();
    panel->close();
    QCOMPARE(signalTexts, QStringList());
    QCOMPARE(engine->released(), 1);
}

void tst_KdAudioRecordPanelLife::closedPanelDoesNothing()
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

void tst_KdAudioRecordPanelLife::closingSavesTheSettings()
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

void tst_KdAudioRecordPanelLife::okClosesThroughItsOwner()
{
    showPanel();
    signalTexts.clear();
    click(kOk);
    QCOMPARE(signalTexts, QStringList{QStringLiteral("sigClose")});
    QVERIFY(panel->isVisible());
}

void tst_KdAudioRecordPanelLife::reachState(const QString& state)
{
    auto* const seconds = control<QDoubleSpinBox>("KAudioCapture_CountdownBox");
    if (state == QLatin1String("counting")) {
        seconds->setValue(9);
        click(kStart);
    } else if (state != QLatin1String("idle")) {
        startTake();
    }
    if (state == QLatin1String("paused")) {
        click(kPause);
    } else if (state == QLatin1String("asking")) {
        click(kReRecord);
    }
}

void tst_KdAudioRecordPanelLife::destroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"idle", "counting", "recording", "paused", "asking"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdAudioRecordPanelLife::destroyedInAnyState()
{
    QFETCH(QString, state);
    showPanel();
    reachState(state);
    // Reports that are on their way reach no one.
    engine->deliverTime(3000);
    engine->deliverDevice(4, 0);
    delete window;
    QVERIFY(!panel);
    drain();
    QCOMPARE(engine->alive(), 0);
    QVERIFY(!isLocked());
}

tst_KdAudioRecordPanelLife::Triggers tst_KdAudioRecordPanelLife::startTriggers()
{
    const auto press = [this] { button(kStart)->click(); };
    const auto pressUntilAsked = [this, press] {
        press();
        QTRY_VERIFY(engine->count("start") > 0);
    };
    return {
        {QStringLiteral("start"), press},
        {QStringLiteral("key"), [this] { pressKey(Qt::Key_Space); }},
        {QStringLiteral("take"), pressUntilAsked},
        {QStringLiteral("failed start"),
         [this, pressUntilAsked] {
             engine->fail("start");
             pressUntilAsked();
         }},
        {QStringLiteral("no device"),
         [this] {
             setMicrophones({});
             button("KAudioCapture_ButtonRefresh")->click();
             panel->startFromOutside();
         }},
        {QStringLiteral("refused"),
         [this, press] {
             const QString file = temporaryPath(QStringLiteral("file"));
             TestFiles::write(file, "no folder");
             setVoiceFolder(file);
             press();
         }},
        {QStringLiteral("mute"), [this] { click("KAudioCapture_MuteBox"); }},
        {QStringLiteral("ok"), [this] { click(kOk); }},
    };
}

tst_KdAudioRecordPanelLife::Triggers tst_KdAudioRecordPanelLife::takeTriggers()
{
    const auto reRecord = [this] {
        makeTakeLong();
        answers->answerPopover(true);
        click(kReRecord);
        QTRY_COMPARE(answers->pending(), 0);
    };
    return {
        {QStringLiteral("short stop"), [this] { click(kStart); }},
        {QStringLiteral("short close"), [this] { panel->close(); }},
        {QStringLiteral("pause"), [this] { click(kPause); }},
        {QStringLiteral("resume"),
         [this] {
             click(kPause);
             click(kPause);
         }},
        {QStringLiteral("time"),
         [this] {
             engine->deliverTime(1000);
             drain();
         }},
        {QStringLiteral("re-record"), reRecord},
        {QStringLiteral("failed re-record"),
         [this, reRecord] {
             engine->fail("start");
             reRecord();
         }},
    };
}

tst_KdAudioRecordPanelLife::Triggers tst_KdAudioRecordPanelLife::longTakeTriggers()
{
    return {
        {QStringLiteral("stop"), [this] { click(kStart); }},
        {QStringLiteral("close"), [this] { panel->close(); }},
        {QStringLiteral("lost"),
         [this] {
             engine->deliverDevice(4, 0);
             drain();
         }},
        {QStringLiteral("file gone"),
         [this] {
             QVERIFY(QDir(voiceFolder()).removeRecursively());
             QVERIFY(QDir().mkpath(voiceFolder()));
             click(kStart);
         }},
    };
}

void tst_KdAudioRecordPanelLife::trigger(const QString& what)
{
    if (const Action action = startTriggers().value(what)) {
        action();
        return;
    }
    const Action duringTake = takeTriggers().value(what);
    const Action duringLongTake = longTakeTriggers().value(what);
    QVERIFY2(duringTake || duringLongTake, qPrintable(what));
    startTake();
    if (duringTake) {
        duringTake();
        return;
    }
    makeTakeLong();
    duringLongTake();
}

void tst_KdAudioRecordPanelLife::leaveBy(const QString& way)
{
    if (way == QLatin1String("destroyed")) {
        delete window;
    } else if (way == QLatin1String("deleted later")) {
        window->deleteLater();
    } else if (way == QLatin1String("closed")) {
        panel->close();
    } else {
        panel->close();
        delete window;
    }
}

void tst_KdAudioRecordPanelLife::destroyedInsideASignal_data()
{
    using Panel = KdAudioRecordPanel;
    QTest::addColumn<Connector>("connector");
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("way");
    struct Row
    {
        const char* name;
        Connector connector;
        QList<const char*> triggers;
    };
    const QList<Row> rows{
        {"sigStartRecordBtnClick", onSignal(&Panel::sigStartRecordBtnClick), {"start", "key"}},
        {"sigStartCapture", onSignal(&Panel::sigStartCapture), {"take"}},
        {"sigStartCaptureFailed", onSignal(&Panel::sigStartCaptureFailed), {"failed start"}},
        {"sigCaptureFinished", onSignal(&Panel::sigCaptureFinished), {"stop", "close", "lost"}},
        {"sigEndCapture", onSignal(&Panel::sigEndCapture), {"close"}},
        {"sigCaptureDoing", onSignal(&Panel::sigCaptureDoing), {"time"}},
        {"sigMute", onSignal(&Panel::sigMute), {"mute"}},
        {"sigPause", onSignal(&Panel::sigPause), {"pause"}},
        {"sigResume", onSignal(&Panel::sigResume), {"resume"}},
        {"sigClose", onSignal(&Panel::sigClose), {"ok"}},
    };
    for (const Row& row : rows) {
        for (const char* const what : row.triggers) {
            for (const char* const way :
                 {"destroyed", "deleted later", "closed", "closed and destroyed"}) {
                QTest::addRow("%s in %s, %s", way, row.name, what)
                    << row.connector << QString::fromLatin1(what) << QString::fromLatin1(way);
            }
        }
    }
}

void tst_KdAudioRecordPanelLife::destroyedInsideASignal()
{
    QFETCH(Connector, connector);
    QFETCH(QString, what);
    QFETCH(QString, way);
    showPanel();
    bool hasLeft = false;
    connector(panel, [this, way, &hasLeft] {
        if (!hasLeft) {
            hasLeft = true;
            makeTakeLong();
            leaveBy(way);
        }
    });
    // A panel that still lives goes on to tell its user.
    const bool isTold = what == QLatin1String("failed start") || what == QLatin1String("lost");
    if (isTold && way == QLatin1String("deleted later")) {
        answers->answerMessage(QDialogButtonBox::Ok);
    }
    trigger(what);
    QTRY_VERIFY(hasLeft);
    drain();
    QCOMPARE(panel.isNull(), way != QLatin1String("closed"));
    QTRY_COMPARE(engine->alive(), 0);
    QVERIFY(!isLocked());
}

void tst_KdAudioRecordPanelLife::deletedLaterFromTheShowing()
{
    window = new QWidget;
    adopt(new KdAudioRecordPanel(window));
    connect(panel, &KdAudioRecordPanel::sigMute, window, &QObject::deleteLater);
    window->show();
    QTRY_VERIFY(!panel);
    QCOMPARE(engine->alive(), 0);
}

void tst_KdAudioRecordPanelLife::destroyedInsideAMessage_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("way");
    for (const char* const what : {"no device", "refused", "failed start", "short stop", "lost",
                                   "file gone", "short close", "failed re-record"}) {
        for (const char* const way :
             {"destroyed", "deleted later", "closed", "closed and destroyed"}) {
            QTest::addRow("%s in the message of: %s", way, what)
                << QString::fromLatin1(what) << QString::fromLatin1(way);
        }
    }
}

void tst_KdAudioRecordPanelLife::destroyedInsideAMessage()
{
    QFETCH(QString, what);
    QFETCH(QString, way);
    showPanel();
    bool hasLeft = false;
    answers->handle(QStringLiteral("KOldMessageDialog"), [this, way, &hasLeft](QWidget& box) {
        const QPointer<QWidget> shown = &box;
        hasLeft = true;
        leaveBy(way);
        if (way == QLatin1String("deleted later")) {
            QTRY_VERIFY(!shown);
        } else if (shown) {
            shown->close();
        }
    });
    trigger(what);
    QTRY_VERIFY(hasLeft);
    drain();
    QCOMPARE(panel.isNull(), way != QLatin1String("closed"));
    QTRY_COMPARE(engine->alive(), 0);
    QVERIFY(!isLocked());
    QVERIFY(answers->messages().size() == 1);
}

void tst_KdAudioRecordPanelLife::closedInsideTheMessageOfItsOwnClosing()
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

void tst_KdAudioRecordPanelLife::panelWithoutParentOrMainWindow()
{
    mainWindow.reset();
    QVERIFY(!KdUtility::gGetMainWindow());
    window = new KdAudioRecordPanel(nullptr);
    adopt(static_cast<KdAudioRecordPanel*>(window.data()));
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window));
    const QString path = startTake();
    makeTakeLong();
    stopTake();
    QCOMPARE(finishedPath, path);
    panel->close();
    mainWindow = std::make_unique<QWidget>();
}

void tst_KdAudioRecordPanelLife::mainWindowDestroyedInMidTake()
{
    showPanel();
    const QString path = startTake();
    makeTakeLong();
    QVERIFY(isLocked());
    mainWindow.reset();
    engine->deliverTime(1000);
    drain();
    stopTake();
    QCOMPARE(finishedPath, path);
    panel->close();
    mainWindow = std::make_unique<QWidget>();
}

void tst_KdAudioRecordPanelLife::panelWithoutDevicesClosesQuietly()
{
    setMicrophones({});
    engine->fail("stop");
    showPanel();
    QVERIFY(!button(kStart)->isEnabled());
    panel->close();
    QCOMPARE(answers->messages(), QStringList());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelLife>(argc, argv);
}

#include "tst_KdAudioRecordPanelLife.moc"

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

void onStartAnew(KdAudioRecordPanel* panel, const Action& action)
{
    QObject::connect(panel, &KdAudioRecordPanel::sigStartCapture, panel, [action](bool isAnew) {
        if (isAnew) {
            action();
        }
    });
}

} // namespace

Q_DECLARE_METATYPE(Connector)

/** The voice-over panel destroyed or closed at any moment. */
class tst_KdAudioRecordPanelLife : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:

    void destroyedInAnyState_data();
    void destroyedInAnyState();
    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void deletedLaterFromTheShowing();
    void destroyedInsideAMessage_data();
    void destroyedInsideAMessage();

    void panelWithoutParentOrMainWindow();
    void mainWindowDestroyedInMidTake();
    void panelWithoutDevicesClosesQuietly();

private:
    using Triggers = QHash<QString, Action>;

    void makeTakeLong() { passTime(5000); }
    /** What makes the panel emit or tell something, by name: from the start, */
    Triggers startTriggers();
    /** while a take runs that is still too short, */
    Triggers takeTriggers();
    /** and while one runs that is not. */
    Triggers longTakeTriggers();
    void trigger(const QString& what);
    void leaveBy(const QString& way);
};

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
    QTest::addColumn<bool>("isReport");
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
        {"sigStartCapture anew", onStartAnew, {"re-record"}},
        {"sigStartCaptureFailed",
         onSignal(&Panel::sigStartCaptureFailed),
         {"failed start", "failed re-record"}},
        {"sigCaptureFinished",
         onSignal(&Panel::sigCaptureFinished),
         {"stop", "close", "lost", "failed re-record"}},
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
                    << row.connector << (qstrcmp(row.name, "sigCaptureFinished") == 0)
                    << QString::fromLatin1(what) << QString::fromLatin1(way);
            }
        }
    }
}

void tst_KdAudioRecordPanelLife::destroyedInsideASignal()
{
    QFETCH(Connector, connector);
    QFETCH(bool, isReport);
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
    const bool isTold = what.startsWith(QLatin1String("failed")) || what == QLatin1String("lost");
    // The end of a take that could not be recorded anew is told before it is reported.
    const bool isToldBefore = what == QLatin1String("failed re-record") && isReport;
    if (isToldBefore || (isTold && way == QLatin1String("deleted later"))) {
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

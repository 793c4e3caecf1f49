#include "WebcamRecordFixture.h"

#include <KdWidgets/KdComboBox.h>
#include <KdZentraCore/KdUtility.h>
#include <Support/TestFiles.h>

#include <QDoubleSpinBox>
#include <QFile>
#include <QTimer>

#include <functional>

using namespace KdVBLMODEL;

namespace {

using Action = std::function<void()>;
using Connector = std::function<void(KdWebcamRecordPanel*, const Action&)>;

template <typename Signal>
Connector onSignal(Signal signal)
{
    return [signal](KdWebcamRecordPanel* panel, const Action& action) {
        QObject::connect(panel, signal, panel, [action] { action(); });
    };
}

/** Only one of the orders. */
Connector onOrder(int wanted)
{
    return [wanted](KdWebcamRecordPanel* panel, const Action& action) {
        QObject::connect(panel, &KdWebcamRecordPanel::sigWebcamRecorderOrderType, panel,
                         [wanted, action](int order) {
                             if (order == wanted) {
                                 action();
                             }
                         });
    };
}

/** A list must not be destroyed by those who hear of the choice from it. */
QList<const char*> waysToLeave(const QString& what)
{
    const QStringList lists{QStringLiteral("camera"), QStringLiteral("microphone"),
                            QStringLiteral("size"), QStringLiteral("rate")};
    return lists.contains(what) ? QList<const char*>{"deleted later", "aborted"}
                                : QList<const char*>{"destroyed", "deleted later", "aborted",
                                                     "aborted and destroyed"};
}

} // namespace

Q_DECLARE_METATYPE(Connector)

/** The webcam panel destroyed or aborted at any moment. */
class tst_KdWebcamRecordPanelLife : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void destroyedInAnyState_data();
    void destroyedInAnyState();
    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void destroyedInsideAMessage_data();
    void destroyedInsideAMessage();

    void panelWithoutParentOrMainWindow();
    void mainWindowDestroyedInMidTake();
    void engineWithoutARecorder();

private:
    using Triggers = QHash<QString, Action>;

    /** What makes the panel emit or tell something, by name: in the preview, */
    Triggers previewTriggers();
    /** and in a take. */
    Triggers takeTriggers();
    /** Shows the panel, in the state that the trigger needs. */
    Action prepared(const QString& what);
    void leaveBy(const QString& way);
    /** A device event, with its consequences at once. */
    void report(int status);
    void checkThatNothingIsLeft();
    void checkThatNothingRuns();
};

void tst_KdWebcamRecordPanelLife::checkThatNothingIsLeft()
{
    QVERIFY(!panel);
    QCOMPARE(engine->observerCount(), 0);
    QVERIFY(!engine->isPreviewing());
    QCOMPARE(engine->status(), fcsNoStart);
    QVERIFY(!isLocked());
    // The panel never orders it: what is left behind is the engine's.
    QCOMPARE(engine->released(), 0);
}

/** In a panel that was aborted and still lives. */
void tst_KdWebcamRecordPanelLife::checkThatNothingRuns()
{
    QCOMPARE(engine->status(), fcsNoStart);
    QVERIFY(!engine->isPreviewing());
    QVERIFY(!isCountingDown());
    QVERIFY(!button(kStart)->isChecked());
    // A take that was handed over before is its receiver's.
    QCOMPARE(takes().size(), finishedPath.isEmpty() ? 0 : 1);
}

void tst_KdWebcamRecordPanelLife::destroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"empty", "preview", "counting", "recording", "paused", "asking"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdWebcamRecordPanelLife::destroyedInAnyState()
{
    QFETCH(QString, state);
    reachState(state);
    // Reports that are on their way reach no one.
    engine->deliverTime(3000);
    engine->deliverDevice(fcdWebcamRemoved, 0);
    engine->deliverFrame(QImage(32, 18, QImage::Format_ARGB32));
    delete window;
    drain();
    checkThatNothingIsLeft();
    // An unfinished take leaves no file.
    QCOMPARE(takes(), QStringList());
}

void tst_KdWebcamRecordPanelLife::report(int status)
{
    if (status == fcdWebcamRemoved) {
        setCameras({});
    } else if (status == fcdAudioInputRemoved) {
        setMicrophones({});
    }
    engine->deliverDevice(status, 0);
    for (auto* const timer : panel->findChildren<QTimer*>()) {
        timer->setInterval(0);
    }
}

tst_KdWebcamRecordPanelLife::Triggers tst_KdWebcamRecordPanelLife::previewTriggers()
{
    return {
        {QStringLiteral("start"), [this] { button(kStart)->click(); }},
        {QStringLiteral("key"), [this] { pressKey(Qt::Key_Space); }},
        {QStringLiteral("failed start"),
         [this] {
             engine->fail("start");
             allowLog(QStringLiteral("Failed to start the webcam record process"));
             button(kStart)->click();
         }},
        {QStringLiteral("no device"),
         [this] {
             control<KdComboBox>(kCamera)->setRowHidden(0, true);
             button(kStart)->click();
         }},
        {QStringLiteral("refused"),
         [this] {
             const QString file = temporaryPath(QStringLiteral("file"));
             TestFiles::write(file, "no folder");
             setCaptureFolder(file);
             button(kStart)->click();
         }},
        {QStringLiteral("ok"), [this] { click(kOk); }},
        {QStringLiteral("reload"), [this] { panel->InitUI(); }},
        {QStringLiteral("abort"), [this] { panel->AbordRecorder(); }},
        {QStringLiteral("camera"), [this] { choose(kCamera, QStringLiteral("Cam B")); }},
        {QStringLiteral("microphone"), [this] { choose(kMicrophone, QStringLiteral("Mic B")); }},
        {QStringLiteral("size"), [this] { choose(kResolution, QStringLiteral("640x480")); }},
        {QStringLiteral("rate"), [this] { choose(kFrameRate, QStringLiteral("15 fps")); }},
        {QStringLiteral("plugged"), [this] { report(fcdWebcamListChanged); }},
        {QStringLiteral("lost"), [this] { report(fcdWebcamRemoved); }},
        {QStringLiteral("occupied"), [this] { engine->deliverDevice(fcdWebcamOccupied, 0); }},
    };
}

tst_KdWebcamRecordPanelLife::Triggers tst_KdWebcamRecordPanelLife::takeTriggers()
{
    const auto reRecord = [this] {
        answers->answerPopover(true);
        click(kReRecord);
        QTRY_COMPARE(answers->pending(), 0);
    };
    return {
        {QStringLiteral("stop"),
         [this] {
             passTime(5000);
             click(kStart);
         }},
        {QStringLiteral("short stop"), [this] { click(kStart); }},
        {QStringLiteral("pause"), [this] { click(kPause); }},
        {QStringLiteral("resume"),
         [this] {
             click(kPause);
             click(kPause);
         }},
        {QStringLiteral("re-record"), reRecord},
        {QStringLiteral("abort in take"), [this] { panel->AbordRecorder(); }},
        {QStringLiteral("lost in take"), [this] { report(fcdWebcamRemoved); }},
        {QStringLiteral("microphone lost in take"), [this] { report(fcdAudioInputRemoved); }},
        {QStringLiteral("file gone"),
         [this] {
             passTime(5000);
             QVERIFY(QFile::remove(captureFolder() + QLatin1Char('/') + takes().value(0)));
             click(kStart);
         }},
    };
}

Action tst_KdWebcamRecordPanelLife::prepared(const QString& what)
{
    showPanel();
    if (Action action = previewTriggers().value(what)) {
        return action;
    }
    startTake();
    return takeTriggers().value(what);
}

void tst_KdWebcamRecordPanelLife::leaveBy(const QString& way)
{
    if (way == QLatin1String("destroyed")) {
        delete window;
    } else if (way == QLatin1String("deleted later")) {
        window->deleteLater();
    } else if (way == QLatin1String("aborted")) {
        panel->AbordRecorder();
    } else {
        panel->AbordRecorder();
        delete window;
    }
}

void tst_KdWebcamRecordPanelLife::destroyedInsideASignal_data()
{
    using Panel = KdWebcamRecordPanel;
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
        {"sigClose", onSignal(&Panel::sigClose), {"ok"}},
        {"sigStartRecordBtnClick", onSignal(&Panel::sigStartRecordBtnClick), {"start", "key"}},
        {"sigCaptureFinished", onSignal(&Panel::sigCaptureFinished), {"stop"}},
        {"sigSetCurrentWebCamDevice",
         onSignal(&Panel::sigSetCurrentWebCamDevice),
         {"reload", "camera", "plugged"}},
        {"sigSetCurrentAudioDevice",
         onSignal(&Panel::sigSetCurrentAudioDevice),
         {"reload", "microphone", "plugged"}},
        {"sigSetCurrentResolution", onSignal(&Panel::sigSetCurrentResolution), {"size"}},
        {"sigSetCurrentFrameRate", onSignal(&Panel::sigSetCurrentFrameRate), {"rate"}},
        {"order 2", onOrder(2), {"start", "re-record"}},
        {"order 3", onOrder(3), {"pause"}},
        {"order 4", onOrder(4), {"resume"}},
        {"order 5", onOrder(5), {"stop", "re-record", "abort in take"}},
        {"order 7", onOrder(7), {"reload", "camera", "abort"}},
        {"order 8", onOrder(8), {"lost", "lost in take"}},
        {"order 9", onOrder(9), {"plugged"}},
    };
    for (const Row& row : rows) {
        for (const char* const what : row.triggers) {
            for (const char* const way : waysToLeave(QLatin1String(what))) {
                QTest::addRow("%s in %s, %s", way, row.name, what)
                    << row.connector << QString::fromLatin1(what) << QString::fromLatin1(way);
            }
        }
    }
}

void tst_KdWebcamRecordPanelLife::destroyedInsideASignal()
{
    QFETCH(Connector, connector);
    QFETCH(QString, what);
    QFETCH(QString, way);
    const Action trigger = prepared(what);
    QVERIFY2(trigger, qPrintable(what));
    bool hasLeft = false;
    connector(panel, [this, way, &hasLeft] {
        if (!hasLeft) {
            hasLeft = true;
            passTime(5000);
            leaveBy(way);
        }
    });
    // A panel that still lives goes on to tell its user.
    if (what.startsWith(QLatin1String("lost")) && way == QLatin1String("deleted later")) {
        answers->answerMessage(QDialogButtonBox::Ok);
    }
    trigger();
    QTRY_VERIFY(hasLeft);
    drain();
    QTRY_COMPARE(panel.isNull(), way != QLatin1String("aborted"));
    if (way == QLatin1String("aborted")) {
        checkThatNothingRuns();
    } else {
        checkThatNothingIsLeft();
    }
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordPanelLife::destroyedInsideAMessage_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("way");
    for (const char* const what :
         {"no device", "refused", "failed start", "short stop", "lost", "lost in take",
          "microphone lost in take", "file gone", "occupied"}) {
        for (const char* const way :
             {"destroyed", "deleted later", "aborted", "aborted and destroyed"}) {
            QTest::addRow("%s in the message of: %s", way, what)
                << QString::fromLatin1(what) << QString::fromLatin1(way);
        }
    }
}

void tst_KdWebcamRecordPanelLife::destroyedInsideAMessage()
{
    QFETCH(QString, what);
    QFETCH(QString, way);
    const Action trigger = prepared(what);
    QVERIFY2(trigger, qPrintable(what));
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
    trigger();
    QTRY_VERIFY(hasLeft);
    drain();
    QTRY_COMPARE(panel.isNull(), way != QLatin1String("aborted"));
    if (way == QLatin1String("aborted")) {
        checkThatNothingRuns();
    } else {
        checkThatNothingIsLeft();
    }
    QVERIFY(!isLocked());
    QVERIFY(!button(kStart) || !button(kStart)->isChecked());
    QCOMPARE(answers->messages().size(), 1);
}

void tst_KdWebcamRecordPanelLife::panelWithoutParentOrMainWindow()
{
    mainWindow.reset();
    QVERIFY(!KdUtility::gGetMainWindow());
    window = new KdWebcamRecordPanel(nullptr);
    adopt(static_cast<KdWebcamRecordPanel*>(window.data()));
    panel->InitUI();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window));
    const QString path = startTake();
    passTime(5000);
    stopTake();
    QCOMPARE(finishedPath, path);
    delete window;
    mainWindow = std::make_unique<QWidget>();
}

void tst_KdWebcamRecordPanelLife::mainWindowDestroyedInMidTake()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    QVERIFY(isLocked());
    mainWindow.reset();
    engine->deliverTime(1000);
    drain();
    stopTake();
    QCOMPARE(finishedPath, path);
    delete window;
    mainWindow = std::make_unique<QWidget>();
}

void tst_KdWebcamRecordPanelLife::engineWithoutARecorder()
{
    engine->fail("createWebcamRecorder");
    showPanel();
    QCOMPARE(statusText(), QStringLiteral("No Device"));
    QVERIFY(!button(kStart)->isEnabled());
    panel->AbordRecorder();
    delete window;
    QVERIFY(!panel);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelLife>(argc, argv);
}

#include "tst_KdWebcamRecordPanelLife.moc"

#include "WebcamViewFixture.h"

#include <KdCore/KdCustomEventManager.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>
#include <KdWidgets/KdToast.h>

#include <QFile>

#include <functional>
#include <utility>

using namespace KdVBLMODEL;

namespace {

/** A host that does something once, when it is told that the engine's start begins or has ended. */
class StartListener : public IKdCustomEventReceiver
{
public:
    StartListener(bool atTheEnd, std::function<void()> action)
        : m_atTheEnd(atTheEnd), m_action(std::move(action))
    {
        KdCustomEventManager::instance()->addReceiver(this);
    }
    ~StartListener() override { KdCustomEventManager::instance()->removeReceiver(this); }

    void onCustomEvent(const KdCustomEvent& event) override
    {
        const bool isTold = m_atTheEnd
                                ? !!dynamic_cast<const NotifyEndPileInsetionEvent*>(&event)
                                : !!dynamic_cast<const NotifyBeginPileInsetionEvent*>(&event);
        if (isTold && m_action) {
            std::exchange(m_action, nullptr)();
        }
    }

    bool wasTold() const { return !m_action; }

private:
    const bool m_atTheEnd;
    std::function<void()> m_action;
};

} // namespace

/** Hosts that close the webcam panel or its dialog from inside what it tells them. */
class tst_KdWebcamRecordPanelClosing : public WebcamViewFixture
{
    Q_OBJECT

private Q_SLOTS:
    void abortedWhenToldOfTheStart_data();
    void abortedWhenToldOfTheStart();
    void dialogClosedWhenToldOfTheStart_data();
    void dialogClosedWhenToldOfTheStart();
    void destructionStopsATakeThatNoOneOwns();

    void abortedInsideTheEndOfATakeTellsNothing();
    void abortedInsideTheMessageOfTheEndReportsNothing_data();
    void abortedInsideTheMessageOfTheEndReportsNothing();
    void dialogClosedInsideTheMessageOfTheEndReportsNothing();
    void abortedInsideThePauseShowsNothing();

private:
    void checkThatNothingRuns() const;
    int finished() const { return signalTexts.filter(QStringLiteral("sigCaptureFinished")).size(); }
    void prepare(const QString& start);
    void begin(const QString& start);
};

void tst_KdWebcamRecordPanelClosing::checkThatNothingRuns() const
{
    QCOMPARE(engine->status(), fcsNoStart);
    QCOMPARE(takes(), QStringList());
    QVERIFY(!engine->isPreviewing());
    QVERIFY(!isLocked());
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!button(kPause)->isVisible());
}

void tst_KdWebcamRecordPanelClosing::prepare(const QString& start)
{
    if (start == QLatin1String("re-record")) {
        startTake();
        passTime(5000);
    }
}

void tst_KdWebcamRecordPanelClosing::begin(const QString& start)
{
    if (start == QLatin1String("re-record")) {
        answers->answerPopover(true);
        click(kReRecord);
    } else {
        click(kStart);
    }
}

void tst_KdWebcamRecordPanelClosing::abortedWhenToldOfTheStart_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<bool>("atTheEnd");
    for (const char* const start : {"record", "re-record"}) {
        QTest::addRow("%s, before", start) << QString::fromLatin1(start) << false;
        QTest::addRow("%s, after", start) << QString::fromLatin1(start) << true;
    }
}

void tst_KdWebcamRecordPanelClosing::abortedWhenToldOfTheStart()
{
    QFETCH(QString, start);
    QFETCH(bool, atTheEnd);
    showPanel();
    prepare(start);
    const StartListener host(atTheEnd, [this] { panel->AbordRecorder(); });
    begin(start);
    QTRY_VERIFY(host.wasTold());
    drain();
    checkThatNothingRuns();
    QCOMPARE(finished(), 0);
    QCOMPARE(answers->messages(), QStringList());
    // The panel can be used again.
    panel->InitUI();
    startTake();
}

void tst_KdWebcamRecordPanelClosing::dialogClosedWhenToldOfTheStart_data()
{
    abortedWhenToldOfTheStart_data();
}

void tst_KdWebcamRecordPanelClosing::dialogClosedWhenToldOfTheStart()
{
    QFETCH(QString, start);
    QFETCH(bool, atTheEnd);
    showView();
    // The engine ends what a panel that goes leaves behind; a dialog that is kept has to.
    view->setAttribute(Qt::WA_DeleteOnClose, false);
    prepare(start);
    const StartListener host(atTheEnd, [this] { view->close(); });
    begin(start);
    QTRY_VERIFY(host.wasTold());
    drain();
    QVERIFY(!view->isVisible());
    checkThatNothingRuns();
    QCOMPARE(finished(), 0);
}

void tst_KdWebcamRecordPanelClosing::destructionStopsATakeThatNoOneOwns()
{
    engine->script().take = QByteArray();
    showPanel();
    panel->findChild<KdWebcamRecorderHelper*>()->slotWebcamRecorderOrderType(
        KdWebcamOrder::StartTake);
    QCOMPARE(engine->status(), fcsRecording);
    delete window;
    QCOMPARE(engine->count("stop"), 1);
}

void tst_KdWebcamRecordPanelClosing::abortedInsideTheEndOfATakeTellsNothing()
{
    showPanel();
    const QString path = startTake();
    passTime(5000);
    connect(panel, &KdWebcamRecordPanel::sigCaptureFinished, panel,
            [this] { panel->AbordRecorder(); });
    engine->script().status = [](int) { return static_cast<int>(fcsEnded); };
    QTRY_COMPARE(finishedPath, path);
    engine->script().status = nullptr;
    drain();
    QCOMPARE(answers->messages(), QStringList());
    QVERIFY(QFile::exists(path));
}

void tst_KdWebcamRecordPanelClosing::abortedInsideTheMessageOfTheEndReportsNothing_data()
{
    QTest::addColumn<bool>("isTooShort");
    QTest::newRow("too short") << true;
    QTest::newRow("not saved") << false;
}

void tst_KdWebcamRecordPanelClosing::abortedInsideTheMessageOfTheEndReportsNothing()
{
    QFETCH(bool, isTooShort);
    showPanel();
    const QString path = startTake();
    passTime(isTooShort ? 500 : 5000);
    QVERIFY(isTooShort || QFile::remove(path));
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        panel->AbordRecorder();
        box.close();
    });
    click(kStart);
    QTRY_COMPARE(answers->messages(), isTooShort ? texts({kTooShort}) : texts({kDeviceIssue}));
    drain();
    QCOMPARE(finished(), 0);
    checkThatNothingRuns();
}

void tst_KdWebcamRecordPanelClosing::dialogClosedInsideTheMessageOfTheEndReportsNothing()
{
    showView();
    view->setAttribute(Qt::WA_DeleteOnClose, false);
    QStringList told;
    connect(view, &KdWebcamRecordView::sigClose, this,
            [&told] { told.append(QStringLiteral("close")); });
    connect(view, &KdWebcamRecordView::sigFinished, this,
            [&told] { told.append(QStringLiteral("finished")); });
    startTake();
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        view->close();
        box.close();
    });
    click(kStart);
    QTRY_COMPARE(answers->messages(), texts({kTooShort}));
    drain();
    QCOMPARE(told, texts({"close"}));
}

void tst_KdWebcamRecordPanelClosing::abortedInsideThePauseShowsNothing()
{
    showPanel();
    startTake();
    connect(panel, &KdWebcamRecordPanel::sigWebcamRecorderOrderType, panel, [this](int order) {
        if (order == KdWebcamOrder::PauseTake) {
            panel->AbordRecorder();
        }
    });
    click(kPause);
    QVERIFY(!shownWindow<KdToast>());
    checkThatNothingRuns();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelClosing>(argc, argv);
}

#include "tst_KdWebcamRecordPanelClosing.moc"

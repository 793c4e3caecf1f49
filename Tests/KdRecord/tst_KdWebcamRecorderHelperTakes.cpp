#include "WebcamHelperFixture.h"

#include <KdCore/KdCustomEventManager.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>

#include <QPointer>

#include <functional>
#include <stdexcept>
#include <thread>

using namespace KdVBLMODEL;

namespace {

/** Notes what the host is told, and, when asked to, what the engine is told meanwhile. */
class Host : public IKdCustomEventReceiver
{
public:
    Host() { KdCustomEventManager::instance()->addReceiver(this); }
    ~Host() override { KdCustomEventManager::instance()->removeReceiver(this); }

    void onCustomEvent(const KdCustomEvent& event) override
    {
        if (const auto* begin = dynamic_cast<const NotifyBeginPileInsetionEvent*>(&event)) {
            heard.append(QStringLiteral("begin ") + QLatin1String(begin->label()));
        } else if (const auto* end = dynamic_cast<const NotifyEndPileInsetionEvent*>(&event)) {
            heard.append(QStringLiteral("end ") + QLatin1String(end->label()));
        }
        if (onEvent) {
            onEvent(heard.last());
        }
    }

    QStringList heard;
    std::function<void(const QString&)> onEvent;
};

const QString kBegin = QStringLiteral("begin KdWebcamRecorderHelper::start");
const QString kEnd = QStringLiteral("end KdWebcamRecorderHelper::start");

} // namespace

/** The orders of a take, and what the host is told around its start. */
class tst_KdWebcamRecorderHelperTakes : public WebcamHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void startsATake();
    void aRefusedStartIsAWarning();
    void tellsTheHostAroundTheStart();
    void tellsTheHostTheEndOnEveryPathOut_data();
    void tellsTheHostTheEndOnEveryPathOut();
    void tellsTheHostTheEndWhenTheEngineBreaksItsWord();
    void theHostMayDestroyItWhenTold_data();
    void theHostMayDestroyItWhenTold();
    void tellsTheHostNothingOnAnotherThread();
    void tellsTheHostOfNothingButTheStart();
    void pausesAndResumes();
    void refusedPausesAndResumesAreWarnings();
    void stopWithoutATakeIsNotHeardByTheEngine();
    void stopEndsTheTake();
    void aFailedStopIsAWarning();
    void orderEightStopsThePreviewAndThenTheTake();
};

void tst_KdWebcamRecorderHelperTakes::startsATake()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.takeResponses();
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::StartTake);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("start()")));
    QCOMPARE(helper.curStatus(), fcsRecording);
    QVERIFY(helper.takeResponses().isEmpty());
    QCOMPARE(messages(KdBaseLog::Info).last(),
             QStringLiteral("startWebcamRecorder: Start the webcam record process"));
}

void tst_KdWebcamRecorderHelperTakes::aRefusedStartIsAWarning()
{
    ReadyHelper helper;
    m_engine->fail("start");
    expectLog(QStringLiteral("Failed to start the webcam"));
    helper.order(KdWebcamOrder::StartTake);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(
                 QStringLiteral("startWebcamRecorder: Failed to start the webcam record process")));
    QVERIFY(helper.takeResponses().isEmpty());
}

void tst_KdWebcamRecorderHelperTakes::tellsTheHostAroundTheStart()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    Host host;
    m_engine->during("start", [&host] { host.heard.append(QStringLiteral("start")); });
    helper.order(KdWebcamOrder::StartTake);
    QCOMPARE(host.heard, QStringList({kBegin, QStringLiteral("start"), kEnd}));
}

void tst_KdWebcamRecorderHelperTakes::tellsTheHostTheEndOnEveryPathOut_data()
{
    QTest::addColumn<bool>("hasRecorder");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("started") << true << false;
    QTest::newRow("refused") << true << true;
    QTest::newRow("without a recorder") << false << false;
}

void tst_KdWebcamRecorderHelperTakes::tellsTheHostTheEndOnEveryPathOut()
{
    QFETCH(bool, hasRecorder);
    QFETCH(bool, isRefused);
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    if (!hasRecorder) {
        helper.order(KdWebcamOrder::Uninit);
    }
    if (isRefused) {
        m_engine->fail("start");
        expectLog(QStringLiteral("Failed to start the webcam"));
    }
    Host host;
    helper.order(KdWebcamOrder::StartTake);
    QCOMPARE(host.heard, QStringList({kBegin, kEnd}));
}

void tst_KdWebcamRecorderHelperTakes::tellsTheHostTheEndWhenTheEngineBreaksItsWord()
{
    ReadyHelper helper;
    Host host;
    m_engine->during("start", [] { throw std::runtime_error("planted"); });
    QVERIFY_EXCEPTION_THROWN(helper.slotWebcamRecorderOrderType(KdWebcamOrder::StartTake),
                             std::runtime_error);
    QCOMPARE(host.heard, QStringList({kBegin, kEnd}));
}

void tst_KdWebcamRecorderHelperTakes::theHostMayDestroyItWhenTold_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("starts");
    QTest::newRow("at the beginning") << kBegin << 0;
    QTest::newRow("at the end") << kEnd << 1;
}

void tst_KdWebcamRecorderHelperTakes::theHostMayDestroyItWhenTold()
{
    QFETCH(QString, event);
    QFETCH(int, starts);
    QPointer<ReadyHelper> helper = new ReadyHelper;
    helper->slotSetCurrentWebCamDevice(0);
    Host host;
    host.onEvent = [&](const QString& heard) {
        if (heard == event) {
            delete helper;
        }
    };
    helper->order(KdWebcamOrder::StartTake);
    QVERIFY(!helper);
    QCOMPARE(host.heard, QStringList({kBegin, kEnd}));
    QCOMPARE(m_engine->count("start"), starts);
}

void tst_KdWebcamRecorderHelperTakes::tellsTheHostNothingOnAnotherThread()
{
    Host host;
    std::thread([] {
        ReadyHelper helper;
        helper.slotSetCurrentWebCamDevice(0);
        helper.order(KdWebcamOrder::StartTake);
    }).join();
    QCOMPARE(m_engine->count("start"), 1);
    QVERIFY(host.heard.isEmpty());
}

void tst_KdWebcamRecorderHelperTakes::tellsTheHostOfNothingButTheStart()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    Host host;
    for (const int order : {3, 4, 5, 6, 7, 8, 9}) {
        helper.order(order);
    }
    QVERIFY(host.heard.isEmpty());
}

void tst_KdWebcamRecorderHelperTakes::pausesAndResumes()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.order(KdWebcamOrder::StartTake);
    m_engine->clearCalls();
    const int logged = messages(KdBaseLog::Info).size();
    helper.order(KdWebcamOrder::PauseTake);
    QCOMPARE(helper.curStatus(), fcsPaused);
    helper.order(KdWebcamOrder::ResumeTake);
    QCOMPARE(helper.curStatus(), fcsRecording);
    QCOMPARE(m_engine->commands(),
             QStringList({QStringLiteral("pause()"), QStringLiteral("resume()")}));
    const QStringList expected{
        QStringLiteral("pauseWebcamRecorder: Pause the webcam record process"),
        QStringLiteral("resumeWebcamRecorder: Resume the webcam record process")};
    QCOMPARE(messages(KdBaseLog::Info).mid(logged), expected);
}

void tst_KdWebcamRecorderHelperTakes::refusedPausesAndResumesAreWarnings()
{
    ReadyHelper helper;
    m_engine->fail("pause");
    m_engine->fail("resume");
    expectLog(QStringLiteral("Failed to pause"));
    expectLog(QStringLiteral("Failed to resume"));
    helper.order(KdWebcamOrder::PauseTake);
    helper.order(KdWebcamOrder::ResumeTake);
    const QStringList expected{
        QStringLiteral("pauseWebcamRecorder: Failed to pause the webcam record process"),
        QStringLiteral("resumeWebcamRecorder: Failed to resume the webcam record process")};
    QCOMPARE(messages(KdBaseLog::Warning), expected);
}

void tst_KdWebcamRecorderHelperTakes::stopWithoutATakeIsNotHeardByTheEngine()
{
    ReadyHelper helper;
    m_engine->fail("stop");
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::StopTake);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("curStatus()")));
    QCOMPARE(
        messages(KdBaseLog::Info),
        QStringList(QStringLiteral("stopWebcamRecorder: webcam fcsNoStart status, no need stop")));
}

void tst_KdWebcamRecorderHelperTakes::stopEndsTheTake()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.order(KdWebcamOrder::StartTake);
    helper.order(KdWebcamOrder::PauseTake);
    helper.order(KdWebcamOrder::StopTake);
    QCOMPARE(m_engine->count("stop"), 1);
    QCOMPARE(helper.curStatus(), fcsNoStart);
    QVERIFY(m_engine->isPreviewing());
    QCOMPARE(messages(KdBaseLog::Info).last(),
             QStringLiteral("stopWebcamRecorder: Stop the webcam record process"));
}

void tst_KdWebcamRecorderHelperTakes::aFailedStopIsAWarning()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.order(KdWebcamOrder::StartTake);
    m_engine->fail("stop");
    expectLog(QStringLiteral("Failed to stop the webcam"));
    helper.order(KdWebcamOrder::StopTake);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(
                 QStringLiteral("stopWebcamRecorder: Failed to stop the webcam record process")));
}

void tst_KdWebcamRecorderHelperTakes::orderEightStopsThePreviewAndThenTheTake()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.order(KdWebcamOrder::StartTake);
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::StopEverything);
    QCOMPARE(m_engine->calls(),
             QStringList({QStringLiteral("stopPreview()"), QStringLiteral("curStatus()"),
                          QStringLiteral("stop()")}));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderHelperTakes>(argc, argv);
}

#include "tst_KdWebcamRecorderHelperTakes.moc"

#include "WebcamHelperFixture.h"

#include <KdCore/KdCustomEventManager.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>

#include <QMetaMethod>
#include <QPointer>

#include <functional>
#include <limits>
#include <stdexcept>
#include <thread>

using namespace KdVBLMODEL;

namespace {

bool isEmptyRecord(const _KdCaptureDevInf& device)
{
    return device.devType == 0 && device.index == -1 && device.name.isEmpty() &&
           device.id.isEmpty();
}

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

class tst_KdWebcamRecorderHelper : public WebcamHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void declaresItsSignalsAndSlotsInOrder();
    void makesNoRecorderByItself();
    void diesWithItsParent();
    void initAttachesInTheOrderOfTheContractAndReadsTheDevices();
    void aSecondInitOnlyReadsTheDevicesAnew();
    void uninitReleasesWithoutTouchingTheSwitches();
    void uninitTwiceIsHarmless();
    void canBeInitializedAgain();
    void theDestructorDetachesButDoesNotRelease();
    void ignoresUnknownOrders_data();
    void ignoresUnknownOrders();
    void aFailureToListDevicesLeavesEmptyLists();

    void startsAPreviewWithANewIdEachTime();
    void aRefusedPreviewHasANewIdAllTheSame();
    void aRefusedPreviewLeavesARunningOneToBeStopped();
    void stopsOnlyAPreviewThatItStarted();
    void aFailedStopOfAPreviewIsNotRepeated();

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

    void handsOverParametersInOrder();
    void handsOverNoAudioIndexWithoutAudio();
    void parametersLeaveItsOwnValuesAlone();
    void forwardsTheOptionsOfThePicture();
    void asksTheEngineEachTime();
    void answersWithoutARecorder();
    void anEngineWithoutARecorderIsAnEngineWithoutDevices();
};

void tst_KdWebcamRecorderHelper::declaresItsSignalsAndSlotsInOrder()
{
    const QMetaObject& meta = KdWebcamRecorderHelper::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    const QStringList expected{
        QStringLiteral("sigRecordedTime(qlonglong)"),
        QStringLiteral("sigRecorderVolume(int)"),
        QStringLiteral("sigWebCamFrameChanged(int,int,uint8_t*)"),
        QStringLiteral("sigRecorderResponeType(int)"),
        QStringLiteral("slotWebcamRecorderOrderType(int)"),
        QStringLiteral("slotSetCurrentWebCamDevice(int)"),
        QStringLiteral("slotSetCurrentAudioDevice(int)"),
        QStringLiteral("slotSetCurrentResolution(QSize)"),
        QStringLiteral("slotSetCurrentFrameRate(double)"),
        QStringLiteral("slotTimeCallback(qlonglong)"),
        QStringLiteral("slotVolumeCallback(int)"),
        QStringLiteral("slotCaptureDeviceCallback(int,int)"),
        QStringLiteral("slotFrameChangedCallback(int,int,void*,QString)"),
    };
    QCOMPARE(methods, expected);
}

void tst_KdWebcamRecorderHelper::makesNoRecorderByItself()
{
    const KdWebcamRecorderHelper helper(nullptr);
    QCOMPARE(m_engine->created(), 0);
    QVERIFY(helper.getWebcamDevices().isEmpty());
    QVERIFY(helper.getAudioDevices().isEmpty());
    QVERIFY(isEmptyRecord(helper.getCurrentWebCamDeviceInfo()));
    QVERIFY(isEmptyRecord(helper.getCurrentAudioDeviceInfo()));
    QVERIFY(!helper.getCurrentResolution().isValid());
    QCOMPARE(helper.getCurrentFrameRate(), 0.0);
}

void tst_KdWebcamRecorderHelper::diesWithItsParent()
{
    auto parent = std::make_unique<QObject>();
    const QPointer<KdWebcamRecorderHelper> helper = new KdWebcamRecorderHelper(parent.get());
    QCOMPARE(helper->parent(), parent.get());
    parent.reset();
    QVERIFY(!helper);
}

void tst_KdWebcamRecorderHelper::initAttachesInTheOrderOfTheContractAndReadsTheDevices()
{
    const ReadyHelper helper;
    QCOMPARE(m_engine->created(), 1);
    const QStringList expected{QStringLiteral("addEventObserver(observer)"),
                               QStringLiteral("setCallbackSwitch3(true)"),
                               QStringLiteral("setCallbackSwitch2(true)"),
                               QStringLiteral("setCallbackSwitch1(true)"),
                               QStringLiteral("getDevices(2)"),
                               QStringLiteral("getDevices(8)")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(helper.getWebcamDevices().value(0).id, m_engine->script().webcams.first().id);
    QCOMPARE(helper.getAudioDevices().value(0).id, m_engine->script().microphones.first().id);
    QVERIFY(isEmptyRecord(helper.getCurrentWebCamDeviceInfo()));
}

void tst_KdWebcamRecorderHelper::aSecondInitOnlyReadsTheDevicesAnew()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    m_engine->script().webcams.append(device(kdtWebcam, 1, QStringLiteral("Second")));
    helper.order(KdWebcamOrder::Init);
    QCOMPARE(m_engine->created(), 1);
    const QStringList expected{QStringLiteral("getDevices(2)"), QStringLiteral("getDevices(8)")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(helper.getWebcamDevices().size(), 2);
}

void tst_KdWebcamRecorderHelper::uninitReleasesWithoutTouchingTheSwitches()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::Uninit);
    const QStringList expected{QStringLiteral("removeEventObserver(observer)"),
                               QStringLiteral("release()")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(m_engine->released(), 1);
}

void tst_KdWebcamRecorderHelper::uninitTwiceIsHarmless()
{
    ReadyHelper helper;
    helper.order(KdWebcamOrder::Uninit);
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::Uninit);
    QVERIFY(m_engine->calls().isEmpty());
}

void tst_KdWebcamRecorderHelper::canBeInitializedAgain()
{
    ReadyHelper helper;
    helper.order(KdWebcamOrder::StartPreview);
    helper.order(KdWebcamOrder::Uninit);
    helper.order(KdWebcamOrder::Init);
    QCOMPARE(m_engine->created(), 2);
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::StopPreview); // that of the first recorder went with it
    QVERIFY(m_engine->calls().isEmpty());
    helper.slotSetCurrentWebCamDevice(0);
    QVERIFY(m_engine->isPreviewing());
}

void tst_KdWebcamRecorderHelper::theDestructorDetachesButDoesNotRelease()
{
    m_keptRecorders = 1;
    auto helper = std::make_unique<KdWebcamRecorderHelper>(nullptr);
    helper->slotWebcamRecorderOrderType(KdWebcamOrder::Init);
    m_engine->clearCalls();
    helper.reset();
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("removeEventObserver(observer)")));
    QCOMPARE(m_engine->observerCount(), 0);
    m_engine->deliverDevice(fcdWebcamRemoved, 0); // a hot-plug after the dialog has gone
    m_engine->deliverFrame(QImage(16, 9, QImage::Format_ARGB32));
}

void tst_KdWebcamRecorderHelper::ignoresUnknownOrders_data()
{
    QTest::addColumn<int>("order");
    QTest::newRow("below the first") << -1;
    QTest::newRow("above the last") << 10;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void tst_KdWebcamRecorderHelper::ignoresUnknownOrders()
{
    QFETCH(int, order);
    ReadyHelper helper;
    m_engine->clearCalls();
    helper.order(order);
    QVERIFY(m_engine->calls().isEmpty());
    QVERIFY(helper.takeResponses().isEmpty());
    QVERIFY(messages(KdBaseLog::Info).isEmpty());
}

void tst_KdWebcamRecorderHelper::aFailureToListDevicesLeavesEmptyLists()
{
    ReadyHelper helper;
    m_engine->fail("getDevices");
    expectLog(QStringLiteral("Failed to get webcam devicesInfo"));
    expectLog(QStringLiteral("Failed to get audioinput devicesInfo"));
    helper.order(KdWebcamOrder::Init);
    QVERIFY(helper.getWebcamDevices().isEmpty());
    QVERIFY(helper.getAudioDevices().isEmpty());
    const QStringList expected{
        QStringLiteral("readValidWebCamDevices: "
                       "Failed to get webcam devicesInfo in the webcam record process"),
        QStringLiteral("readValidAudioDevices: "
                       "Failed to get audioinput devicesInfo in the webcam record process")};
    QCOMPARE(messages(KdBaseLog::Warning), expected);
}

void tst_KdWebcamRecorderHelper::startsAPreviewWithANewIdEachTime()
{
    ReadyHelper helper;
    QStringList ids{helper.previewId()};
    m_engine->clearCalls();
    for (int run = 0; run < 3; ++run) {
        helper.order(KdWebcamOrder::StartPreview);
        ids.append(helper.previewId());
    }
    QCOMPARE(ids.removeDuplicates(), 0);
    QCOMPARE(m_engine->calls(),
             QStringList({QStringLiteral("startPreview()"), QStringLiteral("startPreview()"),
                          QStringLiteral("startPreview()")}));
    QVERIFY(messages(KdBaseLog::Info).isEmpty());
}

void tst_KdWebcamRecorderHelper::aRefusedPreviewHasANewIdAllTheSame()
{
    ReadyHelper helper;
    m_engine->fail("startPreview");
    expectLog(QStringLiteral("Failed to startPreview"));
    const QString before = helper.previewId();
    helper.order(KdWebcamOrder::StartPreview);
    QVERIFY(helper.previewId() != before);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(QStringLiteral("startPreview: Failed to startPreview to a webcam")));
    m_engine->clearCalls();
    helper.order(KdWebcamOrder::StopPreview);
    QVERIFY(m_engine->calls().isEmpty());
}

void tst_KdWebcamRecorderHelper::aRefusedPreviewLeavesARunningOneToBeStopped()
{
    ReadyHelper helper;
    helper.order(KdWebcamOrder::StartPreview);
    m_engine->fail("startPreview");
    expectLog(QStringLiteral("Failed to startPreview"));
    helper.order(KdWebcamOrder::StartPreview);
    helper.order(KdWebcamOrder::StopPreview);
    QCOMPARE(m_engine->count("stopPreview"), 1);
}

void tst_KdWebcamRecorderHelper::stopsOnlyAPreviewThatItStarted()
{
    ReadyHelper helper;
    helper.order(KdWebcamOrder::StopPreview);
    QCOMPARE(m_engine->count("stopPreview"), 0);
    helper.order(KdWebcamOrder::StartPreview);
    QVERIFY(m_engine->isPreviewing());
    helper.order(KdWebcamOrder::StopPreview);
    helper.order(KdWebcamOrder::StopPreview);
    QCOMPARE(m_engine->count("stopPreview"), 1);
    QVERIFY(!m_engine->isPreviewing());
}

void tst_KdWebcamRecorderHelper::aFailedStopOfAPreviewIsNotRepeated()
{
    ReadyHelper helper;
    helper.order(KdWebcamOrder::StartPreview);
    m_engine->fail("stopPreview");
    expectLog(QStringLiteral("Failed to stopPreview"));
    helper.order(KdWebcamOrder::StopPreview);
    helper.order(KdWebcamOrder::StopPreview);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(QStringLiteral("stopPreview: Failed to stopPreview to a webcam")));
    QCOMPARE(m_engine->count("stopPreview"), 1);
}

void tst_KdWebcamRecorderHelper::startsATake()
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

void tst_KdWebcamRecorderHelper::aRefusedStartIsAWarning()
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

void tst_KdWebcamRecorderHelper::tellsTheHostAroundTheStart()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    Host host;
    m_engine->during("start", [&host] { host.heard.append(QStringLiteral("start")); });
    helper.order(KdWebcamOrder::StartTake);
    QCOMPARE(host.heard, QStringList({kBegin, QStringLiteral("start"), kEnd}));
}

void tst_KdWebcamRecorderHelper::tellsTheHostTheEndOnEveryPathOut_data()
{
    QTest::addColumn<bool>("hasRecorder");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("started") << true << false;
    QTest::newRow("refused") << true << true;
    QTest::newRow("without a recorder") << false << false;
}

void tst_KdWebcamRecorderHelper::tellsTheHostTheEndOnEveryPathOut()
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

void tst_KdWebcamRecorderHelper::tellsTheHostTheEndWhenTheEngineBreaksItsWord()
{
    ReadyHelper helper;
    Host host;
    m_engine->during("start", [] { throw std::runtime_error("planted"); });
    QVERIFY_EXCEPTION_THROWN(helper.slotWebcamRecorderOrderType(KdWebcamOrder::StartTake),
                             std::runtime_error);
    QCOMPARE(host.heard, QStringList({kBegin, kEnd}));
}

void tst_KdWebcamRecorderHelper::theHostMayDestroyItWhenTold_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("starts");
    QTest::newRow("at the beginning") << kBegin << 0;
    QTest::newRow("at the end") << kEnd << 1;
}

void tst_KdWebcamRecorderHelper::theHostMayDestroyItWhenTold()
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

void tst_KdWebcamRecorderHelper::tellsTheHostNothingOnAnotherThread()
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

void tst_KdWebcamRecorderHelper::tellsTheHostOfNothingButTheStart()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    Host host;
    for (const int order : {3, 4, 5, 6, 7, 8, 9}) {
        helper.order(order);
    }
    QVERIFY(host.heard.isEmpty());
}

void tst_KdWebcamRecorderHelper::pausesAndResumes()
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

void tst_KdWebcamRecorderHelper::refusedPausesAndResumesAreWarnings()
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

void tst_KdWebcamRecorderHelper::stopWithoutATakeIsNotHeardByTheEngine()
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

void tst_KdWebcamRecorderHelper::stopEndsTheTake()
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

void tst_KdWebcamRecorderHelper::aFailedStopIsAWarning()
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

void tst_KdWebcamRecorderHelper::orderEightStopsThePreviewAndThenTheTake()
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

void tst_KdWebcamRecorderHelper::handsOverParametersInOrder()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    _KdWebcamRecordParams params;
    params.recordAudio = true;
    params.audioIndex = 0;
    params.interval = 100;
    params.outputName = QStringLiteral("/takes/a %1 b.mp4");
    params.video.frameRate = 29.97;
    helper.setWebcamRecordParams(params);
    const QStringList expected{
        QStringLiteral("setDevice(8, 0)"), QStringLiteral("setRecordAudio(true)"),
        QStringLiteral("setInterval(100)"), QStringLiteral("setOutputFile(/takes/a %1 b.mp4)"),
        QStringLiteral("setVideoFormat(fourcc=C264 rate=29.97)")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(helper.getOutPutFile(), params.outputName);
}

void tst_KdWebcamRecorderHelper::handsOverNoAudioIndexWithoutAudio()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    _KdWebcamRecordParams params;
    params.audioIndex = 3;
    helper.setWebcamRecordParams(params);
    const QStringList expected{QStringLiteral("setRecordAudio(false)"),
                               QStringLiteral("setInterval(0)"), QStringLiteral("setOutputFile()"),
                               QStringLiteral("setVideoFormat(fourcc=C264 rate=0)")};
    QCOMPARE(m_engine->calls(), expected);
}

void tst_KdWebcamRecorderHelper::parametersLeaveItsOwnValuesAlone()
{
    m_engine->script().microphones.append(device(kdtMicrophone, 1, QStringLiteral("Second")));
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentAudioDevice(0);
    _KdWebcamRecordParams params;
    params.recordAudio = true;
    params.audioIndex = 1;
    params.video.frameRate = 5.0;
    helper.setWebcamRecordParams(params);
    QCOMPARE(helper.getCurrentAudioDeviceInfo().index, 0);
    QCOMPARE(helper.getCurrentFrameRate(), 30.0);
}

void tst_KdWebcamRecorderHelper::forwardsTheOptionsOfThePicture()
{
    ReadyHelper helper;
    m_engine->clearCalls();
    QVERIFY(helper.setOnlyWebcam(true));
    QVERIFY(helper.setRecordDisplayShape(fcrsSquare));
    helper.setRecordFlip(true);
    const QStringList expected{QStringLiteral("setOnlyWebcam(true)"),
                               QStringLiteral("setRecordDisplayShape(1)"),
                               QStringLiteral("setRecordFlip(true)")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(helper.getRecordDisplayShape(), fcrsSquare);
    QVERIFY(helper.getRecordFlip());
    m_engine->fail("setOnlyWebcam");
    m_engine->fail("setRecordDisplayShape");
    QVERIFY(!helper.setOnlyWebcam(true));
    QVERIFY(!helper.setRecordDisplayShape(fcrsCircle));
    QCOMPARE(helper.getRecordDisplayShape(), fcrsSquare);
}

void tst_KdWebcamRecorderHelper::asksTheEngineEachTime()
{
    const ReadyHelper helper;
    int answer = 5;
    m_engine->script().status = [&answer](int) { return answer; };
    m_engine->script().outputFile = [&answer](const QString&) { return QString::number(answer); };
    QCOMPARE(int(helper.curStatus()), 5);
    answer = 6;
    QCOMPARE(int(helper.curStatus()), 6);
    QCOMPARE(helper.getOutPutFile(), QStringLiteral("6"));
    helper.getRecordDisplayShape();
    helper.getRecordDisplayShape();
    helper.getRecordFlip();
    helper.getCurAIEffectType();
    QCOMPARE(m_engine->count("getRecordDisplayShape"), 2);
    QCOMPARE(m_engine->count("getRecordFlip"), 1);
    QCOMPARE(m_engine->count("getBackgroundMode"), 1);
}

void tst_KdWebcamRecorderHelper::answersWithoutARecorder()
{
    KdWebcamRecorderHelper helper(nullptr);
    for (int order = 1; order <= 9; ++order) {
        helper.slotWebcamRecorderOrderType(order);
    }
    helper.setWebcamRecordParams(_KdWebcamRecordParams());
    QVERIFY(!helper.setOnlyWebcam(true));
    QVERIFY(!helper.setRecordDisplayShape(fcrsCircle));
    helper.setRecordFlip(true);
    helper.setAIEffectType(fcbmNone);
    QCOMPARE(helper.getRecordDisplayShape(), fcrsSquare);
    QVERIFY(!helper.getRecordFlip());
    QCOMPARE(helper.getCurAIEffectType(), fcbmNone);
    QCOMPARE(helper.curStatus(), fcsNoStart);
    QCOMPARE(helper.getOutPutFile(), QString());
    QCOMPARE(m_engine->created(), 0);
    QVERIFY(messages(KdBaseLog::Info)
                .contains(QStringLiteral("stopWebcamRecorder: Stop the webcam record process")));
}

void tst_KdWebcamRecorderHelper::anEngineWithoutARecorderIsAnEngineWithoutDevices()
{
    m_engine->fail("createWebcamRecorder");
    const ReadyHelper helper;
    QVERIFY(helper.getWebcamDevices().isEmpty());
    QVERIFY(helper.getAudioDevices().isEmpty());
    QCOMPARE(helper.curStatus(), fcsNoStart);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderHelper>(argc, argv);
}

#include "tst_KdWebcamRecorderHelper.moc"

#include "WebcamHelperFixture.h"

#include <QMetaMethod>
#include <QPointer>

#include <limits>

using namespace KdVBLMODEL;

namespace {

bool isEmptyRecord(const _KdCaptureDevInf& device)
{
    return device.devType == 0 && device.index == -1 && device.name.isEmpty() &&
           device.id.isEmpty();
}

} // namespace

/** The adapter's life with the engine's recorder, the preview, and what it hands over. */
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

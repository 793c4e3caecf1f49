#include "AudioHelperFixture.h"

#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>

using namespace KdVBLMODEL;

/** The adapter's life with the engine's recorder, and its takes. */
class tst_KdAudioRecorderHelper : public AudioHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void declaresItsSignalsAndSlotsInOrder();
    void attachesToTheEngineInTheOrderOfTheContract();
    void releasesItsRecorderWithoutTouchingTheSwitches();
    void diesWithItsParent();
    void detachesInTheOrderOfTheContract();
    void detachingTwiceIsHarmless();
    void noSignalFollowsDetaching();

    void startsAndLogsTheResult();
    void aRefusedStartChangesNothing();
    void stopWithoutATakeIsASuccessThatTheEngineDoesNotHear();
    void stopEndsTheTake();
    void aFailedStopIsAnError();
    void pausesAndResumesWithoutAWord();
    void asksForStatusAndFileEachTime();
    void recordsTakeAfterTake();

    void anEngineWithoutARecorderIsAnEngineWithoutDevices();
};

void tst_KdAudioRecorderHelper::declaresItsSignalsAndSlotsInOrder()
{
    const QMetaObject& meta = KdAudioRecorderHelper::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    const QStringList expected{
        QStringLiteral("sigRecordedTime(qlonglong)"),
        QStringLiteral("sigRecorderVolume(int)"),
        QStringLiteral("sigDeviceStatus(KdVBLMODEL::KdCaptureDeviceStatus,int)"),
        QStringLiteral("slotTimeCallback(qlonglong)"),
        QStringLiteral("slotVolumeCallback(int)"),
        QStringLiteral("slotCaptureDeviceCallback(int,int)"),
    };
    QCOMPARE(methods, expected);
}

void tst_KdAudioRecorderHelper::attachesToTheEngineInTheOrderOfTheContract()
{
    const KdAudioRecorderHelper helper(nullptr);
    QCOMPARE(m_engine->created(), 1);
    QCOMPARE(m_engine->owner(), &helper);
    const QStringList expected{
        QStringLiteral("addEventObserver(observer)"), QStringLiteral("setCallbackSwitch3(true)"),
        QStringLiteral("setCallbackSwitch2(true)"), QStringLiteral("setCallbackSwitch1(true)")};
    QCOMPARE(m_engine->calls(), expected);
}

void tst_KdAudioRecorderHelper::releasesItsRecorderWithoutTouchingTheSwitches()
{
    auto helper = std::make_unique<KdAudioRecorderHelper>(nullptr);
    m_engine->clearCalls();
    helper.reset();
    const QStringList expected{QStringLiteral("removeEventObserver(observer)"),
                               QStringLiteral("release()")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(m_engine->released(), 1);
}

void tst_KdAudioRecorderHelper::diesWithItsParent()
{
    auto parent = std::make_unique<QObject>();
    const QPointer<KdAudioRecorderHelper> helper = new KdAudioRecorderHelper(parent.get());
    QCOMPARE(helper->parent(), parent.get());
    parent.reset();
    QVERIFY(!helper);
    QCOMPARE(m_engine->released(), 1);
}

void tst_KdAudioRecorderHelper::detachesInTheOrderOfTheContract()
{
    KdAudioRecorderHelper helper(nullptr);
    m_engine->clearCalls();
    helper.removeEventObservers();
    const QStringList expected{QStringLiteral("setCallbackSwitch3(false)"),
                               QStringLiteral("setCallbackSwitch2(false)"),
                               QStringLiteral("setCallbackSwitch1(false)"),
                               QStringLiteral("removeEventObserver(observer)")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(m_engine->released(), 0);
    selectFirst(helper);
    QVERIFY(helper.start());
    QVERIFY(helper.stop());
}

void tst_KdAudioRecorderHelper::detachingTwiceIsHarmless()
{
    KdAudioRecorderHelper helper(nullptr);
    helper.removeEventObservers();
    m_engine->clearCalls();
    helper.removeEventObservers();
    QCOMPARE(m_engine->calls().size(), 4);
    QCOMPARE(m_engine->observerCount(), 0);
    QCOMPARE(m_engine->alive(), 1);
}

void tst_KdAudioRecorderHelper::noSignalFollowsDetaching()
{
    KdAudioRecorderHelper helper(nullptr);
    const QSignalSpy times(&helper, &KdAudioRecorderHelper::sigRecordedTime);
    m_engine->deliverTime(1);
    helper.removeEventObservers();
    m_engine->deliverTime(2);
    m_engine->deliverDevice(4, 0);
    QCoreApplication::processEvents();
    QCOMPARE(times.size(), 1);
    QCOMPARE(times.first().first().toLongLong(), 1);
    QVERIFY(messages(KdBaseLog::Info).isEmpty());
}

void tst_KdAudioRecorderHelper::startsAndLogsTheResult()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(helper.start());
    QCOMPARE(helper.curStatus(), fcsRecording);
    QCOMPARE(messages(KdBaseLog::Info),
             QStringList(QStringLiteral("KdAudioRecorderHelper::start: start 1")));
}

void tst_KdAudioRecorderHelper::aRefusedStartChangesNothing()
{
    m_engine->fail("start");
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    m_engine->clearCalls();
    QVERIFY(!helper.start());
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("start()")));
    QCOMPARE(messages(KdBaseLog::Info),
             QStringList(QStringLiteral("KdAudioRecorderHelper::start: start 0")));
    QCOMPARE(currentDevice(helper).index, 0);
    QVERIFY(hasDefaultFormat(helper));
}

void tst_KdAudioRecorderHelper::stopWithoutATakeIsASuccessThatTheEngineDoesNotHear()
{
    KdAudioRecorderHelper helper(nullptr);
    m_engine->fail("stop");
    m_engine->clearCalls();
    QVERIFY(helper.stop());
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("curStatus()")));
    QCOMPARE(messages(KdBaseLog::Info),
             QStringList(QStringLiteral("KdAudioRecorderHelper::stop: "
                                        "audio fcsNoStart status, no need stop")));
}

void tst_KdAudioRecorderHelper::stopEndsTheTake()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(helper.start());
    helper.pause();
    QVERIFY(helper.stop());
    QCOMPARE(m_engine->count("stop"), 1);
    QCOMPARE(helper.curStatus(), fcsNoStart);
    QCOMPARE(messages(KdBaseLog::Info).last(),
             QStringLiteral("KdAudioRecorderHelper::stop: Stop the audio record process"));
}

void tst_KdAudioRecorderHelper::aFailedStopIsAnError()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(helper.start());
    m_engine->fail("stop");
    expectLog(QStringLiteral("Failed to stop the audio record process"));
    QVERIFY(!helper.stop());
    QCOMPARE(messages(KdBaseLog::Error),
             QStringList(QStringLiteral("KdAudioRecorderHelper::stop: "
                                        "Failed to stop the audio record process")));
}

void tst_KdAudioRecorderHelper::pausesAndResumesWithoutAWord()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(helper.start());
    m_engine->clearCalls();
    const int logged = logRecords().size();
    helper.pause();
    QCOMPARE(helper.curStatus(), fcsPaused);
    helper.resume();
    QCOMPARE(helper.curStatus(), fcsRecording);
    const QStringList expected{QStringLiteral("pause()"), QStringLiteral("resume()")};
    QCOMPARE(m_engine->commands(), expected);
    QCOMPARE(logRecords().size(), logged);
    QVERIFY(helper.stop());
}

void tst_KdAudioRecorderHelper::asksForStatusAndFileEachTime()
{
    KdAudioRecorderHelper helper(nullptr);
    int answer = 5;
    m_engine->script().status = [&answer](int) { return answer; };
    m_engine->script().outputFile = [&answer](const QString&) { return QString::number(answer); };
    QCOMPARE(int(helper.curStatus()), 5);
    QCOMPARE(helper.getOutPutFile(), QStringLiteral("5"));
    answer = 6;
    QCOMPARE(int(helper.curStatus()), 6);
    QCOMPARE(helper.getOutPutFile(), QStringLiteral("6"));
}

void tst_KdAudioRecorderHelper::recordsTakeAfterTake()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    for (int take = 0; take < 3; ++take) {
        QVERIFY(helper.start());
        QVERIFY(helper.stop());
    }
    QVERIFY(helper.start());
    QVERIFY(helper.start());
    QCOMPARE(helper.curStatus(), fcsRecording);
}

void tst_KdAudioRecorderHelper::anEngineWithoutARecorderIsAnEngineWithoutDevices()
{
    m_engine->fail("createAudioRecorder");
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices{microphone(0, QStringLiteral("stale"), QString())};
    helper.getValidAudioDevices(devices);
    QVERIFY(devices.isEmpty());
    expectLog(QStringLiteral("No audio input has the index 0, there are 0"));
    helper.setCurrentDevice(0);
    helper.setBitRate(64000);
    helper.setAudioRecordParams(_KdAudioRecordParams());
    QVERIFY(!helper.start());
    helper.pause();
    helper.resume();
    QVERIFY(helper.stop());
    QCOMPARE(helper.curStatus(), fcsNoStart);
    QCOMPARE(helper.getOutPutFile(), QString());
    helper.removeEventObservers();
    QCOMPARE(m_engine->created(), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorderHelper>(argc, argv);
}

#include "tst_KdAudioRecorderHelper.moc"

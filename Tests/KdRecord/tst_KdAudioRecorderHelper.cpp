#include <KdRecord/KdAudioRecordHelper.h>

#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>

#include <QEventLoop>
#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QThread>

#include <functional>
#include <future>
#include <limits>
#include <memory>
#include <thread>

using namespace KdVBLMODEL;

namespace {

using Setter = std::function<void(KdAudioRecorderHelper&)>;

_KdCaptureDevInf microphone(int index, const QString& name, const QString& id)
{
    return {kdtMicrophone, index, name, id};
}

bool isEmptyRecord(const _KdCaptureDevInf& device)
{
    return device.devType == 0 && device.index == -1 && device.name.isEmpty() &&
           device.id.isEmpty();
}

_KdCaptureDevInf currentDevice(const KdAudioRecorderHelper& helper)
{
    _KdCaptureDevInf device;
    helper.getCurrentDeviceInfo(device);
    return device;
}

bool hasDefaultFormat(const KdAudioRecorderHelper& helper)
{
    return helper.getFourCC() == 0x20434141 && helper.getBitRate() == 128000 &&
           helper.getBitsPerSample() == 16 && helper.getChannels() == 2 &&
           helper.getSampleRate() == 44100 && qFuzzyCompare(helper.getAudioVolume(), -1.0);
}

void selectFirst(KdAudioRecorderHelper& helper)
{
    QList<_KdCaptureDevInf> devices;
    helper.getValidAudioDevices(devices);
    helper.setCurrentDevice(0);
}

} // namespace

Q_DECLARE_METATYPE(Setter)

class tst_KdAudioRecorderHelper : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void declaresItsSignalsAndSlotsInOrder();
    void attachesToTheEngineInTheOrderOfTheContract();
    void releasesItsRecorderWithoutTouchingTheSwitches();
    void diesWithItsParent();
    void detachesInTheOrderOfTheContract();
    void detachingTwiceIsHarmless();
    void noSignalFollowsDetaching();

    void answersTheDefaultsBeforeTheFirstDevice();
    void readsTheDevicesAnewEachTime();
    void passesDeviceNamesUnchanged_data();
    void passesDeviceNamesUnchanged();
    void selectingADeviceTellsTheEngineAndResetsTheFormat();
    void anIndexWithoutADeviceClearsTheCurrentOne_data();
    void anIndexWithoutADeviceClearsTheCurrentOne();

    void singleFieldSettersLeaveTheGettersAlone_data();
    void singleFieldSettersLeaveTheGettersAlone();
    void singleFieldSettersDoNotAddUp();
    void selectingADeviceUndoesWhatASetterSet();

    void handsOverWholeParametersInOrder();
    void parametersLeaveDeviceAndFormatAlone();
    void logsPathsAsTheyAre_data();
    void logsPathsAsTheyAre();

    void startsAndLogsTheResult();
    void aRefusedStartChangesNothing();
    void stopWithoutATakeIsASuccessThatTheEngineDoesNotHear();
    void stopEndsTheTake();
    void aFailedStopIsAnError();
    void pausesAndResumesWithoutAWord();
    void asksForStatusAndFileEachTime();
    void recordsTakeAfterTake();

    void deliversCallbacksOnItsOwnThread();
    void deliversOnTheThreadThatOwnsIt();
    void deliversEveryValueUnchanged();
    void queuesDeviceStatusToOtherThreads();
    void deliversADeviceCallbackOfStopAfterStop();
    void dropsWhatWasQueuedWhenItDies();
    void canBeDestroyedFromItsOwnSignals();
    void canBeDestroyedWithCallbacksInFlight();
    void canDetachWithCallbacksInFlight();

    void anEngineWithoutARecorderIsAnEngineWithoutDevices();

private:
    QStringList messages(int level) const;

    std::unique_ptr<ScriptedEngine> m_engine;
};

void tst_KdAudioRecorderHelper::init()
{
    KdTestCase::init();
    m_engine = std::make_unique<ScriptedEngine>();
}

void tst_KdAudioRecorderHelper::cleanup()
{
    const int alive = m_engine->alive();
    m_engine.reset();
    KdTestCase::cleanup();
    QCOMPARE(alive, 0);
}

/** Of this class, each as "function: message"; fails on a record that names another source file. */
QStringList tst_KdAudioRecorderHelper::messages(int level) const
{
    QStringList result;
    for (const KdLogRecord& record : logRecords()) {
        if (record.level == level && record.file == "Src/KdRecord/KdAudioRecordHelper" &&
            record.line > 0) {
            result.append(QString::fromUtf8(record.function) + QStringLiteral(": ") +
                          record.message);
        }
    }
    return result;
}

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

void tst_KdAudioRecorderHelper::answersTheDefaultsBeforeTheFirstDevice()
{
    const KdAudioRecorderHelper helper(nullptr);
    QVERIFY(hasDefaultFormat(helper));
    QVERIFY(isEmptyRecord(currentDevice(helper)));
    QCOMPARE(helper.curStatus(), fcsNoStart);
    QCOMPARE(helper.getOutPutFile(), QString());
}

void tst_KdAudioRecorderHelper::readsTheDevicesAnewEachTime()
{
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices{
        {kdtWebcam, 7, QStringLiteral("stale"), QStringLiteral("stale")}};
    helper.getValidAudioDevices(devices);
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices.first().id, m_engine->script().microphones.first().id);

    m_engine->script().microphones.append(
        microphone(1, QStringLiteral("Second"), QStringLiteral("second-id")));
    helper.getValidAudioDevices(devices);
    QCOMPARE(devices.size(), 2);
    QCOMPARE(devices.at(1).name, QStringLiteral("Second"));

    m_engine->script().microphones.clear();
    helper.getValidAudioDevices(devices);
    QVERIFY(devices.isEmpty());
    QCOMPARE(m_engine->count("getDevices"), 3);
}

void tst_KdAudioRecorderHelper::passesDeviceNamesUnchanged_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("long") << QString(4096, QLatin1Char('m'));
    QTest::newRow("right to left") << QString::fromUtf8("\u05de\u05d9\u05e7\u202e\u05e8\u05d5");
    QTest::newRow("placeholders") << QStringLiteral("Mic %1 %2 %s %n");
    QTest::newRow("quotes") << QStringLiteral("\"Mic\" 'two' \\");
    QTest::newRow("markup") << QStringLiteral("<b>Mic</b> &amp; <img src=x>");
    QTest::newRow("line breaks") << QStringLiteral("Mic\r\nsecond\tline");
}

void tst_KdAudioRecorderHelper::passesDeviceNamesUnchanged()
{
    QFETCH(QString, name);
    m_engine->script().microphones = {microphone(0, name, name)};
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices;
    helper.getValidAudioDevices(devices);
    helper.setCurrentDevice(0);
    QCOMPARE(devices.first().name, name);
    QCOMPARE(currentDevice(helper).name, name);
    QCOMPARE(currentDevice(helper).id, name);
}

void tst_KdAudioRecorderHelper::selectingADeviceTellsTheEngineAndResetsTheFormat()
{
    m_engine->script().microphones.append(
        microphone(1, QStringLiteral("Second"), QStringLiteral("second-id")));
    KdAudioRecorderHelper helper(nullptr);
    QList<_KdCaptureDevInf> devices;
    helper.getValidAudioDevices(devices);
    m_engine->clearCalls();
    helper.setCurrentDevice(1);
    const QStringList expected{
        QStringLiteral("setDevice(1)"),
        QStringLiteral("setAudioFormat(mode=1 fourcc=AAC  bitrate=128000 channels=2 bits=16 "
                       "rate=44100 volume=-1)")};
    QCOMPARE(m_engine->calls(), expected);
    QVERIFY(hasDefaultFormat(helper));
    const _KdCaptureDevInf device = currentDevice(helper);
    QCOMPARE(device.devType, qint32(kdtMicrophone));
    QCOMPARE(device.index, 1);
    QCOMPARE(device.name, QStringLiteral("Second"));
    QCOMPARE(device.id, QStringLiteral("second-id"));
}

void tst_KdAudioRecorderHelper::anIndexWithoutADeviceClearsTheCurrentOne_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("none") << -1;
    QTest::newRow("one past the end") << 1;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void tst_KdAudioRecorderHelper::anIndexWithoutADeviceClearsTheCurrentOne()
{
    QFETCH(int, index);
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(!isEmptyRecord(currentDevice(helper)));
    expectLog(QStringLiteral("^KdAudioRecorderHelper::setCurrentDevice: "
                             "No audio input has the index %1, there are 1$")
                  .arg(index));
    helper.setCurrentDevice(index);
    QVERIFY(isEmptyRecord(currentDevice(helper)));
    QCOMPARE(m_engine->callsOf("setDevice").last(), QStringLiteral("setDevice(%1)").arg(index));
    QVERIFY(hasDefaultFormat(helper));
    QVERIFY(!helper.start());
}

void tst_KdAudioRecorderHelper::singleFieldSettersLeaveTheGettersAlone_data()
{
    QTest::addColumn<Setter>("set");
    QTest::addColumn<QString>("sent");
    QTest::newRow("volume") << Setter([](auto& helper) { helper.setAudioVolume(0.5); })
                            << QStringLiteral(
                                   "mode=1 fourcc=AAC  bitrate=128000 channels=2 bits=16 "
                                   "rate=44100 volume=0.5");
    QTest::newRow("bit rate") << Setter([](auto& helper) { helper.setBitRate(64000); })
                              << QStringLiteral(
                                     "mode=1 fourcc=AAC  bitrate=64000 channels=2 bits=16 "
                                     "rate=44100 volume=-1");
    QTest::newRow("bits per sample")
        << Setter([](auto& helper) { helper.setBitsPerSample(24); })
        << QStringLiteral("mode=1 fourcc=AAC  bitrate=128000 channels=2 "
                          "bits=24 rate=44100 volume=-1");
    QTest::newRow("channels") << Setter([](auto& helper) { helper.setChannels(1); })
                              << QStringLiteral(
                                     "mode=1 fourcc=AAC  bitrate=128000 channels=1 bits=16 "
                                     "rate=44100 volume=-1");
    QTest::newRow("codec") << Setter([](auto& helper) { helper.setFourCC(0x2033504d); })
                           << QStringLiteral("mode=1 fourcc=MP3  bitrate=128000 channels=2 bits=16 "
                                             "rate=44100 volume=-1");
    QTest::newRow("sample rate") << Setter([](auto& helper) { helper.SetSampleRate(96000); })
                                 << QStringLiteral("mode=1 fourcc=AAC  bitrate=128000 channels=2 "
                                                   "bits=16 rate=96000 volume=-1");
}

void tst_KdAudioRecorderHelper::singleFieldSettersLeaveTheGettersAlone()
{
    QFETCH(Setter, set);
    QFETCH(QString, sent);
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    m_engine->clearCalls();
    set(helper);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("setAudioFormat(%1)").arg(sent)));
    QVERIFY(hasDefaultFormat(helper));
}

void tst_KdAudioRecorderHelper::singleFieldSettersDoNotAddUp()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    helper.setBitRate(64000);
    helper.setChannels(1);
    const auto sent = m_engine->lastCall("setAudioFormat").argument<KdAudioFormat>(0);
    QCOMPARE(sent.channels, 1);
    QCOMPARE(sent.bitrate, 128000);
}

void tst_KdAudioRecorderHelper::selectingADeviceUndoesWhatASetterSet()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    helper.setBitRate(64000);
    helper.setAudioVolume(0.25);
    helper.setCurrentDevice(0);
    const auto sent = m_engine->lastCall("setAudioFormat").argument<KdAudioFormat>(0);
    QCOMPARE(sent.bitrate, 128000);
    QCOMPARE(sent.volume, -1.0);
}

void tst_KdAudioRecorderHelper::handsOverWholeParametersInOrder()
{
    KdAudioRecorderHelper helper(nullptr);
    m_engine->clearCalls();
    _KdAudioRecordParams params;
    params.index = 2;
    params.interval = 50;
    params.outputName = QStringLiteral("/takes/a b.m4a");
    params.format = {fbmConstant, kFourCcAac, 96000, 1, 24, 22050, 0.75};
    helper.setAudioRecordParams(params);
    const QStringList expected{
        QStringLiteral("setOutputFile(/takes/a b.m4a)"), QStringLiteral("setDevice(2)"),
        QStringLiteral("setInterval(50)"),
        QStringLiteral("setAudioFormat(mode=2 fourcc=AAC  bitrate=96000 channels=1 bits=24 "
                       "rate=22050 volume=0.75)")};
    QCOMPARE(m_engine->calls(), expected);
    const QStringList logged{QStringLiteral(
        "KdAudioRecorderHelper::setAudioRecordParams: outputName: /takes/a b.m4a, index: 2, "
        "interval: 50, volum: 0.750000, bitrate: 96000, bitPerSample: 24, channels: 1, "
        "fourcc: 541278529, samplerate: 22050")};
    QCOMPARE(messages(KdBaseLog::Info), logged);
}

void tst_KdAudioRecorderHelper::parametersLeaveDeviceAndFormatAlone()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    const _KdCaptureDevInf before = currentDevice(helper);
    _KdAudioRecordParams params;
    params.index = 5;
    params.format = {fbmConstant, 1, 2, 3, 4, 5, 0.5};
    helper.setAudioRecordParams(params);
    QVERIFY(hasDefaultFormat(helper));
    QCOMPARE(currentDevice(helper).index, before.index);
    QCOMPARE(currentDevice(helper).id, before.id);
}

void tst_KdAudioRecorderHelper::logsPathsAsTheyAre_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("not Latin") << QString::fromUtf8(
        "/\u5f55\u97f3/\u00c4\u00f6/\u05e7\u05d5\u05dc.m4a");
    QTest::newRow("placeholders") << QStringLiteral("/100%/%1 %s %n %d.m4a");
    QTest::newRow("quotes and spaces") << QStringLiteral("/a \"b\" 'c'/d.m4a");
    QTest::newRow("empty") << QString();
    QTest::newRow("long") << QStringLiteral("/") + QString(255, QLatin1Char('n'));
}

void tst_KdAudioRecorderHelper::logsPathsAsTheyAre()
{
    QFETCH(QString, path);
    KdAudioRecorderHelper helper(nullptr);
    _KdAudioRecordParams params;
    params.outputName = path;
    helper.setAudioRecordParams(params);
    QCOMPARE(m_engine->lastCall("setOutputFile").argument<QString>(0), path);
    QCOMPARE(helper.getOutPutFile(), path);
    const QString logged = messages(KdBaseLog::Info).value(0);
    QVERIFY2(
        logged.contains(QStringLiteral("outputName: ") + path + QStringLiteral(", index: -1,")),
        qPrintable(logged));
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

void tst_KdAudioRecorderHelper::deliversCallbacksOnItsOwnThread()
{
    KdAudioRecorderHelper helper(nullptr);
    QList<QThread*> threads;
    const auto note = [&threads] { threads.append(QThread::currentThread()); };
    connect(&helper, &KdAudioRecorderHelper::sigRecordedTime, note);
    connect(&helper, &KdAudioRecorderHelper::sigRecorderVolume, note);
    connect(&helper, &KdAudioRecorderHelper::sigDeviceStatus, note);
    m_engine->deliverTime(1);
    m_engine->deliverVolume(1);
    m_engine->deliverDevice(3, 0);
    QVERIFY(threads.isEmpty());
    QTRY_COMPARE(threads.size(), 3);
    QCOMPARE(threads, QList<QThread*>({thread(), thread(), thread()}));
}

void tst_KdAudioRecorderHelper::deliversOnTheThreadThatOwnsIt()
{
    // Plain threads and promises: ThreadSanitizer sees what they order, unlike Qt's own.
    std::promise<void> isReady;
    std::promise<std::thread::id> deliveredOn;
    std::thread owner([&] {
        QEventLoop loop;
        KdAudioRecorderHelper helper(nullptr);
        connect(&helper, &KdAudioRecorderHelper::sigRecordedTime, &loop, [&] {
            deliveredOn.set_value(std::this_thread::get_id());
            loop.quit();
        });
        isReady.set_value();
        loop.exec();
    });
    isReady.get_future().wait();
    m_engine->deliverTime(1);
    const std::thread::id expected = owner.get_id();
    owner.join();
    QVERIFY(deliveredOn.get_future().get() == expected);
}

void tst_KdAudioRecorderHelper::deliversEveryValueUnchanged()
{
    KdAudioRecorderHelper helper(nullptr);
    const QSignalSpy times(&helper, &KdAudioRecorderHelper::sigRecordedTime);
    const QSignalSpy volumes(&helper, &KdAudioRecorderHelper::sigRecorderVolume);
    const QSignalSpy devices(&helper, &KdAudioRecorderHelper::sigDeviceStatus);
    const qint64 twelveHours = Q_INT64_C(12) * 3600 * 1000;
    for (const qint64 msec : {Q_INT64_C(0), twelveHours, std::numeric_limits<qint64>::max()}) {
        m_engine->deliverTime(msec);
    }
    for (const int volume : {0, 100, -1, 1000}) {
        m_engine->deliverVolume(volume);
    }
    for (const int status : {1, 2, 3, 4, 5, 0, 99}) {
        m_engine->deliverDevice(status, status - 2);
    }
    QTRY_COMPARE(devices.size(), 7);
    QCOMPARE(times.size(), 3);
    QCOMPARE(times.at(1).first().toLongLong(), twelveHours);
    QCOMPARE(times.at(2).first().toLongLong(), std::numeric_limits<qint64>::max());
    QCOMPARE(volumes.size(), 4);
    QCOMPARE(volumes.at(2).first().toInt(), -1);
    QCOMPARE(devices.at(6).first().value<_KdCaptureDeviceStatus>(),
             static_cast<_KdCaptureDeviceStatus>(99));
    QCOMPARE(devices.at(0).at(1).toInt(), -1);
    QCOMPARE(messages(KdBaseLog::Info).at(3),
             QStringLiteral("KdAudioRecorderHelper::onCaptureDeviceCallback: "
                            "devStatus: 4, deviceIdx: 2"));
}

void tst_KdAudioRecorderHelper::queuesDeviceStatusToOtherThreads()
{
    KdAudioRecorderHelper helper(nullptr);
    QObject receiver;
    int received = 0;
    connect(
        &helper, &KdAudioRecorderHelper::sigDeviceStatus, &receiver,
        [&received](KdCaptureDeviceStatus status, int) { received = status; },
        Qt::QueuedConnection);
    m_engine->deliverDevice(fcdAudioInputRemoved, 0);
    QTRY_COMPARE(received, int(fcdAudioInputRemoved));
}

void tst_KdAudioRecorderHelper::deliversADeviceCallbackOfStopAfterStop()
{
    KdAudioRecorderHelper helper(nullptr);
    selectFirst(helper);
    QVERIFY(helper.start());
    bool isInsideStop = false;
    QList<bool> deliveredInsideStop;
    connect(&helper, &KdAudioRecorderHelper::sigDeviceStatus,
            [&] { deliveredInsideStop.append(isInsideStop); });
    m_engine->during("stop", [this] { m_engine->deliverDevice(fcdAudioInputRemoved, 0); });
    isInsideStop = true;
    QVERIFY(helper.stop());
    isInsideStop = false;
    QVERIFY(deliveredInsideStop.isEmpty());
    QTRY_COMPARE(deliveredInsideStop, QList<bool>{false});
}

void tst_KdAudioRecorderHelper::dropsWhatWasQueuedWhenItDies()
{
    auto helper = std::make_unique<KdAudioRecorderHelper>(nullptr);
    int delivered = 0;
    connect(helper.get(), &KdAudioRecorderHelper::sigRecordedTime, [&delivered] { ++delivered; });
    m_engine->deliverTime(1);
    helper.reset();
    QCoreApplication::processEvents();
    QCOMPARE(delivered, 0);
}

void tst_KdAudioRecorderHelper::canBeDestroyedFromItsOwnSignals()
{
    QPointer<KdAudioRecorderHelper> helper = new KdAudioRecorderHelper(nullptr);
    connect(helper, &KdAudioRecorderHelper::sigDeviceStatus, [helper] { delete helper; });
    m_engine->deliverDevice(4, 0);
    m_engine->deliverDevice(4, 1);
    QTRY_VERIFY(!helper);
    QCOMPARE(m_engine->released(), 1);
}

void tst_KdAudioRecorderHelper::canBeDestroyedWithCallbacksInFlight()
{
    m_engine->startFlood(6);
    for (int round = 0; round < 40; ++round) {
        auto helper = std::make_unique<KdAudioRecorderHelper>(nullptr);
        selectFirst(*helper);
        QVERIFY(helper->start());
        const quint64 before = m_engine->floodCount();
        QTRY_VERIFY(m_engine->floodCount() > before);
        helper.reset();
    }
    m_engine->stopFlood();
    QCOMPARE(m_engine->released(), 40);
    QCoreApplication::processEvents();
}

void tst_KdAudioRecorderHelper::canDetachWithCallbacksInFlight()
{
    KdAudioRecorderHelper helper(nullptr);
    m_engine->startFlood(4);
    QTRY_VERIFY(m_engine->floodCount() > 0);
    helper.removeEventObservers();
    QCoreApplication::processEvents();
    const QSignalSpy times(&helper, &KdAudioRecorderHelper::sigRecordedTime);
    QCOMPARE(m_engine->observerCount(), 0);
    m_engine->stopFlood();
    QCoreApplication::processEvents();
    QCOMPARE(times.size(), 0);
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

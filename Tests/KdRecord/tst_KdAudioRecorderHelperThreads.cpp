#include "AudioHelperFixture.h"

#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QThread>

#include <future>
#include <limits>
#include <thread>

using namespace KdVBLMODEL;

/** What the engine's threads tell arrives on the adapter's own, and never after its end. */
class tst_KdAudioRecorderHelperThreads : public AudioHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void deliversCallbacksOnItsOwnThread();
    void deliversOnTheThreadThatOwnsIt();
    void deliversEveryValueUnchanged();
    void queuesDeviceStatusToOtherThreads();
    void deliversADeviceCallbackOfStopAfterStop();
    void dropsWhatWasQueuedWhenItDies();
    void canBeDestroyedFromItsOwnSignals();
    void canBeDestroyedWithCallbacksInFlight();
    void canDetachWithCallbacksInFlight();
};

void tst_KdAudioRecorderHelperThreads::deliversCallbacksOnItsOwnThread()
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

void tst_KdAudioRecorderHelperThreads::deliversOnTheThreadThatOwnsIt()
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

void tst_KdAudioRecorderHelperThreads::deliversEveryValueUnchanged()
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

void tst_KdAudioRecorderHelperThreads::queuesDeviceStatusToOtherThreads()
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

void tst_KdAudioRecorderHelperThreads::deliversADeviceCallbackOfStopAfterStop()
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

void tst_KdAudioRecorderHelperThreads::dropsWhatWasQueuedWhenItDies()
{
    auto helper = std::make_unique<KdAudioRecorderHelper>(nullptr);
    int delivered = 0;
    connect(helper.get(), &KdAudioRecorderHelper::sigRecordedTime, [&delivered] { ++delivered; });
    m_engine->deliverTime(1);
    helper.reset();
    QCoreApplication::processEvents();
    QCOMPARE(delivered, 0);
}

void tst_KdAudioRecorderHelperThreads::canBeDestroyedFromItsOwnSignals()
{
    QPointer<KdAudioRecorderHelper> helper = new KdAudioRecorderHelper(nullptr);
    connect(helper, &KdAudioRecorderHelper::sigDeviceStatus, [helper] { delete helper; });
    m_engine->deliverDevice(4, 0);
    m_engine->deliverDevice(4, 1);
    QTRY_VERIFY(!helper);
    QCOMPARE(m_engine->released(), 1);
}

void tst_KdAudioRecorderHelperThreads::canBeDestroyedWithCallbacksInFlight()
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

void tst_KdAudioRecorderHelperThreads::canDetachWithCallbacksInFlight()
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecorderHelperThreads>(argc, argv);
}

#include "tst_KdAudioRecorderHelperThreads.moc"

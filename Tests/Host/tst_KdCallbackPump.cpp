#include <KdVBLModel/KdCallbackPump.h>

#include <Support/KdTestCase.h>
#include <Support/RecorderEvents.h>

#include <future>

using namespace KdVBLMODEL;

namespace {

/** An observer that is inside a level callback until it is let go. */
class SlowObserver : public RecorderEvents
{
public:
    void onVolumeCallback(int volume) override
    {
        RecorderEvents::onVolumeCallback(volume);
        if (!std::exchange(m_wasHeld, true)) {
            m_entered.set_value();
            m_mayEnd.get_future().wait();
        }
    }

    void waitUntilHeld() { m_entered.get_future().wait(); }
    void letGo() { m_mayEnd.set_value(); }

private:
    bool m_wasHeld = false;
    std::promise<void> m_entered;
    std::promise<void> m_mayEnd;
};

void switchAllOn(KdCallbackPump& pump)
{
    pump.setSwitch(KdCallbackPump::LevelSwitch, true);
    pump.setSwitch(KdCallbackPump::TimeSwitch, true);
    pump.setSwitch(KdCallbackPump::DeviceSwitch, true);
}

} // namespace

class tst_KdCallbackPump : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void callsComeOnAThreadOfTheEngine();
    void eachSwitchGovernsItsKindOfCall_data();
    void eachSwitchGovernsItsKindOfCall();
    void aSlowObserverGetsTheLatestTimeAndLevelOnly();
    void noDeviceEventIsLostAndNoneIsDoubled();
    void aTimeThatWaitsCanBeForgotten();
    void postingNeverWaitsForAnObserver();
    void afterRemovalNoCallComes();
    void destructionEndsAllCalls();
};

void tst_KdCallbackPump::callsComeOnAThreadOfTheEngine()
{
    RecorderEvents events;
    KdCallbackPump pump;
    switchAllOn(pump);
    pump.addObserver(&events);
    pump.postTime(50);
    pump.postLevel(30);
    pump.postDevice(fcdAudioInputRemoved, 2);
    QTRY_COMPARE(events.levels(), QVector<int>({30}));
    QCOMPARE(events.times(), QVector<qint64>({50}));
    QCOMPARE(events.deviceEvents(), RecorderEvents::DeviceEvents({{4, 2}}));
    QVERIFY(!events.wasCalledOnTestThread());
    pump.removeObserver(&events);
}

namespace {

void postOne(KdCallbackPump& pump, int kind)
{
    switch (kind) {
    case KdCallbackPump::DeviceSwitch:
        pump.postDevice(fcdAudioInputAdded, -1);
        break;
    case KdCallbackPump::TimeSwitch:
        pump.postTime(50);
        break;
    default:
        pump.postLevel(30);
    }
}

QVector<int> deliveredKinds(const RecorderEvents& events)
{
    QVector<int> kinds;
    kinds += events.deviceEvents().isEmpty() ? QVector<int>() : QVector<int>({1});
    kinds += events.times().isEmpty() ? QVector<int>() : QVector<int>({2});
    kinds += events.levels().isEmpty() ? QVector<int>() : QVector<int>({3});
    return kinds;
}

} // namespace

void tst_KdCallbackPump::eachSwitchGovernsItsKindOfCall_data()
{
    QTest::addColumn<int>("kind");

    QTest::newRow("1: devices") << 1;
    QTest::newRow("2: time") << 2;
    QTest::newRow("3: level") << 3;
}

void tst_KdCallbackPump::eachSwitchGovernsItsKindOfCall()
{
    QFETCH(int, kind);
    RecorderEvents events;
    KdCallbackPump pump;
    pump.addObserver(&events);
    pump.setSwitch(static_cast<KdCallbackPump::Switch>(kind), true);
    for (int other = 1; other <= 3; ++other) {
        QCOMPARE(pump.isOn(static_cast<KdCallbackPump::Switch>(other)), other == kind);
        if (other != kind) {
            postOne(pump, other);
        }
    }
    postOne(pump, kind); // the last: when it has come, so have the others
    QTRY_COMPARE(deliveredKinds(events), QVector<int>({kind}));
    pump.removeObserver(&events);
}

void tst_KdCallbackPump::aSlowObserverGetsTheLatestTimeAndLevelOnly()
{
    SlowObserver slow;
    KdCallbackPump pump;
    switchAllOn(pump);
    pump.addObserver(&slow);
    pump.postLevel(1);
    slow.waitUntilHeld();
    for (int i = 2; i <= 1000; ++i) {
        pump.postLevel(i % 100);
        pump.postTime(i);
    }
    slow.letGo();
    QTRY_COMPARE(slow.times(), QVector<qint64>({1000}));
    QTRY_COMPARE(slow.levels(), QVector<int>({1, 0}));
    pump.removeObserver(&slow);
}

void tst_KdCallbackPump::noDeviceEventIsLostAndNoneIsDoubled()
{
    SlowObserver slow;
    KdCallbackPump pump;
    switchAllOn(pump);
    pump.addObserver(&slow);
    pump.postLevel(1);
    slow.waitUntilHeld();
    for (int i = 0; i < 100; ++i) {
        pump.postDevice(fcdAudioInputAdded, -1);
        pump.postDevice(fcdAudioInputRemoved, 0);
        pump.postDevice(fcdAudioInputRemoved, 1);
    }
    slow.letGo();
    QTRY_COMPARE(slow.deviceEvents(), RecorderEvents::DeviceEvents({{3, -1}, {4, 0}, {4, 1}}));
    pump.postDevice(fcdAudioInputRemoved, 0);
    QTRY_COMPARE(slow.deviceEvents().size(), 4);
    pump.removeObserver(&slow);
}

void tst_KdCallbackPump::aTimeThatWaitsCanBeForgotten()
{
    SlowObserver slow;
    KdCallbackPump pump;
    switchAllOn(pump);
    pump.addObserver(&slow);
    pump.postLevel(1);
    slow.waitUntilHeld();
    pump.postTime(5000);
    pump.postDevice(fcdAudioInputAdded, -1);
    pump.dropTime();
    slow.letGo();
    QTRY_COMPARE(slow.deviceEvents().size(), 1);
    pump.removeObserver(&slow);
    QVERIFY(slow.times().isEmpty());
}

void tst_KdCallbackPump::postingNeverWaitsForAnObserver()
{
    SlowObserver slow;
    RecorderEvents other;
    KdCallbackPump pump;
    switchAllOn(pump);
    pump.addObserver(&slow);
    pump.postLevel(1);
    slow.waitUntilHeld();
    // Each of these would hang here if it waited.
    pump.postTime(1);
    pump.postDevice(fcdAudioInputAdded, 0);
    pump.setSwitch(KdCallbackPump::TimeSwitch, true);
    pump.addObserver(&other);
    pump.removeObserver(&other);
    slow.letGo();
    pump.removeObserver(&slow);
}

void tst_KdCallbackPump::afterRemovalNoCallComes()
{
    RecorderEvents events;
    RecorderEvents other;
    KdCallbackPump pump;
    switchAllOn(pump);
    pump.addObserver(&events);
    pump.addObserver(&other);
    pump.removeObserver(&events);
    pump.postTime(1);
    QTRY_COMPARE(other.times().size(), 1);
    QVERIFY(events.times().isEmpty());
    pump.removeAllObservers();
    pump.postTime(2);
    QCOMPARE(other.times().size(), 1);
}

void tst_KdCallbackPump::destructionEndsAllCalls()
{
    for (int round = 0; round < 50; ++round) {
        auto events = std::make_unique<RecorderEvents>();
        auto pump = std::make_unique<KdCallbackPump>();
        switchAllOn(*pump);
        pump->addObserver(events.get());
        std::thread poster([&pump] {
            for (int i = 0; i < 100; ++i) {
                pump->postTime(i);
            }
        });
        poster.join();
        pump.reset();
        events.reset();
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCallbackPump>(argc, argv);
}

#include "tst_KdCallbackPump.moc"

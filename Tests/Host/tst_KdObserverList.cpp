#include <KdCore/KdObserverList.h>

#include <Support/KdTestCase.h>

#include <atomic>
#include <functional>
#include <future>
#include <stdexcept>

namespace {

class Observer
{
public:
    std::function<void()> onCall = [] {};
    std::atomic<int> calls{0};

    void call()
    {
        onCall();
        ++calls;
    }
};

using List = KdObserverList<Observer>;

void notify(List& list)
{
    list.notify([](Observer& observer) { observer.call(); });
}

} // namespace

class tst_KdObserverList : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyObserverIsCalledOnceInOrder();
    void addingNullOrTwiceChangesNothing();
    void removingWaitsForTheCallThatRuns();
    void clearingWaitsForTheCallThatRuns();
    void removingAnotherObserverDoesNotWaitForThisOne();
    void removingFromInsideTheOwnCallReturnsAtOnce();
    void anObserverRemovedByAnEarlierOneIsNotCalled();
    void anObserverAddedInACallIsCalledFromTheNextTimeOn();
    void aNestedNotificationKeepsTheBarrier();
    void anExceptionStopsNeitherTheOthersNorTheBarrier();
    void noCallReachesARemovedObserverUnderLoad();
};

void tst_KdObserverList::everyObserverIsCalledOnceInOrder()
{
    List list;
    Observer first;
    Observer second;
    QString order;
    first.onCall = [&order] { order += QLatin1Char('1'); };
    second.onCall = [&order] { order += QLatin1Char('2'); };
    QVERIFY(list.isEmpty());
    list.add(&first);
    list.add(&second);
    QVERIFY(!list.isEmpty());
    notify(list);
    QCOMPARE(order, QStringLiteral("12"));
}

void tst_KdObserverList::addingNullOrTwiceChangesNothing()
{
    List list;
    Observer observer;
    list.add(nullptr);
    list.add(&observer);
    list.add(&observer);
    notify(list);
    QCOMPARE(observer.calls.load(), 1);
    list.remove(&observer);
    list.remove(&observer);
    list.remove(nullptr);
    notify(list);
    QCOMPARE(observer.calls.load(), 1);
}

namespace {

/** An observer whose call, on another thread, does not end before it may. */
class HeldCall
{
public:
    explicit HeldCall(List& list)
    {
        observer.onCall = [this] {
            m_entered.set_value();
            m_mayEnd.get_future().wait();
        };
        list.add(&observer);
        m_notifier = std::thread([&list] { notify(list); });
        m_entered.get_future().wait();
    }

    ~HeldCall() { m_notifier.join(); }

    void end() { m_mayEnd.set_value(); }

    Observer observer;

private:
    std::promise<void> m_entered;
    std::promise<void> m_mayEnd;
    std::thread m_notifier;
};

/** @return whether the barrier returned only when the held call had ended. */
bool waitsForHeldCall(List& list, HeldCall& held, const std::function<void()>& barrier)
{
    std::promise<void> reached;
    auto removed = std::async(std::launch::async, [&] {
        reached.set_value();
        barrier();
        return held.observer.calls.load() == 1;
    });
    reached.get_future().wait();
    // Removed from the list already, or about to be: either way it must still be waiting.
    while (!list.isEmpty()) {
        std::this_thread::yield();
    }
    const bool stillWaits =
        removed.wait_for(std::chrono::milliseconds(30)) == std::future_status::timeout;
    held.end();
    return removed.get() && stillWaits;
}

} // namespace

void tst_KdObserverList::removingWaitsForTheCallThatRuns()
{
    List list;
    HeldCall held(list);
    QVERIFY(waitsForHeldCall(list, held, [&] { list.remove(&held.observer); }));
}

void tst_KdObserverList::clearingWaitsForTheCallThatRuns()
{
    List list;
    HeldCall held(list);
    QVERIFY(waitsForHeldCall(list, held, [&] { list.clear(); }));
}

void tst_KdObserverList::removingAnotherObserverDoesNotWaitForThisOne()
{
    List list;
    HeldCall held(list);
    Observer other;
    list.add(&other);
    list.remove(&other);
    held.end();
    QCOMPARE(other.calls.load(), 0);
}

void tst_KdObserverList::removingFromInsideTheOwnCallReturnsAtOnce()
{
    List list;
    Observer observer;
    observer.onCall = [&] { list.remove(&observer); };
    list.add(&observer);
    notify(list);
    notify(list);
    QCOMPARE(observer.calls.load(), 1);

    Observer clearing;
    clearing.onCall = [&] { list.clear(); };
    list.add(&clearing);
    notify(list);
    QVERIFY(list.isEmpty());
}

void tst_KdObserverList::anObserverRemovedByAnEarlierOneIsNotCalled()
{
    List list;
    Observer first;
    Observer second;
    first.onCall = [&] { list.remove(&second); };
    list.add(&first);
    list.add(&second);
    notify(list);
    QCOMPARE(second.calls.load(), 0);
}

void tst_KdObserverList::anObserverAddedInACallIsCalledFromTheNextTimeOn()
{
    List list;
    Observer first;
    Observer second;
    first.onCall = [&] { list.add(&second); };
    list.add(&first);
    notify(list);
    QCOMPARE(second.calls.load(), 0);
    notify(list);
    QCOMPARE(second.calls.load(), 1);
}

void tst_KdObserverList::aNestedNotificationKeepsTheBarrier()
{
    List list;
    Observer observer;
    bool nested = false;
    observer.onCall = [&] {
        if (!std::exchange(nested, true)) {
            notify(list);
        }
    };
    list.add(&observer);
    notify(list);
    QCOMPARE(observer.calls.load(), 2);
    std::thread([&] { list.remove(&observer); }).join();
    notify(list);
    QCOMPARE(observer.calls.load(), 2);
}

void tst_KdObserverList::anExceptionStopsNeitherTheOthersNorTheBarrier()
{
    expectLog(QStringLiteral("An observer let an exception escape"));
    List list;
    Observer throwing;
    Observer other;
    throwing.onCall = [] { throw std::runtime_error("thrown by the test"); };
    list.add(&throwing);
    list.add(&other);
    notify(list);
    QCOMPARE(other.calls.load(), 1);
    std::thread([&] { list.remove(&throwing); }).join();
}

void tst_KdObserverList::noCallReachesARemovedObserverUnderLoad()
{
    List list;
    std::atomic<bool> stop{false};
    std::vector<std::thread> notifiers;
    notifiers.reserve(3);
    for (int i = 0; i < 3; ++i) {
        notifiers.emplace_back([&] {
            while (!stop) {
                notify(list);
            }
        });
    }
    int lateCalls = 0;
    for (int round = 0; round < 400; ++round) {
        auto observer = std::make_unique<Observer>();
        list.add(observer.get());
        list.remove(observer.get());
        const int calls = observer->calls;
        std::this_thread::yield();
        lateCalls += observer->calls != calls;
    }
    stop = true;
    for (std::thread& notifier : notifiers) {
        notifier.join();
    }
    QCOMPARE(lateCalls, 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdObserverList>(argc, argv);
}

#include "tst_KdObserverList.moc"

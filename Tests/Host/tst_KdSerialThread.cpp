#include <KdVBLModel/KdSerialThread.h>

#include <Support/KdTestCase.h>

#include <atomic>
#include <future>
#include <vector>

using namespace std::chrono_literals;

namespace {

/** Keeps the thread busy until it is let go. */
class Blocker
{
public:
    explicit Blocker(KdSerialThread& thread)
    {
        thread.post([this, mayEnd = m_mayEnd.get_future().share()] {
            m_entered.set_value();
            mayEnd.wait();
        });
        m_entered.get_future().wait();
    }
    ~Blocker() { letGo(); }

    void letGo()
    {
        if (!std::exchange(m_isLetGo, true)) {
            m_mayEnd.set_value();
        }
    }

private:
    std::promise<void> m_entered;
    std::promise<void> m_mayEnd;
    bool m_isLetGo = false;
};

} // namespace

class tst_KdSerialThread : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tasksRunInOrderOnAThreadOfTheirOwn();
    void aCallGivesTheTasksResult();
    void aCallThatIsTooLateIsAnsweredWithNothing();
    void aLateResultGoesToWhoeverWantsIt();
    void destructionWaitsForWhatWasPosted();
    void finishingRunsWhatWasPostedAndNothingMore();
    void finishingGivesUpAThreadThatHangs();
    void theThreadMayDestroyItsOwner();
    void ticksComeWhileTheyAreWanted();
    void aTaskAtRestStandsForThoseBeforeIt();
    void aTaskAtRestHoldsUpNoOther();
    void finishingDropsATaskAtRest();
};

void tst_KdSerialThread::tasksRunInOrderOnAThreadOfTheirOwn()
{
    std::vector<int> order;
    std::thread::id id;
    {
        KdSerialThread thread;
        for (int i = 0; i < 100; ++i) {
            thread.post([&, i] {
                order.push_back(i);
                id = std::this_thread::get_id();
            });
        }
    }
    QCOMPARE(order.size(), size_t(100));
    QVERIFY(std::is_sorted(order.begin(), order.end()));
    QVERIFY(id != std::this_thread::get_id());
}

void tst_KdSerialThread::aCallGivesTheTasksResult()
{
    KdSerialThread thread;
    QCOMPARE(thread.call<int>([] { return 42; }, 10s).value_or(0), 42);
    QCOMPARE(thread.call<bool>([] { return false; }, 10s).value_or(true), false);
}

void tst_KdSerialThread::aCallThatIsTooLateIsAnsweredWithNothing()
{
    KdSerialThread thread;
    Blocker blocker(thread);
    QVERIFY(!thread.call<int>([] { return 1; }, 20ms));
    blocker.letGo();
    QCOMPARE(thread.call<int>([] { return 2; }, 10s).value_or(0), 2);
}

void tst_KdSerialThread::aLateResultGoesToWhoeverWantsIt()
{
    KdSerialThread thread;
    Blocker blocker(thread);
    std::promise<int> late;
    const auto inTime =
        thread.call<int>([] { return 7; }, 20ms, [&late](int result) { late.set_value(result); });
    QVERIFY(!inTime);
    blocker.letGo();
    std::future<int> result = late.get_future();
    QVERIFY(result.wait_for(10s) == std::future_status::ready);
    QCOMPARE(result.get(), 7);

    bool wasLate = false;
    QVERIFY(thread.call<int>([] { return 8; }, 10s, [&wasLate](int) { wasLate = true; }));
    QVERIFY(!wasLate);
}

void tst_KdSerialThread::destructionWaitsForWhatWasPosted()
{
    std::atomic<int> done{0};
    {
        KdSerialThread thread;
        for (int i = 0; i < 10; ++i) {
            thread.post([&done] {
                std::this_thread::yield();
                ++done;
            });
        }
    }
    QCOMPARE(done.load(), 10);
}

void tst_KdSerialThread::finishingRunsWhatWasPostedAndNothingMore()
{
    std::atomic<int> done{0};
    KdSerialThread thread;
    thread.post([&done] { ++done; });
    QVERIFY(thread.finish(10s));
    QCOMPARE(done.load(), 1);
    thread.post([&done] { ++done; });
    QVERIFY(!thread.call<int>([] { return 1; }, 20ms));
    QVERIFY(thread.finish(10s));
    QCOMPARE(done.load(), 1);
}

void tst_KdSerialThread::finishingGivesUpAThreadThatHangs()
{
    std::promise<void> mayEnd;
    std::promise<void> hasEnded;
    {
        KdSerialThread thread;
        thread.post([hang = mayEnd.get_future().share(), &hasEnded] {
            hang.wait();
            hasEnded.set_value();
        });
        QVERIFY(!thread.finish(20ms));
    }
    mayEnd.set_value();
    QVERIFY(hasEnded.get_future().wait_for(10s) == std::future_status::ready);
}

void tst_KdSerialThread::theThreadMayDestroyItsOwner()
{
    auto owner = std::make_shared<KdSerialThread>();
    std::promise<void> mayBegin;
    std::promise<void> isDestroyed;
    owner->post([&isDestroyed, kept = owner, begin = mayBegin.get_future().share()]() mutable {
        begin.wait();
        kept.reset();
        isDestroyed.set_value();
    });
    owner.reset();
    mayBegin.set_value();
    QVERIFY(isDestroyed.get_future().wait_for(10s) == std::future_status::ready);
}

void tst_KdSerialThread::ticksComeWhileTheyAreWanted()
{
    std::atomic<int> ticks{0};
    KdSerialThread thread([&ticks] { ++ticks; }, 1ms);
    QCOMPARE(thread.call<int>([&ticks] { return ticks.load(); }, 10s).value_or(-1), 0);
    thread.setTicking(true);
    QTRY_VERIFY(ticks >= 3);
    thread.setTicking(false);
    const int before = thread.call<int>([&ticks] { return ticks.load(); }, 10s).value_or(-1);
    QCOMPARE(thread.call<int>([&ticks] { return ticks.load(); }, 10s).value_or(-1), before);
}

void tst_KdSerialThread::aTaskAtRestStandsForThoseBeforeIt()
{
    std::atomic<int> last{0};
    std::atomic<int> done{0};
    KdSerialThread thread;
    for (int i = 1; i <= 10; ++i) {
        thread.postAtRest(
            [&, i] {
                last = i;
                ++done;
            },
            50ms);
    }
    QTRY_COMPARE(last.load(), 10);
    QCOMPARE(done.load(), 1);
    thread.postAtRest([&done] { ++done; }, 0ms);
    QTRY_COMPARE(done.load(), 2);
}

void tst_KdSerialThread::aTaskAtRestHoldsUpNoOther()
{
    std::atomic<int> ticks{0};
    KdSerialThread thread([&ticks] { ++ticks; }, 1ms);
    thread.setTicking(true);
    thread.postAtRest([] {}, 1h);
    QCOMPARE(thread.call<int>([] { return 42; }, 10s).value_or(0), 42);
    QTRY_VERIFY(ticks >= 3);
}

void tst_KdSerialThread::finishingDropsATaskAtRest()
{
    const auto owned = std::make_shared<std::atomic<int>>(0);
    KdSerialThread thread;
    thread.postAtRest([owned] { ++*owned; }, 1h);
    QVERIFY(thread.finish(10s));
    QCOMPARE(owned->load(), 0);
    QCOMPARE(owned.use_count(), 1L);
    thread.postAtRest([owned] { ++*owned; }, 0ms);
    QCOMPARE(owned.use_count(), 1L);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdSerialThread>(argc, argv);
}

#include "tst_KdSerialThread.moc"

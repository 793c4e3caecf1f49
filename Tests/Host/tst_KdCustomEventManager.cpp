#include <KdCore/KdCustomEventManager.h>

#include <Support/KdTestCase.h>

#include <atomic>
#include <functional>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

class Event : public KdCustomEvent
{
public:
    explicit Event(int eventNumber = 0) : number(eventNumber) {}

    const int number;
};

class OtherEvent : public KdCustomEvent
{
};

/** Registered as long as it lives. */
class Receiver : public IKdCustomEventReceiver
{
public:
    Receiver() { KdCustomEventManager::instance()->addReceiver(this); }
    ~Receiver() override { KdCustomEventManager::instance()->removeReceiver(this); }

    void onCustomEvent(const KdCustomEvent& event) override
    {
        ++calls;
        if (onCall) {
            onCall(event);
        }
    }

    std::function<void(const KdCustomEvent&)> onCall;
    std::atomic<int> calls{0};
};

void send(const KdCustomEvent& event, const KdCustomEventManager::ReceiverFilter& filter =
                                          KdCustomEventManager::ReceiverFilter())
{
    KdCustomEventManager::instance()->sendEvent(event, filter);
}

} // namespace

class tst_KdCustomEventManager : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isOneForTheProcess()
    {
        QVERIFY(KdCustomEventManager::instance());
        QCOMPARE(KdCustomEventManager::instance(), KdCustomEventManager::instance());
    }

    void sendingToNobodyIsHarmless() { send(Event()); }

    void anEmptyFilterReachesEveryReceiverInOrderBeforeSendingReturns()
    {
        QVector<int> order;
        Receiver first;
        Receiver second;
        first.onCall = [&order](const KdCustomEvent&) { order.append(1); };
        second.onCall = [&order](const KdCustomEvent&) { order.append(2); };
        send(Event());
        QCOMPARE(order, QVector<int>({1, 2}));
    }

    void deliversOnTheSendingThread()
    {
        std::thread::id deliveredOn;
        Receiver receiver;
        receiver.onCall = [&](const KdCustomEvent&) { deliveredOn = std::this_thread::get_id(); };
        std::thread sender([] { send(Event()); });
        const std::thread::id expected = sender.get_id();
        sender.join();
        QVERIFY(deliveredOn == expected);
    }

    void aFilterChoosesTheReceivers()
    {
        Receiver wanted;
        Receiver unwanted;
        send(Event(), [&](const IKdCustomEventReceiver& receiver) { return &receiver == &wanted; });
        QCOMPARE(wanted.calls, 1);
        QCOMPARE(unwanted.calls, 0);
    }

    void aReceiverTellsEventsByTheirClass()
    {
        QVector<int> numbers;
        Receiver receiver;
        receiver.onCall = [&numbers](const KdCustomEvent& event) {
            const auto* const known = dynamic_cast<const Event*>(&event);
            numbers.append(known ? known->number : -1);
        };
        send(Event(7));
        send(OtherEvent());
        QCOMPARE(numbers, QVector<int>({7, -1}));
    }

    void registeringTwiceDeliversOnce()
    {
        Receiver receiver;
        KdCustomEventManager::instance()->addReceiver(&receiver);
        send(Event());
        QCOMPARE(receiver.calls, 1);
    }

    void whatIsNoReceiverChangesNothing()
    {
        KdCustomEventManager::instance()->addReceiver(nullptr);
        KdCustomEventManager::instance()->removeReceiver(nullptr);
        Receiver receiver;
        KdCustomEventManager::instance()->removeReceiver(&receiver);
        KdCustomEventManager::instance()->removeReceiver(&receiver);
        send(Event());
        QCOMPARE(receiver.calls, 0);
    }

    void aReceiverMayUnregisterItselfAndSendAgain()
    {
        Receiver receiver;
        Receiver next;
        receiver.onCall = [&receiver](const KdCustomEvent&) {
            KdCustomEventManager::instance()->removeReceiver(&receiver);
            send(Event());
        };
        send(Event());
        QCOMPARE(receiver.calls, 1);
        QCOMPARE(next.calls, 2);
    }

    void aReceiverThatThrowsKeepsNobodyFromTheEvent()
    {
        expectLog(QStringLiteral("An observer let an exception escape; it is ignored."));
        Receiver faulty;
        Receiver next;
        faulty.onCall = [](const KdCustomEvent&) { throw std::runtime_error("planted"); };
        send(Event());
        QCOMPARE(next.calls, 1);
    }

    void unregisteringWaitsForACallOnAnotherThread()
    {
        std::promise<void> isInside;
        std::promise<void> mayLeave;
        std::atomic<bool> hasLeft{false};
        auto receiver = std::make_unique<Receiver>();
        receiver->onCall = [&](const KdCustomEvent&) {
            isInside.set_value();
            mayLeave.get_future().wait();
            hasLeft = true;
        };
        std::thread sender([] { send(Event()); });
        isInside.get_future().wait();
        std::thread release([&mayLeave] { mayLeave.set_value(); });
        receiver.reset();
        QVERIFY(hasLeft);
        sender.join();
        release.join();
    }

    void receiversComeAndGoWhileOthersSend()
    {
        std::atomic<bool> isOver{false};
        std::vector<std::thread> senders;
        senders.reserve(3);
        for (int i = 0; i < 3; ++i) {
            senders.emplace_back([&isOver] {
                while (!isOver) {
                    send(Event());
                }
            });
        }
        int reached = 0;
        for (int round = 0; round < 200; ++round) {
            const Receiver receiver;
            send(Event());
            reached += receiver.calls > 0 ? 1 : 0;
        }
        isOver = true;
        for (std::thread& sender : senders) {
            sender.join();
        }
        QCOMPARE(reached, 200);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCustomEventManager>(argc, argv);
}

#include "tst_KdCustomEventManager.moc"

#include "Support/KdTestCase.h"

#include <Studio/StudioWorkGate.h>

#include <atomic>
#include <thread>

class tst_StudioWorkGate : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void openGateLetsWorkPass();
    void heldGateStopsWorkUntilItIsReleased();
    void cancelEndsWhatWaits();
    void cancelledGateStaysSo();
};

void tst_StudioWorkGate::openGateLetsWorkPass()
{
    StudioWorkGate gate;
    QVERIFY(!gate.isHeld());
    QVERIFY(gate.pass());
    gate.release();
    QVERIFY(gate.pass());
}

void tst_StudioWorkGate::heldGateStopsWorkUntilItIsReleased()
{
    StudioWorkGate gate;
    gate.hold();
    gate.hold();
    QVERIFY(gate.isHeld());
    std::atomic<bool> released{false};
    std::atomic<bool> early{false};
    std::atomic<bool> passed{false};
    std::thread worker([&] {
        passed = gate.pass();
        early = !released;
    });
    released = true;
    gate.release();
    worker.join();
    QVERIFY(passed);
    QVERIFY(!early);
}

void tst_StudioWorkGate::cancelEndsWhatWaits()
{
    StudioWorkGate gate;
    gate.hold();
    std::atomic<bool> goOn{true};
    std::thread worker([&] { goOn = gate.pass(); });
    gate.cancel();
    worker.join();
    QVERIFY(!goOn);
}

void tst_StudioWorkGate::cancelledGateStaysSo()
{
    StudioWorkGate gate;
    gate.cancel();
    gate.release();
    QVERIFY(!gate.pass());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWorkGate>(argc, argv);
}

#include "tst_StudioWorkGate.moc"

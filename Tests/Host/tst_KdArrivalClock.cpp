#include <KdVBLModel/KdArrivalClock.h>

#include <Support/KdTestCase.h>

namespace {
constexpr qint64 kMs = 1000000;
}

class tst_KdArrivalClock : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingArrivedIsPositionZero();
    void betweenTwoBuffersTheTimeCounts();
    void aLateBufferIsNotAnticipatedByMoreThanOne();
    void aClockThatGoesBackDoesNotMoveThePosition();
};

void tst_KdArrivalClock::nothingArrivedIsPositionZero()
{
    const KdArrivalClock clock(48000);
    QCOMPARE(clock.positionAt(12345 * kMs), 0);
}

void tst_KdArrivalClock::betweenTwoBuffersTheTimeCounts()
{
    KdArrivalClock clock(48000);
    clock.arrived(480, 1000 * kMs);
    QCOMPARE(clock.positionAt(1000 * kMs), 480);
    QCOMPARE(clock.positionAt(1005 * kMs), 720);
    clock.arrived(480, 1010 * kMs);
    QCOMPARE(clock.received(), 960);
    QCOMPARE(clock.positionAt(1012 * kMs), 1056);
}

void tst_KdArrivalClock::aLateBufferIsNotAnticipatedByMoreThanOne()
{
    KdArrivalClock clock(48000);
    clock.arrived(480, 0);
    QCOMPARE(clock.positionAt(50 * kMs), 960);
    QCOMPARE(clock.positionAt(std::numeric_limits<qint64>::max()), 960);
}

void tst_KdArrivalClock::aClockThatGoesBackDoesNotMoveThePosition()
{
    KdArrivalClock clock(44100);
    clock.arrived(441, 1000 * kMs);
    QCOMPARE(clock.positionAt(900 * kMs), 441);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdArrivalClock>(argc, argv);
}

#include "tst_KdArrivalClock.moc"

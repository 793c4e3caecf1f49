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
    void aBurstStandsForTheTimeThatItTook();
    void aLateBufferDoesNotMoveThePosition();
    void aSourceThatSlowsDownIsFollowed();
    void silenceIsNotAnticipatedByMoreThanATenthOfASecond();
    void aClockThatGoesBackDoesNotMoveThePosition();
    void daysDoNotOverflow();
    void theCapturedPositionMayLieAnywhere();
    void latenessIsMeasuredAgainstTheEarliest();
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

void tst_KdArrivalClock::aBurstStandsForTheTimeThatItTook()
{
    KdArrivalClock clock(48000);
    for (qint64 burst = 1; burst <= 5; ++burst) {
        for (int i = 0; i < 4; ++i) {
            clock.arrived(480, burst * 40 * kMs);
        }
        QCOMPARE(clock.positionAt(burst * 40 * kMs), burst * 1920);
        QCOMPARE(clock.positionAt((burst * 40 + 30) * kMs), burst * 1920 + 1440);
    }
}

void tst_KdArrivalClock::aLateBufferDoesNotMoveThePosition()
{
    KdArrivalClock clock(48000);
    clock.arrived(480, 10 * kMs);
    clock.arrived(480, 20 * kMs);
    QCOMPARE(clock.positionAt(35 * kMs), 1680);
    clock.arrived(480, 36 * kMs); // 6 ms late
    QCOMPARE(clock.positionAt(37 * kMs), 1776);
}

void tst_KdArrivalClock::aSourceThatSlowsDownIsFollowed()
{
    KdArrivalClock clock(48000);
    qint64 now = 0;
    for (int i = 0; i < 100; ++i) {
        now += 10 * kMs;
        clock.arrived(480, now);
    }
    // A dropout of 80 ms, after which it goes on as before.
    now += 80 * kMs;
    for (int i = 0; i < 250; ++i) {
        now += 10 * kMs;
        clock.arrived(480, now);
    }
    QCOMPARE(clock.positionAt(now), clock.received());
    QCOMPARE(clock.positionAt(now + 5 * kMs), clock.received() + 240);
}

void tst_KdArrivalClock::silenceIsNotAnticipatedByMoreThanATenthOfASecond()
{
    KdArrivalClock clock(48000);
    clock.arrived(480, 0);
    QCOMPARE(clock.positionAt(50 * kMs), 480 + 2400);
    QCOMPARE(clock.positionAt(5000 * kMs), 480 + 4800);
}

void tst_KdArrivalClock::aClockThatGoesBackDoesNotMoveThePosition()
{
    KdArrivalClock clock(44100);
    clock.arrived(441, 1000 * kMs);
    QCOMPARE(clock.positionAt(900 * kMs), 441);
}

void tst_KdArrivalClock::daysDoNotOverflow()
{
    constexpr qint64 kDay = 24LL * 3600 * 1000;
    KdArrivalClock clock(96000);
    clock.arrived(10 * kDay * 96, 10 * kDay * kMs);
    QCOMPARE(clock.positionAt((10 * kDay + 10) * kMs), 10 * kDay * 96 + 960);
}

void tst_KdArrivalClock::theCapturedPositionMayLieAnywhere()
{
    KdArrivalClock clock(48000);
    QCOMPARE(clock.capturedAt(1000 * kMs), 0);
    clock.arrived(480, 1010 * kMs);
    QCOMPARE(clock.capturedAt(1000 * kMs), 0);
    QCOMPARE(clock.capturedAt(1005 * kMs), 240);
    QCOMPARE(clock.capturedAt(990 * kMs), -480);
    QCOMPARE(clock.capturedAt(11000 * kMs), 480000);
}

void tst_KdArrivalClock::latenessIsMeasuredAgainstTheEarliest()
{
    KdArrivalClock clock(48000);
    QCOMPARE(clock.lateness(480, 1010 * kMs), 0);
    clock.arrived(480, 1010 * kMs);
    QCOMPARE(clock.lateness(480, 1020 * kMs), 0);
    QCOMPARE(clock.lateness(480, 1035 * kMs), 15 * kMs);
    QCOMPARE(clock.lateness(480, 1013 * kMs), -7 * kMs);
    clock.arrived(480, 1035 * kMs);
    QCOMPARE(clock.lateness(480, 1030 * kMs), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdArrivalClock>(argc, argv);
}

#include "tst_KdArrivalClock.moc"

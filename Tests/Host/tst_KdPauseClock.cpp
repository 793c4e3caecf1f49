#include <KdVBLModel/KdPauseClock.h>

#include <Support/KdTestCase.h>

namespace {
using Spans = std::vector<KdPauseClock::Span>;
}

class tst_KdPauseClock : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsRecordedBeforeTheStart();
    void aPauseIsInNeitherFileNorElapsedTime();
    void aBufferIsCutWhereThePauseBeginsAndEnds();
    void twoPausesWithinOneBufferLeaveThreeParts();
    void doubledAndMisplacedCallsChangeNothing();
    void aChangeBeforeTheFormerOneCountsAsAtTheFormerOne();
    void tenPausesAddUpExactly();
    void aTakeOfTwelveHoursInNanosecondsIsExact();
};

void tst_KdPauseClock::nothingIsRecordedBeforeTheStart()
{
    KdPauseClock clock;
    QVERIFY(clock.recorded(0, 1000).empty());
    QCOMPARE(clock.filePosition(1000), 0);

    clock.start(700);
    QCOMPARE(clock.recorded(0, 700), Spans());
    QCOMPARE(clock.recorded(0, 1000), Spans({{700, 1000, 0}}));
    QCOMPARE(clock.filePosition(1000), 300);
}

void tst_KdPauseClock::aPauseIsInNeitherFileNorElapsedTime()
{
    KdPauseClock clock;
    clock.start(0);
    clock.pause(1000);
    QVERIFY(!clock.isRunning());
    QCOMPARE(clock.filePosition(5000), 1000);
    QVERIFY(clock.recorded(1000, 5000).empty());

    clock.resume(5000);
    QVERIFY(clock.isRunning());
    QCOMPARE(clock.recorded(5000, 5480), Spans({{5000, 5480, 1000}}));
    QCOMPARE(clock.filePosition(5480), 1480);

    clock.stop(6000);
    QVERIFY(clock.recorded(6000, 7000).empty());
    QCOMPARE(clock.filePosition(7000), 2000);
}

void tst_KdPauseClock::aBufferIsCutWhereThePauseBeginsAndEnds()
{
    KdPauseClock clock;
    clock.start(0);
    clock.pause(1100);
    QCOMPARE(clock.recorded(960, 1440), Spans({{960, 1100, 960}}));
    clock.resume(1300);
    QCOMPARE(clock.recorded(960, 1440), Spans({{960, 1100, 960}, {1300, 1440, 1100}}));
}

void tst_KdPauseClock::twoPausesWithinOneBufferLeaveThreeParts()
{
    KdPauseClock clock;
    clock.start(0);
    clock.pause(10);
    clock.resume(20);
    clock.pause(30);
    clock.resume(40);
    QCOMPARE(clock.recorded(0, 50), Spans({{0, 10, 0}, {20, 30, 10}, {40, 50, 20}}));
}

void tst_KdPauseClock::doubledAndMisplacedCallsChangeNothing()
{
    KdPauseClock clock;
    clock.pause(5);
    clock.stop(6);
    QVERIFY(clock.recorded(0, 100).empty());
    clock.start(10);
    clock.resume(50);
    QCOMPARE(clock.filePosition(60), 50);
    clock.pause(60);
    clock.pause(90);
    QCOMPARE(clock.filePosition(100), 50);
}

void tst_KdPauseClock::aChangeBeforeTheFormerOneCountsAsAtTheFormerOne()
{
    KdPauseClock clock;
    clock.start(100);
    clock.pause(90);
    QCOMPARE(clock.filePosition(200), 0);
    clock.resume(200);
    clock.pause(300);
    clock.resume(250);
    QCOMPARE(clock.recorded(200, 400), Spans({{200, 300, 0}, {300, 400, 100}}));
}

void tst_KdPauseClock::tenPausesAddUpExactly()
{
    KdPauseClock clock;
    clock.start(0);
    qint64 at = 0;
    for (int i = 0; i < 10; ++i) {
        at += 4801;
        clock.pause(at);
        at += 333;
        clock.resume(at);
    }
    qint64 recorded = 0;
    for (qint64 position = 0; position < at; position += 480) {
        for (const KdPauseClock::Span& span : clock.recorded(position, qMin(position + 480, at))) {
            QCOMPARE(span.filePosition, recorded);
            recorded += span.end - span.begin;
        }
    }
    QCOMPARE(recorded, 48010);
    QCOMPARE(clock.filePosition(at), 48010);
}

void tst_KdPauseClock::aTakeOfTwelveHoursInNanosecondsIsExact()
{
    constexpr qint64 kHour = 3600LL * 1000000000;
    KdPauseClock clock;
    clock.start(7);
    clock.pause(6 * kHour + 7);
    clock.resume(8 * kHour);
    QCOMPARE(clock.filePosition(14 * kHour), 12 * kHour);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPauseClock>(argc, argv);
}

#include "tst_KdPauseClock.moc"

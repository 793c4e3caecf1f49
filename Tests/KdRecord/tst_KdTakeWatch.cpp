#include <KdRecord/KdTakeWatch.h>

#include <Support/KdTestCase.h>

#include <QSignalSpy>

using namespace KdVBLMODEL;

namespace {
constexpr int kIntervalMs = 5;
} // namespace

class tst_KdTakeWatch : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void saysThatATakeEndedByItselfUntilItIsStopped();
    void asksNobodyOutsideATake();
    void aTakeThatRunsOrIsPausedIsNotOver_data();
    void aTakeThatRunsOrIsPausedIsNotOver();
};

void tst_KdTakeWatch::saysThatATakeEndedByItselfUntilItIsStopped()
{
    _KdCaptureStatus status = fcsRecording;
    KdTakeWatch watch([&] { return status; }, nullptr, kIntervalMs);
    QSignalSpy ended(&watch, &KdTakeWatch::sigTakeEnded);
    watch.start();
    status = fcsEnded;
    QTRY_VERIFY(ended.count() >= 2);
    watch.stop();
    ended.clear();
    QVERIFY(!ended.wait(20 * kIntervalMs));
}

void tst_KdTakeWatch::asksNobodyOutsideATake()
{
    int asked = 0;
    KdTakeWatch watch(
        [&] {
            ++asked;
            return fcsEnded;
        },
        nullptr, kIntervalMs);
    QSignalSpy ended(&watch, &KdTakeWatch::sigTakeEnded);
    QVERIFY(!ended.wait(20 * kIntervalMs));
    QCOMPARE(asked, 0);
}

void tst_KdTakeWatch::aTakeThatRunsOrIsPausedIsNotOver_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("not started") << int(fcsNoStart);
    QTest::newRow("recording") << int(fcsRecording);
    QTest::newRow("paused") << int(fcsPaused);
    QTest::newRow("a state of some other engine") << 4;
}

void tst_KdTakeWatch::aTakeThatRunsOrIsPausedIsNotOver()
{
    QFETCH(int, status);
    int asked = 0;
    KdTakeWatch watch(
        [&] {
            ++asked;
            return static_cast<_KdCaptureStatus>(status);
        },
        nullptr, kIntervalMs);
    QSignalSpy ended(&watch, &KdTakeWatch::sigTakeEnded);
    watch.start();
    QTRY_VERIFY(asked >= 2);
    QCOMPARE(ended.count(), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeWatch>(argc, argv);
}

#include "tst_KdTakeWatch.moc"

#include <Studio/StudioWorker.h>

#include <Support/KdTestCase.h>

#include <QThread>

#include <algorithm>
#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

class tst_StudioWorker : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void jobsRunOneAfterAnotherElsewhere();
    void reportsComeInOrderOnTheOwnersThread();
    void aReportMayDestroyTheWorker();
    void stoppingDropsWhatWaitsAndWaitsForWhatRuns();
    void reportsOfADestroyedWorkerAreDropped();
};

void tst_StudioWorker::jobsRunOneAfterAnotherElsewhere()
{
    StudioWorker worker;
    std::vector<int> order;
    std::atomic<bool> isElsewhere{true};
    std::atomic<int> done{0};
    for (int job = 0; job < 50; ++job) {
        worker.start([&, job, home = QThread::currentThread()] {
            isElsewhere = isElsewhere && QThread::currentThread() != home;
            order.push_back(job);
            ++done;
        });
    }
    QTRY_COMPARE(done.load(), 50);
    QVERIFY(isElsewhere);
    QVERIFY(std::is_sorted(order.begin(), order.end()));
}

void tst_StudioWorker::reportsComeInOrderOnTheOwnersThread()
{
    StudioWorker worker;
    QStringList told;
    for (int job = 0; job < 3; ++job) {
        worker.start([&, job] {
            for (int part = 0; part < 2; ++part) {
                worker.report([&, text = QStringLiteral("%1.%2").arg(job).arg(part)] {
                    QCOMPARE(QThread::currentThread(), worker.thread());
                    told.append(text);
                });
            }
        });
    }
    QTRY_COMPARE(told, QStringLiteral("0.0 0.1 1.0 1.1 2.0 2.1").split(QLatin1Char(' ')));
}

void tst_StudioWorker::aReportMayDestroyTheWorker()
{
    auto worker = std::make_unique<StudioWorker>();
    bool isSecondTold = false;
    worker->start([&, raw = worker.get()] {
        raw->report([&] { worker.reset(); });
        raw->report([&] { isSecondTold = true; });
    });
    QTRY_VERIFY(!worker);
    QCoreApplication::processEvents();
    QVERIFY(!isSecondTold);
}

void tst_StudioWorker::stoppingDropsWhatWaitsAndWaitsForWhatRuns()
{
    StudioWorker worker;
    std::promise<void> begun;
    std::atomic<int> done{0};
    // Goes with the job that waits.
    auto kept = std::make_shared<int>();
    worker.start([&, waiting = std::weak_ptr<int>(kept)] {
        begun.set_value();
        while (!waiting.expired()) {
            std::this_thread::yield();
        }
        ++done;
    });
    worker.start([&done, kept = std::move(kept)] { done += 10; });
    begun.get_future().wait();
    worker.stop();
    QCOMPARE(done.load(), 1);
    worker.start([&] { done += 100; });
    QTRY_COMPARE(done.load(), 101);
}

void tst_StudioWorker::reportsOfADestroyedWorkerAreDropped()
{
    bool isTold = false;
    {
        StudioWorker worker;
        std::promise<void> reported;
        worker.start([&] {
            worker.report([&] { isTold = true; });
            reported.set_value();
        });
        reported.get_future().wait();
    }
    QCoreApplication::processEvents();
    QVERIFY(!isTold);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWorker>(argc, argv);
}

#include "tst_StudioWorker.moc"

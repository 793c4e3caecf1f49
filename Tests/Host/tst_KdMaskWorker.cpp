#include <KdVBLModel/KdMaskWorker.h>
#include <Support/KdTestCase.h>

#include <atomic>

namespace {

constexpr auto kPatience = std::chrono::seconds(20);

/** What the finders of a test share with it. */
struct Bench
{
    std::atomic<double> seconds{100.0};
    std::atomic<double> work{0.0}; ///< seconds that the next mask takes, on the bench's own clock
    std::atomic<int> finders{0};
    std::atomic<int> masks{0};
    std::mutex gate; ///< held by a test that wants a mask to last

    KdMaskWorker::Clock clock()
    {
        return [this] { return seconds.load(); };
    }
    KdMaskWorker::MakeFinder maker();
};

class CountingFinder : public KdMaskWorker::Finder
{
public:
    explicit CountingFinder(Bench& bench) : m_bench(bench) { ++m_bench.finders; }

    cv::Mat maskOf(const cv::Mat& picture, double /*seconds*/) override
    {
        const std::lock_guard<std::mutex> lock(m_bench.gate);
        m_bench.seconds = m_bench.seconds + m_bench.work;
        ++m_bench.masks;
        return picture.clone();
    }

private:
    Bench& m_bench;
};

KdMaskWorker::MakeFinder Bench::maker()
{
    return [this] { return std::make_unique<CountingFinder>(*this); };
}

cv::Mat picture(double value)
{
    return {2, 2, CV_32F, cv::Scalar(value)};
}

bool shows(const cv::Mat& mask, double value)
{
    return !mask.empty() && qFuzzyCompare(static_cast<double>(mask.at<float>(0, 0)), value);
}

} // namespace

class tst_KdMaskWorker : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsKnownBeforeTheFirstMask();
    void newestMaskIsKept();
    void givingDoesNotWaitForTheMask();
    void worksNoMoreOftenThanTheHighestRate();
    void restsTwiceAsLongAsItWorked();
    void resetForgetsTheMaskThatIsBeingFound();
    void resetBeginsWithANewFinder();
    void endsWhileAMaskIsBeingFound();
};

void tst_KdMaskWorker::nothingIsKnownBeforeTheFirstMask()
{
    Bench bench;
    const KdMaskWorker worker(bench.maker(), bench.clock());
    QVERIFY(worker.wants());
    QVERIFY(worker.newest().empty());
    QVERIFY(worker.waitForMask(std::chrono::milliseconds(0)));
    QCOMPARE(bench.finders.load(), 0);
}

void tst_KdMaskWorker::newestMaskIsKept()
{
    Bench bench;
    KdMaskWorker worker(bench.maker(), bench.clock());
    for (const double value : {0.25, 0.5}) {
        worker.give(picture(value));
        QVERIFY(worker.waitForMask(kPatience));
        QVERIFY(shows(worker.newest(), value));
    }
    QCOMPARE(bench.finders.load(), 1);
}

void tst_KdMaskWorker::givingDoesNotWaitForTheMask()
{
    Bench bench;
    KdMaskWorker worker(bench.maker(), bench.clock());
    std::unique_lock<std::mutex> gate(bench.gate);
    worker.give(picture(0.5));
    QVERIFY(!worker.wants());
    bench.seconds = bench.seconds + 1000.0;
    QVERIFY(!worker.wants());
    QVERIFY(worker.newest().empty());
    QVERIFY(!worker.waitForMask(std::chrono::milliseconds(0)));
    gate.unlock();
    QVERIFY(worker.waitForMask(kPatience));
}

void tst_KdMaskWorker::worksNoMoreOftenThanTheHighestRate()
{
    Bench bench;
    KdMaskWorker worker(bench.maker(), bench.clock());
    worker.give(picture(0.5));
    QVERIFY(worker.waitForMask(kPatience));
    bench.seconds = bench.seconds + 0.9 / KdMaskWorker::kHighestRate;
    QVERIFY(!worker.wants());
    bench.seconds = bench.seconds + 0.2 / KdMaskWorker::kHighestRate;
    QVERIFY(worker.wants());
}

void tst_KdMaskWorker::restsTwiceAsLongAsItWorked()
{
    Bench bench;
    bench.work = 0.5;
    KdMaskWorker worker(bench.maker(), bench.clock());
    worker.give(picture(0.5));
    QVERIFY(worker.waitForMask(kPatience));
    bench.seconds = bench.seconds + 0.99;
    QVERIFY(!worker.wants());
    bench.seconds = bench.seconds + 0.02;
    QVERIFY(worker.wants());
}

void tst_KdMaskWorker::resetForgetsTheMaskThatIsBeingFound()
{
    Bench bench;
    KdMaskWorker worker(bench.maker(), bench.clock());
    std::unique_lock<std::mutex> gate(bench.gate);
    worker.give(picture(0.25));
    worker.reset();
    QVERIFY(worker.wants());
    worker.give(picture(0.5));
    gate.unlock();
    QVERIFY(worker.waitForMask(kPatience));
    QCOMPARE(bench.masks.load(), 2);
    QVERIFY(shows(worker.newest(), 0.5));
}

void tst_KdMaskWorker::resetBeginsWithANewFinder()
{
    Bench bench;
    KdMaskWorker worker(bench.maker(), bench.clock());
    worker.give(picture(0.25));
    QVERIFY(worker.waitForMask(kPatience));
    worker.reset();
    QVERIFY(worker.newest().empty());
    worker.give(picture(0.5));
    QVERIFY(worker.waitForMask(kPatience));
    QCOMPARE(bench.finders.load(), 2);
}

void tst_KdMaskWorker::endsWhileAMaskIsBeingFound()
{
    Bench bench;
    for (int i = 0; i < 50; ++i) {
        KdMaskWorker worker(bench.maker(), bench.clock());
        worker.give(picture(0.5));
    }
    QCOMPARE(bench.masks.load(), 50);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdMaskWorker>(argc, argv);
}

#include "tst_KdMaskWorker.moc"

#include <KdVBLModel/KdFramePump.h>

#include <Support/KdTestCase.h>

#include <atomic>
#include <condition_variable>

namespace {

KdFramePump::Frame numbered(KdFramePump& pump, uchar number)
{
    KdFramePump::Frame frame = pump.create(QSize(4, 2));
    frame.pixels.assign(frame.pixels.size(), number);
    return frame;
}

/** Holds whoever comes, until it is opened. */
class Gate
{
public:
    void pass()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        ++m_count;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_isOpen; });
    }
    void open()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOpen = true;
        m_changed.notify_all();
    }
    int count()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isOpen = false;
    int m_count = 0;
};

} // namespace

class tst_KdFramePump : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aFrameIsShownOnAnotherThread();
    void onlyTheLatestWaits();
    void whoPostsNeverWaits();
    void aDroppedFrameIsNotShown();
    void memoryIsUsedAgain();
    void theEndWaitsForTheCallThatRuns();
};

void tst_KdFramePump::aFrameIsShownOnAnotherThread()
{
    const std::thread::id testThread = std::this_thread::get_id();
    std::atomic<bool> isElsewhere{false};
    std::atomic<int> seen{-1};
    KdFramePump pump([&](KdFramePump::Frame& frame) {
        isElsewhere = std::this_thread::get_id() != testThread;
        seen = frame.size == QSize(4, 2) && frame.stride() == 16 ? frame.pixels[31] : -2;
    });
    pump.post(numbered(pump, 7));
    QTRY_COMPARE(seen.load(), 7);
    QVERIFY(isElsewhere);
}

void tst_KdFramePump::onlyTheLatestWaits()
{
    Gate gate;
    std::mutex mutex;
    std::vector<int> shown;
    KdFramePump pump([&](KdFramePump::Frame& frame) {
        gate.pass();
        const std::lock_guard<std::mutex> lock(mutex);
        shown.push_back(frame.pixels[0]);
    });
    pump.post(numbered(pump, 1));
    QTRY_COMPARE(gate.count(), 1);
    for (uchar number = 2; number < 100; ++number) {
        pump.post(numbered(pump, number));
    }
    gate.open();
    const auto all = [&] {
        const std::lock_guard<std::mutex> lock(mutex);
        return shown;
    };
    QTRY_COMPARE(all(), (std::vector<int>{1, 99}));
}

void tst_KdFramePump::whoPostsNeverWaits()
{
    Gate gate;
    KdFramePump pump([&](KdFramePump::Frame&) { gate.pass(); });
    pump.post(numbered(pump, 0));
    QTRY_COMPARE(gate.count(), 1);
    for (int i = 0; i < 1000; ++i) {
        pump.post(numbered(pump, 0)); // would hang here
    }
    gate.open();
    QTRY_COMPARE(gate.count(), 2);
}

void tst_KdFramePump::aDroppedFrameIsNotShown()
{
    Gate gate;
    KdFramePump pump([&](KdFramePump::Frame&) { gate.pass(); });
    pump.post(numbered(pump, 1));
    QTRY_COMPARE(gate.count(), 1);
    pump.post(numbered(pump, 2));
    pump.drop();
    gate.open();
    pump.post(numbered(pump, 3));
    QTRY_COMPARE(gate.count(), 2);
}

void tst_KdFramePump::memoryIsUsedAgain()
{
    std::atomic<int> count{0};
    std::mutex mutex;
    QSet<const uchar*> places;
    KdFramePump pump([&](KdFramePump::Frame& frame) {
        const std::lock_guard<std::mutex> lock(mutex);
        places.insert(frame.pixels.data());
        ++count;
    });
    for (int i = 0; i < 20; ++i) {
        pump.post(pump.create(QSize(640, 480)));
        QTRY_COMPARE(count.load(), i + 1);
    }
    const std::lock_guard<std::mutex> lock(mutex);
    QVERIFY2(places.size() <= 4, qPrintable(QString::number(places.size())));
}

void tst_KdFramePump::theEndWaitsForTheCallThatRuns()
{
    for (int round = 0; round < 200; ++round) {
        auto alive = std::make_unique<std::atomic<bool>>(true);
        std::atomic<int> wrong{0};
        {
            KdFramePump pump([&](KdFramePump::Frame&) { wrong += *alive ? 0 : 1; });
            pump.post(numbered(pump, 1));
            pump.post(numbered(pump, 2));
        }
        *alive = false;
        QCOMPARE(wrong.load(), 0);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdFramePump>(argc, argv);
}

#include "tst_KdFramePump.moc"

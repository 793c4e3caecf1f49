#include <KdVBLModel/KdMaskWorker.h>

#include <algorithm>
#include <utility>

namespace {
constexpr double kRestPerWork = 2.0;
}

class KdMaskWorker::State
{
public:
    State(MakeFinder makeFinder, Clock clock)
        : m_makeFinder(std::move(makeFinder)), m_clock(std::move(clock))
    {
    }

    bool wants() const;
    int begin();
    double now() const { return m_clock(); }
    void work(const cv::Mat& picture, double seconds, int madeFor);
    cv::Mat newest() const;
    void reset();
    bool waitForMask(Milliseconds patience) const;

private:
    void finish(const cv::Mat& mask, double worked, int madeFor);

    const MakeFinder m_makeFinder;
    const Clock m_clock;
    std::unique_ptr<Finder> m_finder; ///< the thread's, as is the next
    int m_finderGeneration = 0;

    mutable std::mutex m_mutex; ///< guards what follows
    mutable std::condition_variable m_done;
    bool m_isBusy = false;
    double m_nextTime = 0.0;
    int m_generation = 0;
    cv::Mat m_newest;
};

bool KdMaskWorker::State::wants() const
{
    const double seconds = now();
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_isBusy && seconds >= m_nextTime;
}

/** @return what the mask is made for. */
int KdMaskWorker::State::begin()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isBusy = true;
    return m_generation;
}

void KdMaskWorker::State::work(const cv::Mat& picture, double seconds, int madeFor)
{
    const double start = now();
    if (!m_finder || m_finderGeneration != madeFor) {
        m_finder = m_makeFinder();
        m_finderGeneration = madeFor;
    }
    const cv::Mat mask = m_finder->maskOf(picture, seconds);
    finish(mask, now() - start, madeFor);
}

void KdMaskWorker::State::finish(const cv::Mat& mask, double worked, int madeFor)
{
    const double rest = std::max(1.0 / kHighestRate - worked, kRestPerWork * worked);
    const double seconds = now();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (madeFor != m_generation) {
        return;
    }
    if (!mask.empty()) {
        m_newest = mask;
    }
    m_nextTime = seconds + rest;
    m_isBusy = false;
    m_done.notify_all();
}

cv::Mat KdMaskWorker::State::newest() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_newest;
}

void KdMaskWorker::State::reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_generation;
    m_newest = cv::Mat();
    m_nextTime = 0.0;
    m_isBusy = false;
    m_done.notify_all();
}

bool KdMaskWorker::State::waitForMask(Milliseconds patience) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_done.wait_for(lock, patience, [this] { return !m_isBusy; });
}

double KdMaskWorker::monotonicSeconds()
{
    using Seconds = std::chrono::duration<double>;
    return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

KdMaskWorker::KdMaskWorker(MakeFinder makeFinder, Clock clock)
    : m_state(std::make_shared<State>(std::move(makeFinder), std::move(clock)))
{
}

KdMaskWorker::~KdMaskWorker() = default;

bool KdMaskWorker::wants() const
{
    return m_state->wants();
}

void KdMaskWorker::give(const cv::Mat& picture)
{
    const int madeFor = m_state->begin();
    const double seconds = m_state->now();
    m_thread.post(
        [state = m_state, picture, seconds, madeFor] { state->work(picture, seconds, madeFor); });
}

cv::Mat KdMaskWorker::newest() const
{
    return m_state->newest();
}

void KdMaskWorker::reset()
{
    m_state->reset();
}

bool KdMaskWorker::waitForMask(Milliseconds patience) const
{
    return m_state->waitForMask(patience);
}

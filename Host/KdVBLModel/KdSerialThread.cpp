#include <KdVBLModel/KdSerialThread.h>

#include <algorithm>
#include <deque>
#include <utility>

class KdSerialThread::State
{
public:
    State(Task tick, Milliseconds interval) : m_tick(std::move(tick)), m_interval(interval) {}

    void run();
    void post(Task task);
    void postAtRest(Task task, Milliseconds rest);
    void setTicking(bool on);
    void finish();
    bool waitUntilEnded(Milliseconds patience);

private:
    using Clock = std::chrono::steady_clock;

    std::optional<Task> next();
    std::optional<Task> dueTask(Clock::time_point nextTick);
    void wait(std::unique_lock<std::mutex>& lock, Clock::time_point nextTick);
    bool ticks() const { return m_isTicking && m_tick; }

    const Task m_tick;
    const Milliseconds m_interval;

    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    std::deque<Task> m_tasks;
    Task m_atRest;
    Clock::time_point m_restEnd;
    bool m_isTicking = false;
    bool m_isFinishing = false;
    bool m_hasEnded = false;
};

void KdSerialThread::State::run()
{
    while (std::optional<Task> task = next()) {
        (*task)();
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_hasEnded = true;
    m_changed.notify_all();
}

/** @return what to do now, nothing at the end. */
std::optional<KdSerialThread::Task> KdSerialThread::State::next()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const Clock::time_point nextTick = Clock::now() + m_interval;
    while (m_tasks.empty() && !m_isFinishing) {
        if (std::optional<Task> due = dueTask(nextTick)) {
            return due;
        }
        wait(lock, nextTick);
    }
    if (m_tasks.empty()) {
        return std::nullopt;
    }
    Task task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return task;
}

std::optional<KdSerialThread::Task> KdSerialThread::State::dueTask(Clock::time_point nextTick)
{
    const Clock::time_point now = Clock::now();
    if (m_atRest && now >= m_restEnd) {
        return std::exchange(m_atRest, nullptr);
    }
    return ticks() && now >= nextTick ? std::optional<Task>(m_tick) : std::nullopt;
}

void KdSerialThread::State::wait(std::unique_lock<std::mutex>& lock, Clock::time_point nextTick)
{
    constexpr Clock::time_point never = Clock::time_point::max();
    const Clock::time_point due =
        std::min(m_atRest ? m_restEnd : never, ticks() ? nextTick : never);
    if (due == never) {
        m_changed.wait(lock);
    } else {
        m_changed.wait_until(lock, due);
    }
}

void KdSerialThread::State::post(Task task)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isFinishing) {
        m_tasks.push_back(std::move(task));
        m_changed.notify_all();
    }
}

void KdSerialThread::State::postAtRest(Task task, Milliseconds rest)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isFinishing) {
        m_atRest.swap(task); // the former one goes without the lock: it may own who knows what
        m_restEnd = Clock::now() + rest;
        m_changed.notify_all();
    }
}

void KdSerialThread::State::setTicking(bool on)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isTicking = on;
    m_changed.notify_all();
}

void KdSerialThread::State::finish()
{
    Task dropped; // without the lock, as above
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_atRest.swap(dropped);
    m_isFinishing = true;
    m_changed.notify_all();
}

bool KdSerialThread::State::waitUntilEnded(Milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, patience, [this] { return m_hasEnded; });
}

KdSerialThread::KdSerialThread(Task tick, Milliseconds interval)
    : m_state(std::make_shared<State>(std::move(tick), interval))
    , m_thread([state = m_state] { state->run(); })
{
}

KdSerialThread::~KdSerialThread()
{
    m_state->finish();
    if (!m_thread.joinable()) {
        return;
    }
    if (m_thread.get_id() == std::this_thread::get_id()) {
        m_thread.detach();
    } else {
        m_thread.join();
    }
}

void KdSerialThread::post(Task task)
{
    m_state->post(std::move(task));
}

void KdSerialThread::postAtRest(Task task, Milliseconds rest)
{
    m_state->postAtRest(std::move(task), rest);
}

void KdSerialThread::setTicking(bool on)
{
    m_state->setTicking(on);
}

bool KdSerialThread::finish(Milliseconds patience)
{
    m_state->finish();
    if (!m_thread.joinable()) {
        return true;
    }
    if (m_state->waitUntilEnded(patience)) {
        m_thread.join();
        return true;
    }
    m_thread.detach();
    return false;
}

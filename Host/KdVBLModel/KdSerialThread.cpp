#include <KdVBLModel/KdSerialThread.h>

#include <deque>

class KdSerialThread::State
{
public:
    State(Task tick, Milliseconds interval) : m_tick(std::move(tick)), m_interval(interval) {}

    void run();
    void post(Task task);
    void setTicking(bool on);
    void finish();
    bool waitUntilEnded(Milliseconds patience);

private:
    std::optional<Task> next();

    const Task m_tick;
    const Milliseconds m_interval;

    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    std::deque<Task> m_tasks;
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
    const auto hasWork = [this] { return !m_tasks.empty() || m_isFinishing; };
    while (!hasWork()) {
        if (!m_isTicking || !m_tick) {
            m_changed.wait(lock);
        } else if (!m_changed.wait_for(lock, m_interval, hasWork)) {
            return m_tick;
        }
    }
    if (m_tasks.empty()) {
        return std::nullopt;
    }
    Task task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return task;
}

void KdSerialThread::State::post(Task task)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isFinishing) {
        m_tasks.push_back(std::move(task));
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
    const std::lock_guard<std::mutex> lock(m_mutex);
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

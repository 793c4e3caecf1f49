#include <Studio/StudioWorkGate.h>

void StudioWorkGate::hold()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_held = true;
}

void StudioWorkGate::release()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_held = false;
    }
    m_changed.notify_all();
}

bool StudioWorkGate::isHeld() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_held;
}

void StudioWorkGate::cancel()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_cancelled = true;
    }
    m_changed.notify_all();
}

bool StudioWorkGate::pass()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return m_cancelled || !m_held; });
    return !m_cancelled;
}

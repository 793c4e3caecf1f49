#include "KdContractHold.h"

#include <chrono>

void KdContractHold::onTimeCallback(long long msec)
{
    Q_UNUSED(msec)
    hold();
}

void KdContractHold::onVolumeCallback(int volume)
{
    Q_UNUSED(volume)
    hold();
}

void KdContractHold::onFrameChangedCallback(int width, int height, uint8_t* pixels)
{
    Q_UNUSED(width)
    Q_UNUSED(height)
    Q_UNUSED(pixels)
    hold();
}

void KdContractHold::letGo()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_letsGo = true;
    }
    m_change.notify_all();
}

void KdContractHold::hold()
{
    ++m_inside;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_change.wait_for(lock, std::chrono::milliseconds(m_limitMs), [this] { return m_letsGo; });
    }
    --m_inside;
}

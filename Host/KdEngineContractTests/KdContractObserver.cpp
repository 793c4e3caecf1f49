#include "KdContractObserver.h"

namespace {

constexpr int kFullScale = 100;

} // namespace

void KdContractObserver::enter()
{
    m_onMainThread = m_onMainThread || std::this_thread::get_id() == m_mainThread;
    m_afterRemoval = m_afterRemoval || m_isRemoved || m_isGone;
}

void KdContractObserver::onCaptureDeviceCallback(int devStatus, int deviceIdx)
{
    enter();
    m_nonsense = m_nonsense || devStatus < KdVBLMODEL::fcdWebcamListChanged || deviceIdx < -1;
}

void KdContractObserver::onTimeCallback(long long msec)
{
    enter();
    m_nonsense = m_nonsense || msec < 0;
    m_lastTime = msec;
    ++m_times;
}

void KdContractObserver::onVolumeCallback(int volume)
{
    enter();
    m_nonsense = m_nonsense || volume < 0 || volume > kFullScale;
    ++m_volumes;
}

void KdContractObserver::onFrameChangedCallback(int width, int height, uint8_t* pixels)
{
    enter();
    m_nonsense = m_nonsense || width <= 0 || height <= 0 || !pixels;
    m_width = width;
    m_height = height;
    ++m_frames;
}

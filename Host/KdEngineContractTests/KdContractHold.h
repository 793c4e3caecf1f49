#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

/** Keeps an engine inside its calls until it is told to let go, or for a while. */
class KdContractHold : public KdVBLMODEL::IKdRecorderEventObserver
{
public:
    /** @param limitMs how long a call is held at most */
    explicit KdContractHold(int limitMs) : m_limitMs(limitMs) {}

    void onTimeCallback(long long msec) override;
    void onVolumeCallback(int volume) override;
    void onFrameChangedCallback(int width, int height, uint8_t* pixels) override;

    /** @return whether a call is running */
    bool isInside() const { return m_inside > 0; }
    /** No call is held from now on. */
    void letGo();

private:
    void hold();

    const int m_limitMs;
    std::atomic<int> m_inside{0};
    std::mutex m_mutex;
    std::condition_variable m_change;
    bool m_letsGo = false;
};

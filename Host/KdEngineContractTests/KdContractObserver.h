#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QSize>

#include <atomic>
#include <thread>

/** Notes what an engine reports, on whatever thread that comes. */
class KdContractObserver : public KdVBLMODEL::IKdRecorderEventObserver
{
public:
    KdContractObserver() = default;
    ~KdContractObserver() override { m_isGone = true; }

    void onCaptureDeviceCallback(int devStatus, int deviceIdx) override;
    void onTimeCallback(long long msec) override;
    void onVolumeCallback(int volume) override;
    void onFrameChangedCallback(int width, int height, uint8_t* pixels) override;

    int times() const { return m_times; }
    int volumes() const { return m_volumes; }
    int frames() const { return m_frames; }
    long long lastTime() const { return m_lastTime; }
    QSize lastFrame() const { return {m_width, m_height}; }

    /** From now on every callback is one too many. */
    void setRemoved() { m_isRemoved = true; }

    bool wasCalledOnTheMainThread() const { return m_onMainThread; }
    bool wasCalledAfterRemoval() const { return m_afterRemoval; }
    bool hasHeardNonsense() const { return m_nonsense; }

private:
    void enter();

    const std::thread::id m_mainThread = std::this_thread::get_id();
    std::atomic<int> m_times{0};
    std::atomic<int> m_volumes{0};
    std::atomic<int> m_frames{0};
    std::atomic<long long> m_lastTime{-1};
    std::atomic<int> m_width{0};
    std::atomic<int> m_height{0};
    std::atomic<bool> m_isRemoved{false};
    std::atomic<bool> m_isGone{false};
    std::atomic<bool> m_onMainThread{false};
    std::atomic<bool> m_afterRemoval{false};
    std::atomic<bool> m_nonsense{false};
};

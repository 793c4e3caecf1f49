#include <KdVBLModel/KdCallbackPump.h>

using namespace KdVBLMODEL;

KdCallbackPump::~KdCallbackPump()
{
    m_observers.clear();
}

void KdCallbackPump::addObserver(IKdRecorderEventObserver* observer)
{
    m_observers.add(observer);
}

void KdCallbackPump::removeObserver(IKdRecorderEventObserver* observer)
{
    m_observers.remove(observer);
}

void KdCallbackPump::setSwitch(Switch kind, bool on)
{
    m_switches[kind] = on;
}

template <typename Change>
void KdCallbackPump::post(Change change)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    change(m_pending);
    if (!m_pending.isScheduled) {
        m_pending.isScheduled = true;
        m_thread.post([this] { deliver(); });
    }
}

void KdCallbackPump::postDevice(_KdCaptureDeviceStatus status, int index)
{
    post([&](Pending& pending) {
        for (const DeviceEvent& event : pending.devices) {
            if (event.status == status && event.index == index) {
                return;
            }
        }
        pending.devices.push_back({status, index});
    });
}

void KdCallbackPump::postTime(qint64 msec)
{
    post([msec](Pending& pending) { pending.time = msec; });
}

void KdCallbackPump::postLevel(int level)
{
    post([level](Pending& pending) { pending.level = level; });
}

void KdCallbackPump::showFrame(int width, int height, uchar* argb)
{
    if (isOn(LevelSwitch)) {
        m_observers.notify([&](IKdRecorderEventObserver& observer) {
            observer.onFrameChangedCallback(width, height, argb);
        });
    }
}

void KdCallbackPump::dropTime()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pending.time.reset();
}

void KdCallbackPump::deliver()
{
    Pending pending;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::swap(pending, m_pending);
    }
    for (const DeviceEvent& event : pending.devices) {
        if (isOn(DeviceSwitch)) {
            m_observers.notify([&event](IKdRecorderEventObserver& observer) {
                observer.onCaptureDeviceCallback(event.status, event.index);
            });
        }
    }
    if (pending.time && isOn(TimeSwitch)) {
        m_observers.notify(
            [&](IKdRecorderEventObserver& observer) { observer.onTimeCallback(*pending.time); });
    }
    if (pending.level && isOn(LevelSwitch)) {
        m_observers.notify(
            [&](IKdRecorderEventObserver& observer) { observer.onVolumeCallback(*pending.level); });
    }
}

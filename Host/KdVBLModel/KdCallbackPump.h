#pragma once

#include <KdCore/KdObserverList.h>
#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdSerialThread.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <array>
#include <atomic>
#include <vector>

/**
 * Calls a recorder's observers, on a thread that does nothing else: no operation of a recorder ever
 * waits for what an observer does, but the removal of that observer.
 *
 * Of times and levels only the latest counts; an observer that is slow gets fewer. All operations
 * may be called on any thread; posting never blocks.
 */
class KDVBLMODEL_EXPORT KdCallbackPump
{
public:
    /** As the recorder's callback switches are numbered. All are off at first. */
    enum Switch
    {
        DeviceSwitch = 1,
        TimeSwitch = 2,
        LevelSwitch = 3
    };

    KdCallbackPump() = default;
    /** No call runs or starts afterwards. */
    ~KdCallbackPump();

    void addObserver(KdVBLMODEL::IKdRecorderEventObserver* observer);
    /** A barrier: afterwards no call on the observer runs on another thread or starts. */
    void removeObserver(KdVBLMODEL::IKdRecorderEventObserver* observer);
    bool hasObservers() const { return !m_observers.isEmpty(); }
    void removeAllObservers() { m_observers.clear(); }

    void setSwitch(Switch kind, bool on);
    bool isOn(Switch kind) const { return m_switches[kind]; }

    /** An event that waits already is not doubled. */
    void postDevice(KdVBLMODEL::_KdCaptureDeviceStatus status, int index);
    void postTime(qint64 msec);
    void postLevel(int level);
    /** Calls the observers at once, on this thread, unless the switch of levels is off.
     * @param argb valid during the call */
    void showFrame(int width, int height, uchar* argb);
    /** Forgets a time that waits. */
    void dropTime();

private:
    struct DeviceEvent
    {
        int status;
        int index;
    };
    struct Pending
    {
        std::vector<DeviceEvent> devices;
        std::optional<qint64> time;
        std::optional<int> level;
        bool isScheduled = false;
    };

    template <typename Change>
    void post(Change change);
    void deliver();

    KdObserverList<KdVBLMODEL::IKdRecorderEventObserver> m_observers;
    std::array<std::atomic<bool>, 4> m_switches{};
    std::mutex m_mutex; ///< guards what waits; never held during a call
    Pending m_pending;
    KdSerialThread m_thread;
};

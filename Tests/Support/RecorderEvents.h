#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QPair>
#include <QVector>

#include <mutex>
#include <thread>
#include <vector>

/** An observer that notes what a recorder reports, for a test to look at from its own thread. */
class RecorderEvents : public KdVBLMODEL::IKdRecorderEventObserver
{
    template <typename Read>
    auto read(Read value) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return value();
    }

    template <typename Value>
    static QVector<Value> copyOf(const std::vector<Value>& values)
    {
        return QVector<Value>(values.begin(), values.end());
    }

public:
    RecorderEvents() : m_testThread(std::this_thread::get_id()) {}

    void onCaptureDeviceCallback(int status, int index) override
    {
        note([&] { m_deviceEvents.push_back({status, index}); });
    }
    void onTimeCallback(long long msec) override
    {
        note([&] { m_times.push_back(msec); });
    }
    void onVolumeCallback(int volume) override
    {
        note([&] { m_levels.push_back(volume); });
    }

    using DeviceEvents = QVector<QPair<int, int>>;

    /** (status, index) in the order reported. */
    DeviceEvents deviceEvents() const
    {
        return read([this] { return copyOf(m_deviceEvents); });
    }
    QVector<qint64> times() const
    {
        return read([this] { return copyOf(m_times); });
    }
    QVector<int> levels() const
    {
        return read([this] { return copyOf(m_levels); });
    }
    /** -1 when there was none. */
    qint64 lastTime() const
    {
        return read([this] { return m_times.empty() ? -1 : m_times.back(); });
    }
    int lastLevel() const
    {
        return read([this] { return m_levels.empty() ? -1 : m_levels.back(); });
    }
    /** Whether any call came on the thread that made this object: none may. */
    bool wasCalledOnTestThread() const
    {
        return read([this] { return m_wasCalledOnTestThread; });
    }
    void clear()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_deviceEvents.clear();
        m_times.clear();
        m_levels.clear();
    }

private:
    template <typename Note>
    void note(Note take)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_wasCalledOnTestThread |= std::this_thread::get_id() == m_testThread;
        take();
    }

    const std::thread::id m_testThread;
    mutable std::mutex m_mutex;
    // Not Qt's containers: their copies share memory, which outlives the lock.
    std::vector<QPair<int, int>> m_deviceEvents;
    std::vector<qint64> m_times;
    std::vector<int> m_levels;
    bool m_wasCalledOnTestThread = false;
};

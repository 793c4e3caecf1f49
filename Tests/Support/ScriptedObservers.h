#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/** The observers of one scripted recorder, with the contract's promise that removing one is a
 * barrier. */
class ScriptedObservers
{
public:
    using Observer = KdVBLMODEL::IKdRecorderEventObserver;

    void add(Observer* observer);
    /** Returns when no call of the observer is running on another thread; none will start. */
    void remove(Observer* observer);
    void clear();
    int count() const;
    /** Calls each observer on this thread, without a lock. @return how many were called. */
    int deliver(const std::function<void(Observer&)>& call);

private:
    struct Running
    {
        Observer* observer;
        std::thread::id thread;
    };

    bool begin(Observer* observer);
    void end(Observer* observer);
    bool runsElsewhere(Observer* observer) const;

    mutable std::mutex m_mutex;
    std::condition_variable m_ended;
    std::vector<Observer*> m_observers;
    std::vector<Running> m_running;
};

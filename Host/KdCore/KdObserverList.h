#pragma once

/**
 * @file
 * Observers that are called on one thread and removed on another.
 */

#include <KdCore/KdCoreExport.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

/** Says in the log that an observer let an exception escape, which no observer may. */
KDCORE_EXPORT void kdLogObserverException();

/**
 * Observers that may be called on any thread and may be removed from any thread at any time.
 *
 * Removing is a barrier: when remove() returns, no call on that observer is running on another
 * thread and none will start. From inside the observer's own call it returns at once, and only that
 * one call is left to end. No lock is held during a call, so an observer may do anything here but
 * remove an observer that waits, in its own call, for this one.
 *
 * All operations may be called on any thread. The observers stay the caller's.
 */
template <typename Observer>
/**
 * Observers that may be called on any thread and may be removed from any thread at any time.
 *
 * Removing is a barrier: when remove() returns, no call on that observer is running on another
 * thread and none will start. From inside the observer's own call it returns at once, and only that
 * one call is left to end. No lock is held during a call, so an observer may do anything here but
 * remove an observer that waits, in its own call, for this one.
 *
 * All operations may be called on any thread. The observers stay the caller's.
 * @tparam Observer the interface that is called.
 */
class KdObserverList
{
public:
    /** An empty list. */
    KdObserverList() = default;
    /** A barrier for all that are left, as clear(). Not from inside an observer's call. */
    ~KdObserverList() { clear(); }

    /**
     * @param observer called from the next notify() on. Null and an observer that is there already
     * change nothing.
     */
    void add(Observer* observer)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (observer && !contains(observer)) {
            m_observers.push_back(observer);
        }
    }

    /**
     * The barrier, see above.
     * @param observer called no more. One that is not there is waited for all the same.
     */
    void remove(Observer* observer)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), observer),
                          m_observers.end());
        m_callEnded.wait(lock, [this, observer] { return !runsElsewhere(observer); });
    }

    /** Removes all: a barrier for each of them. */
    void clear()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_observers.clear();
        m_callEnded.wait(lock, [this] {
            return std::none_of(m_calls.begin(), m_calls.end(), [](const Call& running) {
                return running.thread != std::this_thread::get_id();
            });
        });
    }

    /** @return whether there is nobody to call. */
    bool isEmpty() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_observers.empty();
    }

    /** Calls function(*observer) for every observer, in the order added, on this thread. */
    template <typename Function>
    /**
     * Calls every observer, in the order added, on this thread; those that are added meanwhile are
     * left out. What an observer throws is logged and goes no further.
     * @tparam Function callable with an Observer&.
     * @param function called once for each observer.
     */
    void notify(Function&& function)
    {
        const std::vector<Observer*> observers = snapshot();
        for (Observer* observer : observers) {
            if (begin(observer)) {
                callSafely(function, *observer);
                end(observer);
            }
        }
    }

private:
    KdObserverList(const KdObserverList&) = delete;
    KdObserverList& operator=(const KdObserverList&) = delete;

    struct Call
    {
        Observer* observer;
        std::thread::id thread;
    };

    template <typename Function>
    static void callSafely(Function& function, Observer& observer)
    {
        try {
            function(observer);
        } catch (...) {
            kdLogObserverException();
        }
    }

    std::vector<Observer*> snapshot() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_observers;
    }

    bool begin(Observer* observer)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!contains(observer)) {
            return false;
        }
        m_calls.push_back({observer, std::this_thread::get_id()});
        return true;
    }

    void end(Observer* observer)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            const auto own = std::find_if(m_calls.rbegin(), m_calls.rend(), [&](const Call& call) {
                return call.observer == observer && call.thread == std::this_thread::get_id();
            });
            m_calls.erase(std::next(own).base());
        }
        m_callEnded.notify_all();
    }

    bool contains(Observer* observer) const
    {
        return std::find(m_observers.begin(), m_observers.end(), observer) != m_observers.end();
    }

    bool runsElsewhere(Observer* observer) const
    {
        return std::any_of(m_calls.begin(), m_calls.end(), [observer](const Call& call) {
            return call.observer == observer && call.thread != std::this_thread::get_id();
        });
    }

    mutable std::mutex m_mutex;
    std::condition_variable m_callEnded;
    std::vector<Observer*> m_observers;
    std::vector<Call> m_calls; ///< running now, on whatever thread
};

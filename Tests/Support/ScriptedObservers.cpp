#include "ScriptedObservers.h"

#include <algorithm>

void ScriptedObservers::add(Observer* observer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (observer &&
        std::find(m_observers.begin(), m_observers.end(), observer) == m_observers.end()) {
        m_observers.push_back(observer);
    }
}

void ScriptedObservers::remove(Observer* observer)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), observer),
                      m_observers.end());
    m_ended.wait(lock, [this, observer] { return !runsElsewhere(observer); });
}

void ScriptedObservers::clear()
{
    std::vector<Observer*> observers;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        observers = m_observers;
    }
    for (Observer* observer : observers) {
        remove(observer);
    }
}

int ScriptedObservers::count() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<int>(m_observers.size());
}

int ScriptedObservers::deliver(const std::function<void(Observer&)>& call)
{
    std::vector<Observer*> observers;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        observers = m_observers;
    }
    int called = 0;
    for (Observer* observer : observers) {
        if (begin(observer)) {
            call(*observer);
            end(observer);
            ++called;
        }
    }
    return called;
}

bool ScriptedObservers::begin(Observer* observer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (std::find(m_observers.begin(), m_observers.end(), observer) == m_observers.end()) {
        return false;
    }
    m_running.push_back({observer, std::this_thread::get_id()});
    return true;
}

void ScriptedObservers::end(Observer* observer)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto isThisCall = [observer](const Running& running) {
            return running.observer == observer && running.thread == std::this_thread::get_id();
        };
        m_running.erase(std::find_if(m_running.begin(), m_running.end(), isThisCall));
    }
    m_ended.notify_all();
}

bool ScriptedObservers::runsElsewhere(Observer* observer) const
{
    return std::any_of(m_running.begin(), m_running.end(), [observer](const Running& running) {
        return running.observer == observer && running.thread != std::this_thread::get_id();
    });
}

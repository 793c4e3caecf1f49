#pragma once

#include <condition_variable>
#include <mutex>

/**
 * Holds work on other threads back for a while, or ends it. The work passes the gate before each of
 * its steps, which is why a step should be short. Any thread.
 */
class StudioWorkGate
{
public:
    /** Work that comes to the gate from now on waits there; nobody waits for work that is beyond
     * it. Without effect while held already. */
    void hold();
    void release();
    bool isHeld() const;
    /** Whoever waits or comes to the gate is told to end, for good. */
    void cancel();

    /** Waits while the gate is held. @return whether to go on */
    bool pass();

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_held = false;
    bool m_cancelled = false;
};

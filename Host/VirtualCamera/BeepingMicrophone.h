#pragma once

#include <pipewire/pipewire.h>

#include <atomic>

/**
 * A microphone in the session's sound server that beeps whenever it is told to, as one that hears
 * it: the last sample of a block belongs to the instant at which the block is asked for. It has no
 * clock of its own and runs with the device that it is linked to.
 */
class BeepingMicrophone
{
public:
    BeepingMicrophone() = default;

    /** @return whether the server took it; core outlives this. */
    bool plug(pw_core* core, const char* node, const char* description);

    /** @param second on the monotonic clock, not in the future. Any thread. */
    void beepAt(double second) { m_beep = second; }

    /**
     * Whether it hears without a gap, as it has for some seconds. On a machine that is too busy the
     * server leaves out blocks; what is recorded then is not in step from the beginning. Any
     * thread.
     */
    bool isSteadyAt(double second) const { return second >= m_steadyFrom; }

private:
    BeepingMicrophone(const BeepingMicrophone&) = delete;
    BeepingMicrophone& operator=(const BeepingMicrophone&) = delete;

    static void onProcess(void* self) { static_cast<BeepingMicrophone*>(self)->give(); }

    void give();
    double beginOf(uint32_t frames);

    pw_stream* m_stream = nullptr;
    spa_hook m_listener{};
    std::atomic<double> m_beep{-1.0}; ///< when the last one begins
    std::atomic<double> m_steadyFrom{0.0};
    double m_next = 0.0; ///< when the next sample is heard
};

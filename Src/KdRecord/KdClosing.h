#pragma once

/**
 * Lets a dialog be closed once, however it is closed and from within whatever its closing brings
 * up. A value; one thread.
 */
class KdClosing
{
public:
    /** @return whether a closing has begun now; false while one is under way, and after it. */
    bool begin();
    /** The closing is over; there is no other until reopen(). */
    void finish() { m_state = State::Done; }
    /** @return whether a closing has begun and is not over. */
    bool isUnderway() const { return m_state == State::Begun; }
    /** The dialog was opened again. Without effect while a closing is under way. */
    void reopen();

private:
    enum class State
    {
        NotYet,
        Begun,
        Done
    };

    State m_state = State::NotYet;
};

#include <KdRecord/KdClosing.h>

bool KdClosing::begin()
{
    if (m_state != State::NotYet) {
        return false;
    }
    m_state = State::Begun;
    return true;
}

void KdClosing::reopen()
{
    if (m_state == State::Done) {
        m_state = State::NotYet;
    }
}

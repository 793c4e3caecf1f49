#pragma once

#include <QElapsedTimer>

#include <functional>

/**
 * How long a recording was paused in all, in seconds, as closely as whoever presses the button can
 * tell: each press takes effect between its begin and its end, which are far apart on a busy
 * machine.
 */
class PauseSpans
{
public:
    using Press = std::function<void()>;

    void pause(const Press& press)
    {
        m_sincePressing.start();
        press();
        m_sincePressed.start();
    }

    void resume(const Press& press)
    {
        m_least += secondsSince(m_sincePressed);
        press();
        m_most += secondsSince(m_sincePressing);
    }

    /** Of the pause that lasts. */
    qint64 milliseconds() const { return m_sincePressed.elapsed(); }
    double least() const { return m_least; }
    double most() const { return m_most; }

    static double secondsSince(const QElapsedTimer& begin)
    {
        return static_cast<double>(begin.nsecsElapsed()) * 1e-9;
    }

private:
    QElapsedTimer m_sincePressing;
    QElapsedTimer m_sincePressed;
    double m_least = 0.0;
    double m_most = 0.0;
};

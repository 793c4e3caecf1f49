#pragma once

#include <QCoreApplication>

#include <functional>

class QWidget;

/** Measures a take by the panel's own clock and says when it is too short to keep. GUI thread. */
class KdMinimumTake
{
    Q_DECLARE_TR_FUNCTIONS(KdMinimumTake)

public:
    /** @return a time in ms that never goes back. */
    using Clock = std::function<qint64()>;

    static constexpr qint64 kMinimumMs = 1000;

    /** Measures by the system's monotonic clock. */
    KdMinimumTake();
    explicit KdMinimumTake(Clock clock);

    /** A take has begun now. */
    void restart();
    /** No take runs; none is too short. */
    void invalidate();
    /** @return whether a take has begun less than the minimum ago. */
    bool isTooShort() const;

    /** Tells the user; modal: whoever calls must look whether it still exists itself. */
    static void tellTooShort(QWidget* parent);

private:
    Clock m_clock;
    qint64 m_startMs = 0;
    bool m_isValid = false;
};

#include <KdRecord/KdMinimumTake.h>

#include <KdWidgets/KOldMessageDialog.h>

#include <QElapsedTimer>

#include <utility>

namespace {

KdMinimumTake::Clock monotonicClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

} // namespace

KdMinimumTake::KdMinimumTake() : KdMinimumTake(monotonicClock()) {}

KdMinimumTake::KdMinimumTake(Clock clock) : m_clock(std::move(clock)) {}

void KdMinimumTake::restart()
{
    m_startMs = m_clock();
    m_isValid = true;
}

void KdMinimumTake::invalidate()
{
    m_isValid = false;
}

bool KdMinimumTake::isTooShort() const
{
    return m_isValid && m_clock() - m_startMs < kMinimumMs;
}

void KdMinimumTake::tellTooShort(QWidget* parent)
{
    KOldMessageDialog::Infomation(
        [] { return tr("The recording is too short. Data cannot be saved."); }, parent);
}

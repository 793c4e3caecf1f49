#include <KdVBLModel/KdArrivalClock.h>

#include <algorithm>
#include <limits>

namespace {
constexpr qint64 kNsPerSecond = 1000000000;
constexpr qint64 kNever = std::numeric_limits<qint64>::max();
} // namespace

KdArrivalClock::KdArrivalClock(int framesPerSecond, qint64 memoryNs)
    : m_rate(framesPerSecond), m_memoryNs(memoryNs), m_beginNs(kNever), m_formerBeginNs(kNever)
{
}

qint64 KdArrivalClock::durationNs(qint64 frames) const
{
    // Seconds apart, so that days do not overflow.
    return frames / m_rate * kNsPerSecond + frames % m_rate * kNsPerSecond / m_rate;
}

void KdArrivalClock::arrived(qint64 frames, qint64 nowNs)
{
    m_received += frames;
    if (nowNs - m_spellNs >= m_memoryNs) {
        m_spellNs = nowNs;
        m_formerBeginNs = m_beginNs;
        m_beginNs = kNever;
    }
    m_beginNs = std::min(m_beginNs, nowNs - durationNs(m_received));
}

qint64 KdArrivalClock::beginNs() const
{
    return std::min(m_beginNs, m_formerBeginNs);
}

qint64 KdArrivalClock::positionAt(qint64 nowNs) const
{
    if (m_received == 0) {
        return 0;
    }
    const qint64 aheadNs = nowNs - beginNs() - durationNs(m_received);
    return m_received + std::clamp<qint64>(aheadNs, 0, kNsPerSecond / 10) * m_rate / kNsPerSecond;
}

qint64 KdArrivalClock::capturedAt(qint64 ns) const
{
    if (m_received == 0) {
        return 0;
    }
    const qint64 sinceNs = ns - beginNs();
    return sinceNs / kNsPerSecond * m_rate + sinceNs % kNsPerSecond * m_rate / kNsPerSecond;
}

qint64 KdArrivalClock::lateness(qint64 frames, qint64 nowNs) const
{
    return m_received == 0 ? 0 : nowNs - durationNs(m_received + frames) - beginNs();
}

#include <KdVBLModel/KdArrivalClock.h>

#include <algorithm>

namespace {
constexpr qint64 kNsPerSecond = 1000000000;
}

KdArrivalClock::KdArrivalClock(int framesPerSecond) : m_rate(framesPerSecond) {}

void KdArrivalClock::arrived(qint64 frames, qint64 nowNs)
{
    m_received += frames;
    m_lastFrames = frames;
    m_lastNs = nowNs;
}

qint64 KdArrivalClock::positionAt(qint64 nowNs) const
{
    // Bounded before it is multiplied: a source that has been silent for days must not overflow.
    const qint64 sinceNs = std::clamp<qint64>(nowNs - m_lastNs, 0, kNsPerSecond);
    return m_received + std::min(sinceNs * m_rate / kNsPerSecond, m_lastFrames);
}

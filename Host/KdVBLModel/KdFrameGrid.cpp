#include <KdVBLModel/KdFrameGrid.h>

#include <algorithm>

namespace {

constexpr qint64 kNsPerSecond = 1000000000;
/** Beside this the ear and the eye notice no difference, at any rate. */
constexpr qint64 kMostNs = 15000000;
constexpr int kPicturesToJudge = 30;

} // namespace

KdFrameGrid::KdFrameGrid(int numerator, int denominator)
    : m_numerator(numerator), m_denominator(denominator)
{
}

qint64 KdFrameGrid::slots(qint64 count) const
{
    // Seconds apart, so that days do not overflow.
    const qint64 units = count * m_denominator;
    return units / m_numerator * kNsPerSecond + units % m_numerator * kNsPerSecond / m_numerator;
}

qint64 KdFrameGrid::toleranceNs() const
{
    return std::min(frameNs() * 2 / 5, kMostNs);
}

void KdFrameGrid::beginAt(qint64 at)
{
    m_origin = at;
    m_slot = 0;
    m_lateSum = 0;
    m_lateCount = 0;
}

qint64 KdFrameGrid::place(qint64 at)
{
    if (m_slot < 0) {
        beginAt(at);
        return at;
    }
    const qint64 last = m_origin + slots(m_slot);
    const qint64 steps = std::max<qint64>(1, (at - last + frameNs() / 2) / frameNs());
    const qint64 even = m_origin + slots(m_slot + steps);
    if (std::abs(even - at) <= toleranceNs()) {
        m_slot += steps;
        return stepped(even, at);
    }
    beginAt(std::max(at, last + frameNs() / 4));
    return m_origin;
}

// A first picture that came late, or a clock that runs a little differently, would keep them all at
// the edge of what is tolerated.
qint64 KdFrameGrid::stepped(qint64 even, qint64 at)
{
    m_lateSum += even - at;
    ++m_lateCount;
    if (m_lateCount < kPicturesToJudge) {
        return even;
    }
    const qint64 lateNs = m_lateSum / m_lateCount;
    m_lateSum = 0;
    m_lateCount = 0;
    if (std::abs(lateNs) < toleranceNs() / 2) {
        return even;
    }
    beginAt(even - lateNs);
    return m_origin;
}

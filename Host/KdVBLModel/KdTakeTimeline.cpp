#include <KdVBLModel/KdTakeTimeline.h>

#include <algorithm>

namespace {

constexpr qint64 kNsPerSecond = 1000000000;
/** A block that comes so much before its time cannot have been captured now. */
constexpr qint64 kSurplusNs = 20000000;

/** Sound that a busy machine has lost parts the two for so long at most, or twice that; a source
 * whose blocks are none of its server's gives one without delay in less. */
constexpr qint64 kMemoryNs = 700000000;

} // namespace

KdTakeTimeline::KdTakeTimeline(int soundRate)
    : m_rate(soundRate), m_arrivals(std::max(1, soundRate), kMemoryNs)
{
    m_pauses.start(0);
}

qint64 KdTakeTimeline::framesOf(qint64 ns) const
{
    return ns / kNsPerSecond * m_rate + ns % kNsPerSecond * m_rate / kNsPerSecond;
}

qint64 KdTakeTimeline::durationNs(qint64 length) const
{
    return m_rate == 0 ? length
                       : length / m_rate * kNsPerSecond + length % m_rate * kNsPerSecond / m_rate;
}

qint64 KdTakeTimeline::missing(qint64 frames, qint64 nowNs, qint64 patienceNs) const
{
    const qint64 lateNs = m_arrivals.lateness(frames, nowNs);
    return lateNs > patienceNs ? framesOf(lateNs) : 0;
}

qint64 KdTakeTimeline::missingBefore(qint64 frames, qint64 nowNs) const
{
    return missing(frames, nowNs, m_isSilent ? 0 : kPatienceNs);
}

qint64 KdTakeTimeline::missingUntil(qint64 ns) const
{
    return m_rate == 0 ? 0 : missing(0, ns, kPatienceNs);
}

bool KdTakeTimeline::isSurplus(qint64 frames, qint64 nowNs)
{
    if (m_owed <= 0) {
        return false;
    }
    if (m_isSilent) {
        m_owedUntilNs = nowNs + kNsPerSecond;
    }
    if (nowNs > m_owedUntilNs) {
        m_owed = 0;
        return false;
    }
    const qint64 earlyNs = m_earlyNs - m_arrivals.lateness(frames, nowNs);
    if (earlyNs <= kSurplusNs) {
        return false;
    }
    m_owed -= frames;
    return true;
}

qint64 KdTakeTimeline::soundArrived(qint64 frames, qint64 nowNs)
{
    const qint64 begin = m_arrivals.received();
    m_earlyNs += std::max<qint64>(0, -m_arrivals.lateness(frames, nowNs));
    m_arrivals.arrived(frames, nowNs);
    m_isSilent = false;
    return begin;
}

qint64 KdTakeTimeline::silenceArrived(qint64 frames, qint64 nowNs)
{
    const qint64 begin = soundArrived(frames, nowNs);
    m_isSilent = true;
    m_owed += frames;
    m_earlyNs = 0;
    return begin;
}

qint64 KdTakeTimeline::positionAt(qint64 nowNs) const
{
    return m_rate == 0 ? nowNs : m_arrivals.positionAt(nowNs);
}

qint64 KdTakeTimeline::capturedAt(qint64 ns) const
{
    return m_rate == 0 ? ns : m_arrivals.capturedAt(ns);
}

bool KdTakeTimeline::isRecorded(qint64 position) const
{
    return !m_pauses.recorded(position, position + 1).empty();
}

void KdTakeTimeline::begin(qint64 position)
{
    m_hasBegun = true;
    m_begin = position;
    m_beginInFile = m_pauses.filePosition(position);
}

std::vector<KdPauseClock::Span> KdTakeTimeline::recorded(qint64 begin, qint64 end) const
{
    std::vector<KdPauseClock::Span> spans = m_pauses.recorded(std::max(begin, m_begin), end);
    for (KdPauseClock::Span& span : spans) {
        span.filePosition -= m_beginInFile;
    }
    return spans;
}

qint64 KdTakeTimeline::fileNs(qint64 position) const
{
    return durationNs(m_pauses.filePosition(position) - m_beginInFile);
}

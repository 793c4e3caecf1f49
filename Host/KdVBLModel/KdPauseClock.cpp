#include <KdVBLModel/KdPauseClock.h>

#include <algorithm>
#include <limits>

namespace {
constexpr qint64 kOpen = std::numeric_limits<qint64>::max();
}

void KdPauseClock::resume(qint64 at)
{
    if (m_isRunning) {
        return;
    }
    const qint64 begin = m_stretches.empty() ? at : std::max(at, m_stretches.back().end);
    m_stretches.push_back({begin, kOpen});
    m_isRunning = true;
}

void KdPauseClock::pause(qint64 at)
{
    if (!m_isRunning) {
        return;
    }
    m_stretches.back().end = std::max(at, m_stretches.back().begin);
    m_isRunning = false;
}

std::vector<KdPauseClock::Span> KdPauseClock::recorded(qint64 begin, qint64 end) const
{
    std::vector<Span> spans;
    qint64 fileBegin = 0;
    for (const Stretch& stretch : m_stretches) {
        const qint64 from = std::max(begin, stretch.begin);
        const qint64 to = std::min(end, stretch.end);
        if (from < to) {
            spans.push_back({from, to, fileBegin + (from - stretch.begin)});
        }
        fileBegin += stretch.end - stretch.begin;
    }
    return spans;
}

qint64 KdPauseClock::filePosition(qint64 at) const
{
    qint64 length = 0;
    for (const Stretch& stretch : m_stretches) {
        length += std::max<qint64>(0, std::min(at, stretch.end) - stretch.begin);
    }
    return length;
}

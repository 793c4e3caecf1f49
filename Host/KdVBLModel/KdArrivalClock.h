#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

/**
 * Where a source stands between two of its buffers: how much it must have captured by a time, told
 * by the buffers that came with the least delay. It makes the instant of a key press exact to a few
 * samples although sound arrives in blocks, in bursts, and sometimes late. Reads no clock; not
 * thread-safe.
 */
class KDVBLMODEL_EXPORT KdArrivalClock
{
public:
    /** @param memoryNs how long a buffer that came without delay counts, and at most twice that */
    explicit KdArrivalClock(int framesPerSecond, qint64 memoryNs = 1000000000);

    /** @param frames in the buffer @param nowNs a monotonic time */
    void arrived(qint64 frames, qint64 nowNs);

    /** @return frames arrived so far. */
    qint64 received() const { return m_received; }

    /** @return the position, in frames, that belongs to this time: at least what has arrived, and
     * not more than a tenth of a second ahead of it. */
    qint64 positionAt(qint64 nowNs) const;

    /** @return the position, in frames, that was captured at this time; it may lie before the first
     * or ahead of what has arrived. 0 before anything arrived. */
    qint64 capturedAt(qint64 ns) const;

    /** @return by how much a buffer that arrives now comes later than one without delay, or
     * earlier where that is negative. 0 for the first. */
    qint64 lateness(qint64 frames, qint64 nowNs) const;

private:
    qint64 beginNs() const;
    qint64 durationNs(qint64 frames) const;

    int m_rate;
    qint64 m_memoryNs;
    qint64 m_received = 0;
    // When a source would have begun that delivers without delay: the earliest such time that is
    // remembered, so that a source whose own clock runs slower is followed.
    qint64 m_beginNs;
    qint64 m_formerBeginNs;
    qint64 m_spellNs = 0; ///< when the current spell of remembering began
};

#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

/**
 * Where a source stands between two of its buffers: what has arrived, plus what the time since then
 * must have brought, at most one buffer. It makes the instant of a key press exact to a few samples
 * although audio arrives in blocks. Reads no clock; not thread-safe.
 */
class KDVBLMODEL_EXPORT KdArrivalClock
{
public:
    explicit KdArrivalClock(int framesPerSecond);

    /** @param frames in the buffer @param nowNs a monotonic time */
    void arrived(qint64 frames, qint64 nowNs);

    /** @return frames arrived so far. */
    qint64 received() const { return m_received; }

    /** @return the position, in frames, that belongs to this time. */
    qint64 positionAt(qint64 nowNs) const;

private:
    int m_rate;
    qint64 m_received = 0;
    qint64 m_lastFrames = 0;
    qint64 m_lastNs = 0;
};

#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

#include <vector>

/**
 * Maps positions on a source's time line to positions in the recorded file, where pauses are left
 * out. Positions are whole numbers of any one unit: audio frames, nanoseconds of running time.
 *
 * A pure function of what it was told: it reads no clock. Not thread-safe.
 */
class KDVBLMODEL_EXPORT KdPauseClock
{
public:
    /** A part of the source that goes into the file. */
    struct Span
    {
        qint64 begin;
        qint64 end;          ///< the first position after it
        qint64 filePosition; ///< where its begin lies in the file

        bool operator==(const Span& other) const
        {
            return begin == other.begin && end == other.end && filePosition == other.filePosition;
        }
    };

    /**
     * From here on positions go into the file (start, resume), or no longer do (pause, stop). Each
     * takes effect only in the state that it leaves, so that doubled calls change nothing; a
     * position before the former change counts as that of the former change.
     */
    void start(qint64 at) { resume(at); }
    void pause(qint64 at);
    void resume(qint64 at);
    void stop(qint64 at) { pause(at); }

    bool isRunning() const { return m_isRunning; }

    /** @return the parts of [begin, end) that go into the file, in order. */
    std::vector<Span> recorded(qint64 begin, qint64 end) const;

    /** @return how much of the file lies before this position of the source. */
    qint64 filePosition(qint64 at) const;

private:
    struct Stretch
    {
        qint64 begin;
        qint64 end;
    };

    std::vector<Stretch> m_stretches; ///< recorded, ascending; the last one is open while running
    bool m_isRunning = false;
};

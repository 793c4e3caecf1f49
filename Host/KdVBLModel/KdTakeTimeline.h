#pragma once

#include <KdVBLModel/KdArrivalClock.h>
#include <KdVBLModel/KdPauseClock.h>
#include <KdVBLModel/KdVBLModelExport.h>

/**
 * The one time line of a take on which pictures and sound meet: when something that was captured at
 * a time is shown or heard in the file, pauses left out.
 *
 * With sound the microphone is the clock. Its frames go into the file one behind the other, and a
 * picture belongs to the frame that was captured with it: however its clock runs beside the
 * computer's, the two stay together, for hours. Positions are then frames of sound, else
 * nanoseconds.
 *
 * A pure function of what it was told; reads no clock. Not thread-safe.
 */
class KDVBLMODEL_EXPORT KdTakeTimeline
{
public:
    /** @param soundRate frames per second; 0 for a take without sound */
    explicit KdTakeTimeline(int soundRate);

    /** Sound that is no later than this is only late, and makes up for it. */
    static constexpr qint64 kPatienceNs = 300000000;

    /**
     * The sound that is missing before a block, as an input that stopped for some time leaves it:
     * all of it after silence that was put in, else what is more than late.
     * @param frames of the block @param nowNs when it arrives
     * @return frames of silence to put in, by soundArrived(), before the block.
     */
    qint64 missingBefore(qint64 frames, qint64 nowNs) const;
    /** The same where no block comes: what is missing of the sound up to a time. */
    qint64 missingUntil(qint64 ns) const;
    /** Whether a block is one in whose place silence was put in before, as it seemed missing: it
     * comes sooner than it can have been captured, and has to be left out. To be asked once for
     * each block. */
    bool isSurplus(qint64 frames, qint64 nowNs);

    /** @return the position at which the block begins. */
    qint64 soundArrived(qint64 frames, qint64 nowNs);
    /** The same for silence that is put in. */
    qint64 silenceArrived(qint64 frames, qint64 nowNs);
    qint64 soundReceived() const { return m_arrivals.received(); }

    void pause(qint64 nowNs) { m_pauses.pause(positionAt(nowNs)); }
    void resume(qint64 nowNs) { m_pauses.resume(positionAt(nowNs)); }

    /** @return the position of what was captured at a time. */
    qint64 capturedAt(qint64 ns) const;
    bool isRecorded(qint64 position) const;

    /** The file begins at this position, which is recorded. */
    void begin(qint64 position);
    bool hasBegun() const { return m_hasBegun; }

    /** @return the parts of [begin, end) that are in the file; their file positions count from its
     * beginning. */
    std::vector<KdPauseClock::Span> recorded(qint64 begin, qint64 end) const;

    /** @return when what lies at a position is shown in the file. */
    qint64 fileNs(qint64 position) const;
    /** Nanoseconds for a length in the units of positions. */
    qint64 durationNs(qint64 length) const;

private:
    qint64 positionAt(qint64 nowNs) const;
    qint64 framesOf(qint64 ns) const;
    qint64 missing(qint64 frames, qint64 nowNs, qint64 patienceNs) const;

    int m_rate;
    KdArrivalClock m_arrivals;
    KdPauseClock m_pauses;
    bool m_hasBegun = false;
    qint64 m_begin = 0;
    qint64 m_beginInFile = 0; ///< as the pause clock counts
    bool m_isSilent = false;  ///< what arrived last was put in
    qint64 m_owed = 0;        ///< silence that was put in and whose sound may still come
    qint64 m_owedUntilNs = 0; ///< what comes later is what is captured then
    qint64 m_earlyNs = 0;     ///< by how much what came since was early, together
};

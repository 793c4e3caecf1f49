#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

/**
 * Where a picture stands in the file, told by when it was taken. A camera keeps its rate, but what
 * it says of each picture's time swings by some milliseconds: pictures of an even camera are placed
 * evenly, so that the file has the constant rate that was chosen. No picture is left out and none
 * is doubled: a camera that slows down in the dark, or keeps another rate than it says, gets its
 * pictures placed when they were taken. Where all pictures of a second are a little off, the whole
 * moves by as much.
 *
 * Times in nanoseconds. A pure function of what it was told; not thread-safe.
 */
class KDVBLMODEL_EXPORT KdFrameGrid
{
public:
    /** @param numerator, denominator pictures per second, both positive */
    KdFrameGrid(int numerator, int denominator);

    /** @param at when it was taken @return when it is shown: later than the one before. */
    qint64 place(qint64 at);

    /** @return how long a picture is shown at the chosen rate. */
    qint64 frameNs() const { return slots(1); }

    /** @return the farthest that a picture is shown from when it was taken, as long as they come no
     * closer together than a quarter of a frame. */
    qint64 toleranceNs() const;

private:
    qint64 slots(qint64 count) const;
    void beginAt(qint64 at);
    qint64 stepped(qint64 even, qint64 at);

    qint64 m_numerator;
    qint64 m_denominator;
    // The grid begins anew, at a picture that would not fit into it.
    qint64 m_origin = 0;
    qint64 m_slot = -1; ///< of the last picture; -1 before the first
    // How much too late the last pictures were shown.
    qint64 m_lateSum = 0;
    int m_lateCount = 0;
};

#pragma once

#include <KdVBLModel/KdFrameGrid.h>
#include <KdVBLModel/KdFrameRate.h>
#include <KdVBLModel/KdGst.h>

class KdClipWriter;

/**
 * Hands the pictures of a take to its writer, each when it is known how long it is shown. Times are
 * those of the file. Not thread-safe.
 */
class KdPictureFeed
{
public:
    /** @param writer outlives this */
    KdPictureFeed(KdClipWriter& writer, KdFrameRate rate);

    /** @param takenNs when it was taken; the first one begins the file */
    void show(KdGstBufferPtr picture, qint64 takenNs);

    /** Shows the last picture once more where no other came for some time, so that the file gets on
     * and a crash finds the sound in it. */
    void bridge(qint64 untilNs);

    bool isEmpty() const { return !m_waiting; }
    /** When the last picture ends, if nothing follows. */
    qint64 endNs() const;

    /** Ends the last picture there, or a moment after it began. */
    void finish(qint64 endNs);

private:
    void showAt(KdGstBufferPtr picture, qint64 ns);
    void pushWaiting(qint64 endNs);

    KdClipWriter& m_writer;
    KdFrameGrid m_grid;
    KdGstBufferPtr m_waiting; ///< the last one
    qint64 m_waitingNs = 0;
};

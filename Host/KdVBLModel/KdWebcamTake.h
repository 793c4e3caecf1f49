#pragma once

#include <KdVBLModel/KdGstNames.h>
#include <KdVBLModel/KdVBLModelExport.h>
#include <KdVBLModel/KdWebcamTakeFormat.h>

#include <chrono>
#include <memory>
#include <optional>

/**
 * One take of pictures, with or without sound, from its file's claim to its finished file: what the
 * camera and the microphone give, less the pauses, goes to the writer, both from the same instant
 * to the same instant.
 *
 * open(), finish() and the destructor belong to one thread, feedPicture() to the camera's,
 * feedSound() to the microphone's; all else may be called on any. Times are kdMonotonicNs().
 */
class KDVBLMODEL_EXPORT KdWebcamTake
{
public:
    KdWebcamTake();
    /** Calls finish(). */
    ~KdWebcamTake();

    /**
     * @param intervalMs between the times that the feeds give; at least 1
     * @return false when there cannot be a file: a size below 16x16 or beyond 4096x2304, a rate
     * outside of 1 to 240, a path that cannot be claimed, a full disk. The log says why, and
     * nothing is left behind.
     */
    bool open(const QString& path, const KdWebcamTakeFormat& format, int intervalMs);

    QString path() const;

    /** @return what feedPicture() takes: video/x-raw in I420 of this format. The caller's. */
    static GstCaps* pictureCaps(const KdWebcamTakeFormat& format);

    /**
     * @param picture I420 of the format's size, laid out as its GstVideoMeta says, else as
     * GStreamer does by default; lent, copied before the call returns. One that is too small, or
     * null, is left out; the log says so once.
     * @param captureNs when the camera took it
     * @return the recorded time in ms whenever another interval of it is full.
     */
    std::optional<qint64> feedPicture(GstBuffer* picture, qint64 captureNs);

    /**
     * @param sound a block of KdAudioChain's format, lent; ignored in a take without sound
     * @param nowNs when it arrived
     * @return as feedPicture() does.
     */
    std::optional<qint64> feedSound(GstBuffer* sound, qint64 nowNs);

    void pause(qint64 nowNs);
    void resume(qint64 nowNs);
    /** Nothing that comes from now on belongs to the take. */
    void close();

    /** What the next pictures look like in the file. In mid-take too. */
    void setFlip(bool isFlipped);
    void setShape(KdVBLMODEL::_KdCaptureRecordShape shape);

    /** Length of what went into the file. */
    qint64 recordedMs() const;
    /** Pictures that came, and had to be left out because the machine or its disk was too slow. */
    qint64 lostPictures() const;

    /** Pictures that wait to be encoded: more than a few when the machine is busy. */
    int waitingPictures() const;
    /** How much sound or picture, whichever is more, waits to be written. A source that is faster
     * than time has to heed it, or finish() cannot be done in time. */
    std::chrono::milliseconds backlog() const;

    /** Whether the take has begun: a first picture is in the file, or on its way there. */
    bool hasPicture() const;
    /** @return whether a picture came in time. */
    bool waitForPicture(std::chrono::milliseconds patience);

    /** Whether the take must end now: its file takes no more, or its disk soon would not. Blocks
     * shortly. The log says why. */
    bool mustEnd();

    /**
     * Closes and finishes the file, once; later calls give the first answer.
     * @return whether a playable file was kept. A take without a picture leaves none.
     */
    bool finish();

    /** Waits for finish() to end on its thread. @return its answer, nothing when it takes longer.
     */
    std::optional<bool> waitForOutcome(std::chrono::milliseconds patience);

private:
    KdWebcamTake(const KdWebcamTake&) = delete;
    KdWebcamTake& operator=(const KdWebcamTake&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};

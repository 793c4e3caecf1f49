#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdGstNames.h>
#include <KdVBLModel/KdTakeResult.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

#include <memory>

/**
 * Writes one audio take: raw sound in, an MP4 file out that plays after a crash up to its last half
 * second and is an ordinary MP4 once finished. It stands apart from the source on purpose: whatever
 * happens to a device, the end of the stream still gets through here.
 *
 * open() and finish() on one thread, push() on one other; error() on any. One take an object.
 */
class KDVBLMODEL_EXPORT KdTakeWriter
{
public:
    using Result = KdTakeResult;

    KdTakeWriter();
    /** Calls finish(). */
    ~KdTakeWriter();

    /**
     * Claims the file, leaves a journal beside it and makes ready. Blocks for some ten
     * milliseconds.
     * @param path absolute, of a file that does not exist
     * @param takeAgain the file may exist: it is this recorder's own last take
     * @param error one sentence on failure; may be null
     * @return false on failure; nothing is left behind then.
     */
    bool open(const QString& path, const KdVBLMODEL::KdAudioFormat& format, bool takeAgain,
              QString* error);

    /** What push() takes: interleaved raw audio. Owned by the writer; null before open(). */
    GstCaps* inputCaps() const;
    int samplerate() const;
    int channels() const;

    /**
     * Appends sound.
     * @param buffer audio of inputCaps(), whole frames; ownership passes, also on failure. Its time
     * stamps are replaced: buffers follow one another without gap.
     * @return false when the take has failed or is over; error() says why.
     */
    bool push(GstBuffer* buffer);

    /** @return frames pushed so far. Any thread. */
    qint64 framesPushed() const;

    /** @return whether nothing more reaches the file. Any thread. */
    bool hasFailed() const;
    /** The first failure in the words of the element that met it; empty without one. Any thread. */
    QString error() const;

    /**
     * Ends the take, waits until the file is whole and on disk, at most 2 s, and lets everything
     * go. Repeating it gives the first answer again.
     */
    Result finish();

private:
    KdTakeWriter(const KdTakeWriter&) = delete;
    KdTakeWriter& operator=(const KdTakeWriter&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};

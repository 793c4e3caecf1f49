#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdTakeResult.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

#include <chrono>
#include <memory>

#include <gst/video/video.h>

/**
 * Writes one take of pictures, with or without sound: H.264 and AAC in an MP4 file that outlives a
 * crash up to its last moment and is an ordinary MP4 once finished.
 *
 * open() and finish() on one thread, the pushing one call at a time; the rest on any. One take an
 * object.
 */
class KDVBLMODEL_EXPORT KdClipWriter
{
public:
    using Result = KdTakeResult;

    struct Format
    {
        GstVideoInfo video; ///< I420 of even size, its rate and colours
        bool hasSound = false;
        KdVBLMODEL::KdAudioFormat sound;
    };

    KdClipWriter();
    /** Calls finish(). */
    ~KdClipWriter();

    /**
     * Claims the file, leaves a journal beside it and makes ready. Blocks for some ten
     * milliseconds.
     * @param path absolute, of a file that does not exist
     * @param takeAgain the file may exist: it is this recorder's own last take
     * @return false with a sentence on failure; nothing is left behind then.
     */
    bool open(const QString& path, const Format& format, bool takeAgain, QString* error);

    /** What pushSound() takes; null without sound. The writer's. */
    GstCaps* soundCaps() const;
    int samplerate() const;
    /** How much later than pushed a sound is heard in the file, in frames. */
    int soundDelay() const;

    /** Bits per second of all that is written. */
    int bitrate() const;

    /** @return a picture to be filled and pushed; its memory is used again later. */
    KdGstBufferPtr newPicture();

    /** @param atNs when it is shown, later than the one before @param durationNs for how long
     * @return false when the take has failed or is over. */
    bool pushPicture(KdGstBufferPtr picture, qint64 atNs, qint64 durationNs);

    /** Appends sound of soundCaps(), whole frames. @return false when the take has failed or is
     * over. */
    bool pushSound(KdGstBufferPtr sound);
    /** Appends silence. @param frames 0 or less: nothing. */
    bool pushSilence(qint64 frames);

    /** Pictures that were pushed, and then left out for the take to end in time. */
    qint64 picturesSkipped() const;

    /** Frames of sound pushed so far. */
    qint64 soundFrames() const;
    qint64 picturesPushed() const;

    /** Pictures that wait to be encoded. */
    int waitingPictures() const;
    /** As many as may wait, as they take much room. */
    int mostWaitingPictures() const;

    /** How much sound or picture, whichever is more, waits to be written. */
    std::chrono::nanoseconds backlog() const;

    bool hasFailed() const;
    /** The first failure in the words of the element that met it; empty without one. */
    QString error() const;
    /** Notes a failure that is not an element's. */
    void fail(const QString& error);

    /**
     * Ends the take, waits until the file is whole and on disk, at most 2 s, and lets everything
     * go. Repeating it gives the first answer again.
     */
    Result finish();

private:
    KdClipWriter(const KdClipWriter&) = delete;
    KdClipWriter& operator=(const KdClipWriter&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};

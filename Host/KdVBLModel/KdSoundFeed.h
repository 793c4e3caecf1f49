#pragma once

#include <KdVBLModel/KdAudioConverter.h>
#include <KdVBLModel/KdTakeTimeline.h>

#include <QByteArray>

class KdClipWriter;

/**
 * Hands the sound of a take with pictures to its writer: from the instant on at which the file
 * begins, less the pauses, and with silence where the input gives nothing. Not thread-safe.
 */
class KdSoundFeed
{
public:
    /**
     * @param writer, timeline outlive this
     * @return null when the writer's format cannot be made of KdAudioChain's.
     */
    static std::unique_ptr<KdSoundFeed> create(KdClipWriter& writer, KdTakeTimeline& timeline);

    /** A block of KdAudioChain's format came in. */
    void feed(const guint8* data, qint64 frames, qint64 nowNs);
    /** Puts silence in where no sound came for longer than the time line's patience. */
    void fillUntil(qint64 ns);

    /** The first position whose sound is still at hand. */
    qint64 firstHeld() const { return m_heldBegin; }
    /** The time line has begun: what is held goes into the file from there on. */
    void begin();

    /** How far the sound of the file reaches. */
    qint64 endNs() const;

    /** Ends the sound there, or where it ends itself if that is later. @return where, as the file
     * has it. */
    qint64 finish(qint64 endNs);

private:
    KdSoundFeed(KdClipWriter& writer, KdTakeTimeline& timeline,
                std::unique_ptr<KdAudioConverter> converter);

    void fill(qint64 frames, qint64 nowNs);
    void append(const guint8* data, qint64 frames, qint64 begin);
    void hold(const guint8* data, qint64 frames);
    void write(const guint8* data, qint64 begin, qint64 frames);
    void push(const guint8* data, qint64 frames);
    qint64 writtenNs() const;

    KdClipWriter& m_writer;
    KdTakeTimeline& m_timeline;
    std::unique_ptr<KdAudioConverter> m_converter;
    QByteArray m_held; ///< what came before the file began
    qint64 m_heldBegin = 0;
    qint64 m_skipped = 0; ///< of the file's first frames, in whose place the encoder has silence
    qint64 m_end = 0;     ///< of the sound in the file, in the time line's frames
};

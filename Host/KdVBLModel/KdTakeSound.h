#pragma once

#include <KdVBLModel/KdAacFormat.h>
#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdTakePipeline.h>

#include <QString>

#include <atomic>

/**
 * The sound of a take: what is written for a format that was asked for, and the time stamps of what
 * is pushed, made anew from the number of frames so that there is never a gap.
 *
 * open() and createTracks() come first; stamp() on one thread; frames() on any.
 */
class KdTakeSound
{
public:
    KdTakeSound() = default;

    /** @return false with a sentence when the format cannot be written. */
    bool open(const KdVBLMODEL::KdAudioFormat& asked, QString* error);

    /** @return the one track; none, and a sentence, when an element is missing. */
    QVector<KdTakeTrack> createTracks(QString* error);

    const KdAacFormat& format() const { return m_format; }
    /** For people: "AAC 44100 Hz, 2 channels, 128 kbit/s". */
    QString text() const;
    /** What stamp() takes; null before open(). */
    GstCaps* caps() const { return m_caps.get(); }
    int bytesPerFrame() const { return m_bytesPerFrame; }

    /** How much later than pushed a sound is heard in the file, in frames. */
    int delay() const { return m_delay; }

    /** Frames stamped so far. */
    qint64 frames() const { return m_frames; }

    /** Makes buffer follow what was stamped before. */
    void stamp(GstBuffer* buffer);

    /** @return silence, to be stamped; null for no frames. */
    KdGstBufferPtr silence(qint64 frames) const;
    /** @return stamped silence without which the end of the sound would not come out; it does not
     * count. Null where there is no need. */
    KdGstBufferPtr tail() const;

private:
    KdTakeSound(const KdTakeSound&) = delete;
    KdTakeSound& operator=(const KdTakeSound&) = delete;

    void stampAt(GstBuffer* buffer, qint64 first, qint64 count) const;

    KdAacFormat m_format;
    KdGstCapsPtr m_caps;
    KdGstPtr<GstElement> m_encoder;
    int m_bytesPerFrame = 0;
    int m_delay = 0;
    std::atomic<qint64> m_frames{0};
};

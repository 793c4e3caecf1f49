#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdArrivalClock.h>
#include <KdVBLModel/KdAudioConverter.h>
#include <KdVBLModel/KdPauseClock.h>
#include <KdVBLModel/KdTakeWriter.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

/**
 * One take of sound, from its file's claim to its finished file: what the input gives, less the
 * pauses, goes to the writer.
 *
 * open(), finish() and the destructor belong to one thread, feed() to the input's; all else may be
 * called on any. Times are kdMonotonicNs().
 */
class KDVBLMODEL_EXPORT KdAudioTake
{
public:
    KdAudioTake() = default;
    /** Calls finish(). */
    ~KdAudioTake();

    /**
     * @param intervalMs between the times that feed() gives
     * @param takeAgain the file may exist: it is this recorder's own last take
     * @return false when there cannot be a file; the log says why, and nothing is left behind.
     */
    bool open(const QString& path, const KdVBLMODEL::KdAudioFormat& format, int intervalMs,
              bool takeAgain = false);

    QString path() const { return m_path; }

    /**
     * @param buffer a block of KdAudioChain's format, lent
     * @return the recorded time in ms whenever another interval of it is full.
     */
    std::optional<qint64> feed(GstBuffer* buffer, qint64 nowNs);

    void pause(qint64 nowNs);
    void resume(qint64 nowNs);
    /** Nothing that comes from now on belongs to the take. */
    void close();

    /** Length of what went into the file. */
    qint64 recordedMs() const;
    bool hasSound() const { return m_writer.framesPushed() > 0; }
    /** @return whether sound came in time. */
    bool waitForSound(std::chrono::milliseconds patience);

    /** Whether the take must end now: its file takes no more, or its disk soon would not. Blocks
     * shortly. The log says why. */
    bool mustEnd();

    /**
     * Closes and finishes the file, once; later calls give the first answer.
     * @return whether a playable file was kept. A take without sound leaves none.
     */
    bool finish();

    /** Waits for finish() to end on its thread. @return its answer, nothing when it takes longer.
     */
    std::optional<bool> waitForOutcome(std::chrono::milliseconds patience);

private:
    KdAudioTake(const KdAudioTake&) = delete;
    KdAudioTake& operator=(const KdAudioTake&) = delete;

    void write(const guint8* data, const std::vector<KdPauseClock::Span>& spans, qint64 begin);
    void push(KdGstBufferPtr buffer);
    std::optional<qint64> dueTime();
    bool isDiskNearlyFull() const;
    void logEnd(KdTakeWriter::Result result) const;

    QString m_path;
    int m_bitrate = 0;
    KdTakeWriter m_writer;

    std::mutex m_mutex; ///< guards what follows, and the writer's push()
    std::condition_variable m_changed;
    std::optional<bool> m_outcome; ///< of finish()
    std::unique_ptr<KdAudioConverter> m_converter;
    KdArrivalClock m_arrivals{48000};
    KdPauseClock m_pauses;
    qint64 m_intervalMs = 50;
    qint64 m_toldIntervals = 0;
    bool m_isClosed = true;
};

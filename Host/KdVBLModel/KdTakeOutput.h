#pragma once

#include <KdVBLModel/KdTakeFile.h>
#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdTakePipeline.h>
#include <KdVBLModel/KdTakeResult.h>

#include <QString>

#include <atomic>
#include <chrono>
#include <memory>

/**
 * The file of a take while it is written: its claim, the journal beside it, the elements that write
 * it, and its end in every case. What sound or picture it is made of is its user's business.
 *
 * claim(), start() and finish() on one thread, push() on one other for each track, the rest on any.
 * One take an object.
 */
class KdTakeOutput
{
public:
    KdTakeOutput() = default;

    /**
     * Claims the file and leaves a journal beside it.
     * @param takeAgain the file may exist: it is this recorder's own last take
     * @return false with a sentence on failure; nothing is left behind then.
     */
    bool claim(const KdTakeRecord& record, bool takeAgain, QString* error);

    /**
     * Makes ready for push().
     * @param tracks none means that one could not be made, as error says already
     * @return false with a sentence on failure; the claim is gone then.
     */
    bool start(const QVector<KdTakeTrack>& tracks, QString* error);

    bool isOpen() const { return m_isOpen; }

    /** @param buffer with time stamps; ownership passes. @return false when the take has failed or
     * is over. */
    bool push(int track, GstBuffer* buffer);

    /** How many bytes of a track wait to be encoded. */
    quint64 rawBacklog(int track) const;
    /** How much of a track waits to be written. */
    std::chrono::nanoseconds backlog(int track) const;

    /** How many buffers were left out for the end to come in time. */
    qint64 skipped() const { return m_pipeline ? m_pipeline->skipped() : 0; }

    bool hasFailed() const { return m_pipeline && m_pipeline->hasFailed(); }
    /** The first failure in the words of the element that met it. */
    QString error() const { return m_pipeline ? m_pipeline->error() : QString(); }
    /** Notes a failure that is not an element's. */
    void fail(const QString& error);

    /**
     * Ends the take, waits until the file is whole and on disk, at most 2 s, and lets everything
     * go. Repeating it gives the first answer again.
     * @param hasMedia whether anything was pushed; without, there is no file.
     */
    KdTakeResult finish(bool hasMedia);

private:
    KdTakeOutput(const KdTakeOutput&) = delete;
    KdTakeOutput& operator=(const KdTakeOutput&) = delete;

    KdTakeResult end();
    KdTakeResult abandon();
    bool shutDownInTime();
    KdTakeResult judgeFailed(const QString& path, bool isInPlace,
                             std::chrono::steady_clock::time_point until);

    std::shared_ptr<KdTakePipeline> m_pipeline; ///< shared with a thread that shuts it down
    KdTakeFile m_file;
    KdTakeJournal m_journal;
    std::atomic<bool> m_isOpen{false};
    std::atomic<bool> m_hasBegun{false}; ///< the first media byte is on its way
    KdTakeResult m_result = KdTakeResult::Lost;
};

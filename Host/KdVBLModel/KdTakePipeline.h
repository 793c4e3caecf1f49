#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include <gst/gst.h>

/** A way into a take's file: raw media at one end, the muxer at the other. */
struct KdTakeTrack
{
    GstCaps* input = nullptr;   ///< what is pushed; lent
    QVector<GstElement*> chain; ///< what encodes it, in order; floating, ownership passes
    /** What is encoded may wait for the disk in a queue of its own, where it takes little room. */
    bool isQueued = false;
    /** All but the last of what still waits to be encoded may be left out, for the end to come in
     * time. */
    bool isSkippable = false;
};

/**
 * The elements of one take: sound and picture pushed in at one end, a crash-safe MP4 file at the
 * other. Errors are noted in the element's own words as they happen, on whatever thread.
 */
class KdTakePipeline
{
public:
    KdTakePipeline();
    ~KdTakePipeline();

    /** Makes and starts the elements; they write to location. @return false with a sentence on
     * failure. */
    bool start(const QByteArray& location, const QVector<KdTakeTrack>& tracks, QString* error);

    /**
     * @param track its position in the list that start() got
     * @param buffer ownership passes.
     * @return false when nothing is taken any more.
     */
    bool push(int track, GstBuffer* buffer);

    /** How much of a track waits to be written. */
    std::chrono::nanoseconds backlog(int track) const;
    /** How many bytes of a track wait to be encoded. */
    quint64 rawBacklog(int track) const;

    /** Ends the stream. @return whether it went through to the file before the deadline. */
    bool drain(std::chrono::milliseconds patience);
    /** How many buffers were left out to end in time. */
    qint64 skipped() const { return m_skipped; }

    /** Stops all elements; the file is closed then. May block as long as the disk does. */
    void shutDown();

    bool hasFailed() const;
    QString error() const;
    /** Notes a failure that is not an element's. */
    void fail(const QString& error);

private:
    KdTakePipeline(const KdTakePipeline&) = delete;
    KdTakePipeline& operator=(const KdTakePipeline&) = delete;

    static GstBusSyncReply handleMessage(GstBus* bus, GstMessage* message, gpointer self);
    void noteError(GstMessage* message);
    bool addElements(const QByteArray& location, const QVector<KdTakeTrack>& tracks,
                     QString* error);
    static GstPadProbeReturn skip(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    bool waitForEnd(std::chrono::milliseconds patience);
    bool addTrack(const KdTakeTrack& track, GstElement* muxer, QString* error);

    /** Elements of the pipeline. */
    struct Way
    {
        GstElement* source;
        GstElement* queue; ///< null for none
        bool isSkippable;
    };

    GstElement* m_pipeline = nullptr;
    QVector<Way> m_ways;
    std::atomic<bool> m_isHurrying{false};
    std::atomic<GstClockTime> m_last{0}; ///< what was pushed last into a track that is skippable
    std::atomic<qint64> m_skipped{0};

    mutable std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_ended;
    bool m_isDrained = false;
    QString m_error;
};

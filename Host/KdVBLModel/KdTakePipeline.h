#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdAacFormat.h>

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>

#include <gst/gst.h>

/**
 * The elements of one take: sound pushed in at one end, a crash-safe MP4 file at the other. Errors
 * are noted in the element's own words as they happen, on whatever thread.
 */
class KdTakePipeline
{
public:
    KdTakePipeline();
    ~KdTakePipeline();

    /** Makes and starts the elements; they write to location. @return false with a sentence on
     * failure. */
    bool start(const QByteArray& location, const KdAacFormat& format, GstCaps* input,
               QString* error);

    /** @param buffer ownership passes. @return false when nothing is taken any more. */
    bool push(GstBuffer* buffer);

    /** How much sound waits to be written. */
    std::chrono::nanoseconds backlog() const;

    /** Ends the stream. @return whether it went through to the file before the deadline. */
    bool drain(std::chrono::milliseconds patience);

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
    bool addElements(const QByteArray& location, const KdAacFormat& format, GstCaps* input,
                     QString* error);

    GstElement* m_pipeline = nullptr;
    GstElement* m_source = nullptr; ///< the pipeline's

    mutable std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_ended;
    bool m_isDrained = false;
    QString m_error;
};

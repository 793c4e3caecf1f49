#pragma once

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

#include <functional>
#include <mutex>

/**
 * A pipeline around one source of capture: starts it, hears what it says, and knows when it has
 * failed. Operations do not overlap, but where it says so; each may block while a server does.
 */
class KDVBLMODEL_EXPORT KdCapturePipeline
{
public:
    /** Called on threads of the pipeline; none may call the pipeline. */
    struct Callbacks
    {
        /** It has failed; nothing more comes. The reason is in the log already. */
        std::function<void()> failed;
        /** What an element tells. May be null. */
        std::function<void(const GstStructure*)> told;
    };

    /** @param bin what runs in it */
    KdCapturePipeline(GstElement* bin, Callbacks callbacks);
    /** Stops it. No callback runs or starts afterwards. */
    ~KdCapturePipeline();

    /** Makes its times those of kdMonotonicNs(), less the element's base time. Before start(). */
    void useMonotonicClock();

    /** @return false when it fails at once; the log says why. */
    bool start();

    /** When start() was called, monotonic nanoseconds. */
    qint64 startedNs() const { return m_startedNs; }

    /** Any thread, at any time. */
    bool hasFailed() const;

    /** It counts as failed from now on, which is told once. */
    void fail();

    /** No callback runs or starts afterwards. Any thread, at any time. */
    void silence();

private:
    KdCapturePipeline(const KdCapturePipeline&) = delete;
    KdCapturePipeline& operator=(const KdCapturePipeline&) = delete;

    static GstBusSyncReply onMessage(GstBus* bus, GstMessage* message, gpointer self);
    void handle(GstMessage* message);
    void tell(const GstStructure* what);

    KdGstPtr<GstElement> m_pipeline;
    qint64 m_startedNs = 0;

    mutable std::mutex
        m_mutex; ///< held during calls of m_callbacks, so that all threads see them whole
    Callbacks m_callbacks;
    bool m_hasFailed = false;
};

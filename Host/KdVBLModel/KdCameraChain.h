#pragma once

#include <KdVBLModel/KdCameraFormats.h>
#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>

/**
 * A camera as a bin for a pipeline: the source in one of its modes, unpacked when it gives JPEG,
 * ending in a call for every picture. One code path for every kind of source.
 *
 * Pictures are handed over on a thread of their own. Whoever is slow with one loses those that come
 * meanwhile; the source never waits, and nothing piles up.
 */
class KDVBLMODEL_EXPORT KdCameraChain
{
public:
    struct Receiver
    {
        /** What the pictures are that come from now on; lent. */
        std::function<void(const GstCaps*)> format;
        /** A picture in the system's memory, lent. @param captureNs when it was taken, as
         * kdMonotonicNs() tells it */
        std::function<void(GstBuffer*, qint64 captureNs)> picture;
    };

    /** @param source floating, null is allowed and makes an invalid chain */
    KdCameraChain(GstElement* source, const KdCameraMode& mode, Receiver receiver);
    /** The bin must be gone from its pipeline, or in state NULL. */
    ~KdCameraChain();

    /** False when an element is missing; error() then says which. */
    bool isValid() const { return m_error.empty(); }
    const std::string& error() const { return m_error; }

    /** To be added to a pipeline, which takes a reference of its own. */
    GstElement* bin() const { return m_bin.get(); }

    /** No call of the receiver runs or starts afterwards. Any thread. */
    void silence();

    /** When the last picture came from the source, monotonic nanoseconds; 0 before the first. Any
     * thread. */
    qint64 lastArrivalNs() const { return m_lastArrivalNs; }

private:
    KdCameraChain(const KdCameraChain&) = delete;
    KdCameraChain& operator=(const KdCameraChain&) = delete;

    static GstPadProbeReturn onArrival(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn onPicture(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    void build(GstElement* source, const KdCameraMode& mode);
    GstElement* add(const char* factory);
    bool link(std::initializer_list<GstElement*> elements);
    void deliver(GstPadProbeInfo* info);

    KdGstPtr<GstElement> m_bin;
    std::string m_error;
    std::atomic<qint64> m_lastArrivalNs{0};

    std::mutex m_mutex; ///< held during calls of m_receiver, so that all threads see it whole
    Receiver m_receiver;
};

#pragma once

#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdDeviceList.h>
#include <KdVBLModel/KdDeviceRegistry.h>
#include <KdVBLModel/KdDeviceSystem.h>

#include <KdCore/KdObserverList.h>

#include <condition_variable>
#include <mutex>
#include <thread>

/**
 * The devices of one kind, kept up to date by a thread of its own on which everything happens that
 * is slow, the start of GStreamer included. The thread shares the feed: a server that never answers
 * may hold it for longer than anybody waits.
 *
 * All operations may be called on any thread.
 */
class KdDeviceFeed : public std::enable_shared_from_this<KdDeviceFeed>
{
public:
    using Listeners = KdObserverList<IKdDeviceListener>;
    using Milliseconds = std::chrono::milliseconds;

    KdDeviceFeed(KdVBLMODEL::_KdDevType kind, std::shared_ptr<Listeners> listeners);
    ~KdDeviceFeed();

    /** Begins to list devices, when so much time has passed or somebody waits for them. Returns at
     * once; harmless when repeated. */
    void start(Milliseconds delay);
    /** Ends the thread, or leaves it behind when it does not end in time. */
    void quit(Milliseconds patience);

    bool waitUntilListed(Milliseconds patience);
    QVector<KdCaptureDevice> devices() const;
    /** @return the offer through which to open the device; null when it is not there. */
    KdGstPtr<GstDevice> offerOf(const KdCaptureDevice& device) const;

private:
    void run(Milliseconds delay);
    bool waitForStart(Milliseconds delay);
    void watch();
    void warmUp();
    void listAnew();
    KdDeviceList currentOffers() const;
    std::optional<KdDeviceOffer> offerFrom(GstDevice* device) const;
    void handle(GstMessage* message);
    void add(KdGstPtr<GstDevice> device);
    void replace(const KdGstPtr<GstDevice>& former, KdGstPtr<GstDevice> device);
    void remove(const KdGstPtr<GstDevice>& device);
    void announce(const KdDeviceList::Change& change);

    const KdVBLMODEL::_KdDevType m_kind;
    const std::shared_ptr<Listeners> m_listeners;
    GMainContext* m_context;
    GMainLoop* m_loop;

    mutable std::mutex m_mutex; ///< guards what follows; never held during a call on a listener
    std::condition_variable m_changed;
    KdDeviceList m_list; ///< its handles are devices, each with a reference
    std::thread m_thread;
    bool m_isAwaited = false;
    bool m_isQuitting = false;
    bool m_isListed = false;
    bool m_hasEnded = false;

    std::unique_ptr<IKdDeviceSystem> m_system; ///< the thread's alone
};

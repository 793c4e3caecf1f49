#pragma once

#include <KdCore/KdCoreExport.h>
#include <KdCore/KdCustomEvent.h>

#include <functional>
#include <memory>

/** Receives custom events; belongs to whoever registers it. */
class KDCORE_EXPORT IKdCustomEventReceiver
{
public:
    IKdCustomEventReceiver() = default;
    virtual ~IKdCustomEventReceiver();

    /**
     * Called on the thread that sends, while the sender waits. What is thrown is logged and
     * ignored. May send, register and unregister, itself too.
     * @param event valid only during the call.
     */
    virtual void onCustomEvent(const KdCustomEvent& event) = 0;

private:
    IKdCustomEventReceiver(const IKdCustomEventReceiver&) = delete;
    IKdCustomEventReceiver& operator=(const IKdCustomEventReceiver&) = delete;
};

/**
 * Carries custom events from modules to the receivers that the host registered. All operations may
 * be called on any thread.
 */
class KDCORE_EXPORT KdCustomEventManager
{
public:
    /** @return whether a receiver is to get the event. */
    using ReceiverFilter = std::function<bool(const IKdCustomEventReceiver&)>;

    /** Never null, lives until the process ends. */
    static KdCustomEventManager* instance();

    /** Null and a receiver that is registered already change nothing. */
    void addReceiver(IKdCustomEventReceiver* receiver);
    /**
     * A barrier: when it returns, no call on that receiver is running on another thread and none
     * will start. From inside the receiver's own call it returns at once.
     */
    void removeReceiver(IKdCustomEventReceiver* receiver);

    /**
     * Returns when every receiver has been called, in the order registered.
     * @param filter empty: the event is for every receiver.
     */
    void sendEvent(const KdCustomEvent& event, const ReceiverFilter& filter);

private:
    KdCustomEventManager();
    ~KdCustomEventManager();
    KdCustomEventManager(const KdCustomEventManager&) = delete;
    KdCustomEventManager& operator=(const KdCustomEventManager&) = delete;
    class Private;
    std::unique_ptr<Private> d;
};

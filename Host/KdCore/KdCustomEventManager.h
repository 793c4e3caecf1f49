#pragma once

#include <KdCore/KdCoreExport.h>
#include <KdCore/KdCustomEvent.h>

#include <functional>
#include <memory>

/** Receives custom events; belongs to whoever registers it. */
class KDCORE_EXPORT IKdCustomEventReceiver
{
public:
    /** Registers nothing: KdCustomEventManager::addReceiver() does. */
    IKdCustomEventReceiver() = default;
    /**
     * Unregisters nothing: whoever registered it calls KdCustomEventManager::removeReceiver()
     * before.
     */
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
    /**
     * Answers whether a receiver is to get the event. Asked on the sending thread, before each
     * receiver.
     */
    using ReceiverFilter = std::function<bool(const IKdCustomEventReceiver&)>;

    /** @return the manager; never null, lives until the process ends. */
    static KdCustomEventManager* instance();

    /**
     * @param receiver not owned; told of every event from now on. Null and a receiver that is
     * registered already change nothing.
     */
    void addReceiver(IKdCustomEventReceiver* receiver);
    /**
     * A barrier: when it returns, no call on that receiver is running on another thread and none
     * will start. From inside the receiver's own call it returns at once.
     * @param receiver told of nothing any more; one that is not registered is waited for all the
     * same.
     */
    void removeReceiver(IKdCustomEventReceiver* receiver);

    /**
     * Returns when every receiver has been called, in the order registered.
     * @param event the sender's own, which may go when this returns.
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

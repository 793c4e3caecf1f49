#include "KdCustomEventManager.h"

#include <KdCore/KdObserverList.h>

class KdCustomEventManager::Private
{
public:
    KdObserverList<IKdCustomEventReceiver> receivers;
};

IKdCustomEventReceiver::~IKdCustomEventReceiver() = default;

KdCustomEventManager* KdCustomEventManager::instance()
{
    // Never destroyed: modules may send while static objects go.
    static auto* const manager = new KdCustomEventManager;
    return manager;
}

KdCustomEventManager::KdCustomEventManager() : d(std::make_unique<Private>()) {}

KdCustomEventManager::~KdCustomEventManager() = default;

void KdCustomEventManager::addReceiver(IKdCustomEventReceiver* receiver)
{
    d->receivers.add(receiver);
}

void KdCustomEventManager::removeReceiver(IKdCustomEventReceiver* receiver)
{
    d->receivers.remove(receiver);
}

void KdCustomEventManager::sendEvent(const KdCustomEvent& event, const ReceiverFilter& filter)
{
    d->receivers.notify([&](IKdCustomEventReceiver& receiver) {
        if (!filter || filter(receiver)) {
            receiver.onCustomEvent(event);
        }
    });
}

#pragma once

#include <KdCore/KdCoreExport.h>

/**
 * A notice that a module sends to its host through KdCustomEventManager. Made on the stack, sent,
 * gone. What happened is the class of the event: receivers tell events apart with dynamic_cast.
 */
class KDCORE_EXPORT KdCustomEvent
{
public:
    virtual ~KdCustomEvent();

protected:
    KdCustomEvent() = default;

private:
    KdCustomEvent(const KdCustomEvent&) = delete;
    KdCustomEvent& operator=(const KdCustomEvent&) = delete;
};

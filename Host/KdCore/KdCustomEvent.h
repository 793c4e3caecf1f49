#pragma once

#include <KdCore/KdCoreExport.h>

/**
 * A notice that a module sends to its host through KdCustomEventManager. Made on the stack, sent,
 * gone. What happened is the class of the event: receivers tell events apart with dynamic_cast.
 */
class KDCORE_EXPORT KdCustomEvent
{
public:
    /** Virtual, so that dynamic_cast tells events apart. */
    virtual ~KdCustomEvent();

protected:
    /** For the events of a module, which derive from it. */
    KdCustomEvent() = default;

private:
    KdCustomEvent(const KdCustomEvent&) = delete;
    KdCustomEvent& operator=(const KdCustomEvent&) = delete;
};

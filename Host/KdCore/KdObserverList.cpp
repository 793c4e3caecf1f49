#include <KdCore/KdObserverList.h>

#include <KdCore/KdBaseLog.h>

void kdLogObserverException()
{
    KdBaseLog::write(KdBaseLog::Error, {"Host/KdCore/KdObserverList", "KdObserverList::notify"},
                     "An observer let an exception escape; it is ignored.");
}

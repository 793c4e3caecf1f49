#include "KdProcessIdentity.h"

#include <QCoreApplication>

KdProcessIdentity KdProcessIdentity::current()
{
    return ofId(QCoreApplication::applicationPid());
}

bool KdProcessIdentity::isRunning() const
{
    return !started.isEmpty() && ofId(id).started == started;
}

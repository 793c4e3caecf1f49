#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

/**
 * Names one process beyond its life: ids are used again, so the time at which it started belongs to
 * it. Reentrant.
 */
struct KDVBLMODEL_EXPORT KdProcessIdentity
{
    qint64 id = 0;
    QString started; ///< opaque; empty when there is no such process

    static KdProcessIdentity current();
    /** @return what runs under this id now; started is empty when nothing does. */
    static KdProcessIdentity ofId(qint64 id);
    /** @return whether this very process still runs. */
    bool isRunning() const;
    /** Names what process ids are unique in: this machine, or the container that we run in. */
    static QString scope();
};

#pragma once

#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdTakeRepair.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>
#include <QVector>

/** A take that a crash, or the loss of power, left unfinished. */
struct UnfinishedTake
{
    KdTakeRecord record;
    QString journalPath;
    qint64 bytes = 0; ///< size of the output file, 0 when there is none
};

/**
 * Finding and repairing what a crash left. All operations block on the disk and may take seconds
 * for a long take: call them on a worker thread. They may run while takes are being written, those
 * of other processes too; the same take must not be repaired twice at a time within one process.
 * They need gst_init() and call it themselves.
 */
class KDVBLMODEL_EXPORT KdTakeRecovery
{
public:
    using Progress = KdTakeRepair::Progress;

    /** The takes in folder whose writer no longer runs, oldest first. Takes of running processes
     * are left alone. */
    static QVector<UnfinishedTake> find(const QString& folder);

    /**
     * Repairs the take's file, see KdTakeRepair, and removes the journal when that is done. Where
     * nothing is recoverable, journal and claim go as well, and a take that was being recorded
     * again is back at its place.
     */
    static RepairResult repair(const UnfinishedTake& take, const Progress& progress = {});

    /** Forgets the take: its file and journal go, one that was being recorded again is back.
     * @return whether nothing of it is left; false as well when somebody else has dealt with it. */
    static bool discard(const UnfinishedTake& take);
};

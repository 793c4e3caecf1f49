#pragma once

#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdTakeRepair.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>
#include <QVector>

/** A take that a crash, or the loss of power, left unfinished. */
struct UnfinishedTake
{
    KdTakeRecord record; ///< what its journal says
    QString journalPath; ///< full path of its journal
    qint64 bytes = 0;    ///< size of the output file, 0 when there is none
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
    /** See KdTakeRepair::Progress. */
    using Progress = KdTakeRepair::Progress;

    /**
     * @param folder searched without its sub-folders; empty or unreadable: none.
     * @return the takes in folder whose writer no longer runs, oldest first. Takes of running
     * processes are left alone.
     */
    static QVector<UnfinishedTake> find(const QString& folder);

    /**
     * Repairs the take's file, see KdTakeRepair, and removes the journal when that is done. Where
     * nothing is recoverable, journal and claim go as well, and a take that was being recorded
     * again is back at its place.
     * @param take as find() gave it. One that somebody else has dealt with since, or is dealing
     * with, is refused: Failed.
     * @param progress told how far it is, and asked whether to go on; may be empty.
     * @return what became of it; also in the log.
     */
    static RepairResult repair(const UnfinishedTake& take, const Progress& progress = {});

    /**
     * Forgets the take: its file and journal go, one that was being recorded again is back.
     * @param take as find() gave it.
     * @return whether nothing of it is left; false as well when somebody else has dealt with it.
     */
    static bool discard(const UnfinishedTake& take);
};

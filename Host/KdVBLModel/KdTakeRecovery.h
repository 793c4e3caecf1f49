#pragma once

#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>
#include <QVector>

#include <functional>

/** A take that a crash, or the loss of power, left unfinished. */
struct UnfinishedTake
{
    KdTakeRecord record;
    QString journalPath;
    qint64 bytes = 0; ///< size of the output file, 0 when there is none
};

/** What became of a repair. */
struct RepairResult
{
    enum class Outcome
    {
        Repaired,           ///< the file at the take's path now plays everywhere
        NothingRecoverable, ///< no media in it; claim and journal are gone, a predecessor is back
                            ///< at its place
        Cancelled,          ///< by the hook; the take is as unfinished as before
        Failed              ///< the message says why; the take is as unfinished as before
    };

    Outcome outcome = Outcome::Failed;
    QString message;       ///< one sentence for the log or a user
    qint64 durationMs = 0; ///< length of the repaired take
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
    /** Called now and then with 0 to 100, on the calling thread. @return false to cancel. */
    using Progress = std::function<bool(int percent)>;

    /** The takes in folder whose writer no longer runs, oldest first. Takes of running processes
     * are left alone. */
    static QVector<UnfinishedTake> find(const QString& folder);

    /**
     * Makes an ordinary file of what is there. The only copy is never touched before a checked new
     * one is on disk beside it: as much free space as the take has bytes is needed for a moment.
     */
    static RepairResult repair(const UnfinishedTake& take, const Progress& progress = {});

    /** Forgets the take: removes journal, file and work files. @return whether nothing of it is
     * left. */
    static bool discard(const UnfinishedTake& take);
};

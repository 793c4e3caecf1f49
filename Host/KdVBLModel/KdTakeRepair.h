#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

#include <functional>

/** What became of a repair. */
struct RepairResult
{
    /** How it ended. */
    enum class Outcome
    {
        Repaired,           ///< the file at the take's path now plays everywhere
        NothingRecoverable, ///< there is no media in it that could be brought back
        Cancelled,          ///< by the hook; the take is as unfinished as before
        Failed              ///< the reason says why; the take is as unfinished as before
    };

    /** Why it failed, for a user in any language. */
    enum class Reason
    {
        None,        ///< it did not
        Busy,        ///< the folder is not writable, or another program is at the take
        Settled,     ///< the take is not an unfinished one any more
        CannotOpen,  ///< the file cannot be opened
        Foreign,     ///< the file was not written by this program
        NoSpace,     ///< the disk is full
        DiskError,   ///< the disk refused the change
        Damaged,     ///< what is in the file cannot be read; it is left as it is
        CannotRemove ///< there is nothing in the file, and it cannot be removed
    };

    Outcome outcome = Outcome::Failed; ///< how it ended
    Reason reason = Reason::None;      ///< why it failed
    QString message;                   ///< one sentence for the log, in English
    qint64 durationMs = 0; ///< length of the repaired take in ms; 0 unless it was repaired
};

/**
 * Makes an ordinary MP4 of a take that was not finished: killed while it was written, while the
 * muxer finalised it, or out of disk space in either.
 *
 * It does what the muxer does at a clean end, with the file as it is found: collects all samples
 * from the fragments, writes an index of them behind the media, and then turns everything before it
 * into one piece of media data by replacing 16 bytes. No byte of sound or picture is moved or
 * changed, so that nothing can be lost, it takes no more space than the index, and an interrupted
 * repair can be done again. Another reader counts the frames afterwards; where it disagrees, the
 * file becomes what it was.
 *
 * Blocks on the disk. Calls gst_init() itself.
 */
class KDVBLMODEL_EXPORT KdTakeRepair
{
public:
    /**
     * Called now and then on the calling thread with how far it is, 0 to 100. Answers whether to go
     * on; false cancels.
     */
    using Progress = std::function<bool(int percent)>;

    /**
     * Repairs a file in place.
     * @param path a file that nobody writes to any more. A take that is whole already counts as
     * repaired.
     * @param progress told how far it is; may be empty.
     * @return what became of it. No sound or picture of the take is lost by a repair that failed.
     */
    static RepairResult run(const QString& path, const Progress& progress = {});
};

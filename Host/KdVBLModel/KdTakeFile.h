#pragma once

#include <KdVBLModel/KdDisk.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QByteArray>
#include <QString>

/**
 * The claim of one take on its output file. filesink truncates whatever it is pointed at, and
 * reports a finished stream although the file was removed in mid-take; this class is what stands
 * between that and a lost file.
 *
 * A take's life with it: claim(), the pipeline writes, begun() at the first media byte, finish()
 * after the stream ended. A claim that was never begun is taken back by release() or the
 * destructor: its empty file goes, and a former take that claimAgain() had set aside returns.
 *
 * Blocking (disk) but short, finish() excepted, which waits for the disk. Not thread-safe: one
 * thread at a time.
 */
class KDVBLMODEL_EXPORT KdTakeFile
{
public:
    KdTakeFile();
    /** Calls release(). */
    ~KdTakeFile();

    /**
     * Makes path as a new, empty file that nobody else can have claimed.
     * @param path absolute path of a file that does not exist, in a folder that does.
     * @param error filled with one plain sentence on failure; may be null.
     * @return false when the path is empty or relative, its name is too long for a file system, its
     * folder is missing, a file or not writable, the disk is full, something of that name exists,
     * or this object already holds a claim. Nothing was changed then.
     */
    bool claim(const QString& path, QString* error);

    /**
     * Like claim(), for the recorder's own last take, which is being recorded again under its name:
     * a file at path is set aside under previousPath(path) until begun(), and is back at its place
     * when it never comes to that. Write the journal first: after a crash in between it leads to
     * the old take.
     */
    bool claimAgain(const QString& path, QString* error);

    /** The first media byte is on its way: from now on release() keeps the file, and a former take
     * is deleted. */
    void begun();

    /** @return whether the claimed file is still the one at its path. */
    bool isInPlace() const;

    /**
     * Checks that the claimed file is still at its path and is the same file, holds something, and
     * is on disk, its folder entry too. Ends the claim, whatever the outcome. A file that holds
     * anything is never deleted here, an empty one is.
     * @return false with one plain sentence when the file is gone, was replaced, is empty or cannot
     * be synced.
     */
    bool finish(QString* error);

    /** Takes an unused claim back, see above; keeps the file of a claim that has begun. Harmless
     * when repeated. */
    void release();

    bool isClaimed() const { return !m_path.isEmpty(); }
    /** Empty without a claim. */
    QString path() const { return m_path; }

    /** Where claimAgain(path) keeps the former take: a hidden name beside it. */
    static QString previousPath(const QString& path);

    /**
     * A hidden name in path's folder made from its file name and suffix (".kdtake"), cut to a
     * digest where it would exceed the file system's limit. The same path always gives the same
     * name.
     */
    static QString hiddenPathBeside(const QString& path, const QString& suffix);

    /** path in the encoding that filesink's "location" property takes. */
    static QByteArray locationFor(const QString& path);

private:
    Q_DISABLE_COPY(KdTakeFile)

    void putBack();
    void forget();

    QString m_path;
    KdDisk::Handle m_file; ///< open as long as the claim lasts, so that its identity stays its own
    QString m_asidePath;   ///< where a former take waits, or empty
    bool m_begun = false;
};

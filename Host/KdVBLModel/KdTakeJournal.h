#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QDateTime>
#include <QString>
#include <QStringList>

/** What a journal says of its take. */
struct KdTakeRecord
{
    /** What is recorded. */
    enum class Kind
    {
        Audio, ///< a voice-over, .m4a
        Webcam ///< a webcam's picture with or without sound, .mp4
    };

    QString takePath;        ///< absolute path of the output file
    Kind kind = Kind::Audio; ///< what is recorded
    QString format;          ///< for people: "AAC 44100 Hz, 2 channels, 128 kbit/s"
    QDateTime started;       ///< wall clock, UTC
    qint64 processId = 0;    ///< of the process that writes the take
    QString processStarted;  ///< tells two processes with one id apart, see KdProcessIdentity
    QString processScope;    ///< where that id counts: a folder may be shared by several machines
};

/**
 * The note beside a running take that outlives a crash: a small JSON file with a hidden name in the
 * take's folder, on disk before the first media byte and removed when the take is finished.
 *
 * Blocking (disk), short. Not thread-safe: one thread at a time for each object. The static
 * operations may be called on any thread.
 */
class KDVBLMODEL_EXPORT KdTakeJournal
{
public:
    /** Writes nothing: begin() does. */
    KdTakeJournal();
    /** Leaves the file where it is: only remove() says that the take is finished. */
    ~KdTakeJournal();

    /**
     * Writes the journal and waits until it is on disk. A former journal of the same take is
     * replaced.
     * @param record path, kind and format of the take. What says who writes it, and since when, is
     * filled in here: this process, now.
     * @param error one plain sentence on failure; may be null.
     * @return false when the journal is not safely on disk; there is none then.
     */
    bool begin(const KdTakeRecord& record, QString* error);

    /** The take is finished, or never began. Harmless when repeated or when begin() failed. */
    void remove();

    /** @return where the journal lies; empty before begin() and after remove(). */
    QString path() const { return m_path; }

    /**
     * @param takePath absolute path of the take.
     * @return where its journal lies, whether there is one or not.
     */
    static QString pathFor(const QString& takePath);

    /**
     * @param folder searched without its sub-folders.
     * @return full paths of all journals in folder, by name, whoever wrote them; empty for a folder
     * that cannot be read.
     */
    static QStringList findIn(const QString& folder);

    /**
     * @param journalPath of the journal.
     * @param[out] record what it says; left as it was on failure. Not null.
     * @return false when the file is missing, larger than 64 KiB, no journal, or speaks of a take
     * outside its own folder.
     */
    static bool read(const QString& journalPath, KdTakeRecord* record);

    /**
     * @param record as read from a journal.
     * @return whether the take is still being written. The process itself tells where its id counts
     * here; for one on another machine, a take that was written to in the last minute is running.
     */
    static bool isWriterRunning(const KdTakeRecord& record);

private:
    Q_DISABLE_COPY(KdTakeJournal)

    QString m_path;
};

#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QDateTime>
#include <QString>
#include <QStringList>

/** What a journal says of its take. */
struct KdTakeRecord
{
    enum class Kind
    {
        Audio,
        Webcam
    };

    QString takePath; ///< absolute path of the output file
    Kind kind = Kind::Audio;
    QString format;    ///< for people: "AAC 44100 Hz, 2 channels, 128 kbit/s"
    QDateTime started; ///< wall clock, UTC
    qint64 processId = 0;
    QString processStarted; ///< tells two processes with one id apart, see KdProcessIdentity
    QString processScope;   ///< where that id counts: a folder may be shared by several machines
};

/**
 * The note beside a running take that outlives a crash: a small JSON file with a hidden name in the
 * take's folder, on disk before the first media byte and removed when the take is finished.
 *
 * Blocking (disk), short. Not thread-safe: one thread at a time.
 */
class KDVBLMODEL_EXPORT KdTakeJournal
{
public:
    KdTakeJournal();
    /** Leaves the file where it is: only remove() says that the take is finished. */
    ~KdTakeJournal();

    /**
     * Writes the journal and waits until it is on disk.
     * @param error one plain sentence on failure; may be null.
     */
    bool begin(const KdTakeRecord& record, QString* error);

    /** The take is finished, or never began. Harmless when repeated or when begin() failed. */
    void remove();

    QString path() const { return m_path; }

    /** Where the journal of a take lies. */
    static QString pathFor(const QString& takePath);

    /** Full paths of all journals in folder, whoever wrote them; empty for a folder that cannot be
     * read. */
    static QStringList findIn(const QString& folder);

    /**
     * @return false when the file is missing, larger than 64 KiB, no journal, or speaks of a take
     * outside its own folder; record is then left as it was.
     */
    static bool read(const QString& journalPath, KdTakeRecord* record);

    /**
     * @return whether the take is still being written. The process itself tells where its id counts
     * here; for one on another machine, a take that was written to in the last minute is running.
     */
    static bool isWriterRunning(const KdTakeRecord& record);

private:
    Q_DISABLE_COPY(KdTakeJournal)

    QString m_path;
};

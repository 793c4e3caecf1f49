#pragma once

#include <KdCore/KdCoreExport.h>

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

/** One record of the log. */
struct KdLogRecord
{
    int level = 0;        ///< a KdBaseLog::LogLevel
    QByteArray file;      ///< source file without extension, relative to the repository
    int line = 0;         ///< in the source file
    QByteArray function;  ///< qualified function name, as in "KdAudioRecorderHelper::stop"
    QDateTime time;       ///< local time
    quint64 threadId = 0; ///< the system's number of the thread that logged
    QString message;      ///< may have line breaks; in the log they are escaped
};

/** Where log records go. All operations may be called on any thread. */
class KDCORE_EXPORT KdLogger
{
public:
    /** Is told of a record, which is valid during the call only. */
    using Observer = std::function<void(const KdLogRecord&)>;

    /** Writes to the console (standard error) at first, from KdBaseLog::Info on. */
    KdLogger();
    /** Closes the file. The default logger never comes to this. */
    ~KdLogger();

    /**
     * Spares callers a message that nobody wants.
     * @param level a KdBaseLog::LogLevel
     * @return whether a record of this level would be written.
     */
    bool should_log_(int level) const;
    /**
     * Writes the record to the console and, once setLogFile() named one, to the file, whatever its
     * level: whoever calls asks should_log_() first. What cannot be written, on a full disk say, is
     * dropped in silence.
     * @param record copied; a message with line breaks is one line in the log.
     */
    void log_(const KdLogRecord& record);

    /** @param level records below it are dropped; KdBaseLog::Info at the start. */
    void setLevel(int level);
    /**
     * @param path of a file that is appended to, and made where it is missing.
     * @return false when the file cannot be opened; the former file then stays.
     */
    bool setLogFile(const QString& path);
    /**
     * Called with every record that is written, on the thread that logs, one call at a time.
     * Returns when no call of the former observer is running on another thread. An observer may
     * log, which it is not told of, and may replace itself; it must not throw.
     * @param observer replaces the former; null takes it away.
     */
    void setObserver(Observer observer);

private:
    Q_DISABLE_COPY(KdLogger)
    class Private;
    std::unique_ptr<Private> d;
};

/** The process-wide log. All operations may be called on any thread. */
namespace KdBaseLog {

/** How much a record matters; a logger drops those below its own level. */
enum LogLevel : int
{
    Trace = 1,    ///< every step
    Debug = 2,    ///< for whoever looks for an error
    Info = 4,     ///< progress
    Warning = 8,  ///< something failed, the program goes on without it
    Error = 16,   ///< something that the user asked for failed
    Critical = 32 ///< the program cannot go on
};

/** @return the process-wide logger; never null, lives until the process ends. */
KDCORE_EXPORT KdLogger* defaultLogger();

/** Where a record comes from. Both texts have to outlive it; literals do. */
struct Source
{
    const char* file;     ///< source file without extension, relative to the repository
    const char* function; ///< qualified function name
    int line = 0;         ///< in the source file

    /**
     * @param sourceFile source file without extension, relative to the repository
     * @param qualifiedFunction as in "KdAudioRecorderHelper::stop"
     * @param sourceLine left out: the caller's
     */
    Source(const char* sourceFile, const char* qualifiedFunction, int sourceLine = __builtin_LINE())
        : file(sourceFile), function(qualifiedFunction), line(sourceLine)
    {
    }
};

/**
 * Writes one record to the default logger, if its level is wanted.
 * @param level how much it matters
 * @param source where it comes from; braces around file and function do
 * @param format as of printf, the compiler checks it; texts of Qt go in as UTF-8
 */
#if defined(__GNUC__)
__attribute__((format(printf, 3, 4)))
#endif
KDCORE_EXPORT void
write(LogLevel level, const Source& source, const char* format, ...);

} // namespace KdBaseLog

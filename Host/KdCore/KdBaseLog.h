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
    int level = 0;   ///< a KdBaseLog::LogLevel
    QByteArray file; ///< source file without extension, relative to the repository
    int line = 0;
    QByteArray function; ///< qualified function name, as in "KdAudioRecorderHelper::stop"
    QDateTime time;
    quint64 threadId = 0;
    QString message;
};

/** Where log records go. All operations may be called on any thread. */
class KDCORE_EXPORT KdLogger
{
public:
    using Observer = std::function<void(const KdLogRecord&)>;

    KdLogger();
    ~KdLogger();

    /** @return whether a record of this level would be written. */
    bool should_log_(int level) const;
    /** Writes the record to the console and, once setLogFile() named one, to the file. */
    void log_(const KdLogRecord& record);

    /** Records below this level are dropped; KdBaseLog::Info at the start. */
    void setLevel(int level);
    /** @return false when the file cannot be opened; the former file then stays. */
    bool setLogFile(const QString& path);
    /**
     * Called with every record that is written, on the thread that logs, one call at a time; null
     * takes it away. Returns when no call of the former observer is running on another thread. An
     * observer may log, which it is not told of, and may replace itself.
     */
    void setObserver(Observer observer);

private:
    Q_DISABLE_COPY(KdLogger)
    class Private;
    std::unique_ptr<Private> d;
};

namespace KdBaseLog {

enum LogLevel : int
{
    Trace = 1,
    Debug = 2,
    Info = 4,
    Warning = 8,
    Error = 16,
    Critical = 32
};

/** The process-wide logger; never null, lives until the process ends. */
KDCORE_EXPORT KdLogger* defaultLogger();

/** Where a record comes from. The line is the caller's. */
struct Source
{
    const char* file;
    const char* function;
    int line = 0;

    Source(const char* sourceFile, const char* qualifiedFunction, int sourceLine = __builtin_LINE())
        : file(sourceFile), function(qualifiedFunction), line(sourceLine)
    {
    }
};

/** Writes one record with a printf-style message to the default logger, if its level is wanted. */
#if defined(__GNUC__)
__attribute__((format(printf, 3, 4)))
#endif
KDCORE_EXPORT void
write(LogLevel level, const Source& source, const char* format, ...);

} // namespace KdBaseLog

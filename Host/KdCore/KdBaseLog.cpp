#include "KdBaseLog.h"

#include <QFile>

#include <spdlog/details/log_msg.h>
#include <spdlog/details/os.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

#include <atomic>
#include <chrono>
#include <cstdarg>
#include <mutex>

namespace {

constexpr char kPattern[] = "%Y-%m-%d %H:%M:%S.%e %l [%t] %!:%# %v";

spdlog::level::level_enum toSpdlogLevel(int level)
{
    if (level >= KdBaseLog::Critical) {
        return spdlog::level::critical;
    }
    if (level >= KdBaseLog::Error) {
        return spdlog::level::err;
    }
    if (level >= KdBaseLog::Warning) {
        return spdlog::level::warn;
    }
    if (level >= KdBaseLog::Info) {
        return spdlog::level::info;
    }
    return level >= KdBaseLog::Debug ? spdlog::level::debug : spdlog::level::trace;
}

/** One record is one line: a device name with a line break must not look like a record of its own.
 */
QByteArray toLogLine(const QString& message)
{
    QString line = message;
    line.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    line.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    return line.toUtf8();
}

std::shared_ptr<spdlog::sinks::sink> withPattern(std::shared_ptr<spdlog::sinks::sink> sink)
{
    sink->set_formatter(std::make_unique<spdlog::pattern_formatter>(kPattern));
    return sink;
}

} // namespace

class KdLogger::Private
{
public:
    void writeToSinks(const KdLogRecord& record);
    void tellObserver(const KdLogRecord& record);

    std::atomic<int> level{KdBaseLog::Info};

    std::mutex sinkMutex;
    std::shared_ptr<spdlog::sinks::sink> console =
        withPattern(std::make_shared<spdlog::sinks::stderr_color_sink_st>());
    std::shared_ptr<spdlog::sinks::sink> file;

    // Recursive, so that an observer may itself log, or take itself away.
    std::recursive_mutex observerMutex;
    std::shared_ptr<const Observer> observer;
    bool isObserving = false;
};

void KdLogger::Private::writeToSinks(const KdLogRecord& record)
{
    const QByteArray line = toLogLine(record.message);
    const spdlog::source_loc source(record.file.constData(), record.line,
                                    record.function.constData());
    const spdlog::log_clock::time_point time{
        std::chrono::milliseconds(record.time.toMSecsSinceEpoch())};
    spdlog::details::log_msg message(
        time, source, spdlog::string_view_t(), toSpdlogLevel(record.level),
        spdlog::string_view_t(line.constData(), static_cast<size_t>(line.size())));
    message.thread_id = static_cast<size_t>(record.threadId);

    const std::lock_guard<std::mutex> lock(sinkMutex);
    for (const auto& sink : {console, file}) {
        try {
            if (sink) {
                sink->log(message);
                sink->flush();
            }
        } catch (const spdlog::spdlog_ex&) {
            // A log that cannot be written, on a full disk for instance, must not stop what it
            // tells about.
            continue;
        }
    }
}

void KdLogger::Private::tellObserver(const KdLogRecord& record)
{
    const std::lock_guard<std::recursive_mutex> lock(observerMutex);
    if (!observer || isObserving) {
        return;
    }
    const std::shared_ptr<const Observer> current = observer;
    isObserving = true;
    (*current)(record);
    isObserving = false;
}

KdLogger::KdLogger() : d(std::make_unique<Private>()) {}

KdLogger::~KdLogger() = default;

bool KdLogger::should_log_(int level) const
{
    return level >= d->level.load(std::memory_order_relaxed);
}

void KdLogger::log_(const KdLogRecord& record)
{
    d->writeToSinks(record);
    d->tellObserver(record);
}

void KdLogger::setLevel(int level)
{
    d->level.store(level, std::memory_order_relaxed);
}

bool KdLogger::setLogFile(const QString& path)
{
    try {
        auto sink = withPattern(std::make_shared<spdlog::sinks::basic_file_sink_st>(
            QFile::encodeName(path).toStdString()));
        const std::lock_guard<std::mutex> lock(d->sinkMutex);
        d->file = std::move(sink);
        return true;
    } catch (const spdlog::spdlog_ex&) {
        return false;
    }
}

void KdLogger::setObserver(Observer observer)
{
    auto next = observer ? std::make_shared<const Observer>(std::move(observer)) : nullptr;
    const std::lock_guard<std::recursive_mutex> lock(d->observerMutex);
    d->observer.swap(next);
}

namespace KdBaseLog {

KdLogger* defaultLogger()
{
    // Never destroyed: destructors of static objects may still log.
    static KdLogger* const logger = new KdLogger;
    return logger;
}

void write(LogLevel level, const Source& source, const char* format, ...)
{
    KdLogger* const logger = defaultLogger();
    if (!logger->should_log_(level)) {
        return;
    }
    KdLogRecord record;
    record.level = level;
    record.file = source.file;
    record.line = source.line;
    record.function = source.function;
    record.time = QDateTime::currentDateTime();
    record.threadId = spdlog::details::os::thread_id();
    va_list arguments;
    va_start(arguments, format);
    record.message = QString::vasprintf(format, arguments);
    va_end(arguments);
    logger->log_(record);
}

} // namespace KdBaseLog

#include <KdVBLModel/KdTakeOutput.h>

#include <KdCore/KdBaseLog.h>
#include <KdVBLModel/KdTakeRepair.h>

#include <QFile>
#include <QFileInfo>

#include <future>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto kPatience = 1900ms;
constexpr auto kDrainPatience = 1400ms;
constexpr auto kShutDownPatience = 500ms;
/** A disk that is this far behind has failed; until then what it is to get waits in memory. */
constexpr auto kBacklogLimit = 60s;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdTakeOutput", function, line};
}

} // namespace

bool KdTakeOutput::claim(const KdTakeRecord& record, bool takeAgain, QString* error)
{
    const QString& path = record.takePath;
    // A former take that is set aside is found by the journal alone, so the journal goes first
    // then.
    if (takeAgain && !m_journal.begin(record, error)) {
        return false;
    }
    if (!(takeAgain ? m_file.claimAgain(path, error) : m_file.claim(path, error))) {
        m_journal.remove();
        return false;
    }
    if (!takeAgain && !m_journal.begin(record, error)) {
        m_file.release();
        return false;
    }
    return true;
}

bool KdTakeOutput::start(const QVector<KdTakeTrack>& tracks, QString* error)
{
    m_pipeline = std::make_shared<KdTakePipeline>();
    if (tracks.isEmpty() ||
        !m_pipeline->start(KdTakeFile::locationFor(m_file.path()), tracks, error)) {
        m_pipeline.reset();
        m_journal.remove();
        m_file.release();
        return false;
    }
    m_isOpen = true;
    return true;
}

bool KdTakeOutput::push(int track, GstBuffer* buffer)
{
    if (!m_isOpen || m_pipeline->hasFailed()) {
        gst_buffer_unref(buffer);
        return false;
    }
    if (m_pipeline->backlog(track) > kBacklogLimit) {
        gst_buffer_unref(buffer);
        fail(QStringLiteral("The disk is too slow for the recording."));
        return false;
    }
    if (!m_hasBegun.exchange(true)) {
        m_file.begun();
    }
    return m_pipeline->push(track, buffer);
}

quint64 KdTakeOutput::rawBacklog(int track) const
{
    return m_isOpen ? m_pipeline->rawBacklog(track) : 0;
}

std::chrono::nanoseconds KdTakeOutput::backlog(int track) const
{
    return m_isOpen ? m_pipeline->backlog(track) : std::chrono::nanoseconds(0);
}

void KdTakeOutput::fail(const QString& error)
{
    if (m_pipeline) {
        m_pipeline->fail(error);
    }
}

KdTakeResult KdTakeOutput::finish(bool hasMedia)
{
    if (m_isOpen) {
        m_isOpen = false;
        m_result = hasMedia ? end() : abandon();
    }
    return m_result;
}

// The order matters: the end of the stream goes through the muxer, then the elements let the file
// go, then it is looked at and made durable, and only then is the journal, which would have it
// repaired, taken away.
KdTakeResult KdTakeOutput::end()
{
    const auto until = std::chrono::steady_clock::now() + kPatience;
    const bool isDrained = m_pipeline->drain(kDrainPatience);
    const bool isShutDown = shutDownInTime();
    const QString path = m_file.path();
    const bool isInPlace = m_file.isInPlace();
    QString problem = isDrained ? QString() : m_pipeline->error();
    const bool isOnDisk = isShutDown && m_file.finish(&problem);
    if (isDrained && isOnDisk) {
        m_journal.remove();
        return KdTakeResult::Finished;
    }
    KdBaseLog::write(KdBaseLog::Error, here("KdTakeOutput::finish"),
                     "The take %s did not end well: %s", qUtf8Printable(path),
                     qUtf8Printable(problem));
    return isShutDown ? judgeFailed(path, isInPlace, until) : KdTakeResult::Lost;
}

KdTakeResult KdTakeOutput::abandon()
{
    shutDownInTime();
    m_file.release();
    m_journal.remove();
    return KdTakeResult::Lost;
}

bool KdTakeOutput::shutDownInTime()
{
    // A disk that hangs holds the elements' threads, and must not hold the caller's too.
    std::packaged_task<void()> task([held = m_pipeline] { held->shutDown(); });
    std::future<void> done = task.get_future();
    std::thread worker(std::move(task));
    if (done.wait_for(kShutDownPatience) == std::future_status::ready) {
        worker.join();
        return true;
    }
    worker.detach();
    return false;
}

// What lies at the path is only ours to mend or remove when it is the file that was claimed.
KdTakeResult KdTakeOutput::judgeFailed(const QString& path, bool isInPlace,
                                       std::chrono::steady_clock::time_point until)
{
    if (!isInPlace || QFileInfo(path).size() == 0) {
        m_journal.remove();
        return KdTakeResult::Lost;
    }
    const RepairResult repaired = KdTakeRepair::run(
        path, [until](int /*percent*/) { return std::chrono::steady_clock::now() < until; });
    KdBaseLog::write(KdBaseLog::Info, here("KdTakeOutput::finish"), "%s",
                     qUtf8Printable(repaired.message));
    switch (repaired.outcome) {
    case RepairResult::Outcome::Repaired:
        m_journal.remove();
        return KdTakeResult::Kept;
    case RepairResult::Outcome::NothingRecoverable:
        QFile::remove(path);
        m_journal.remove();
        return KdTakeResult::Lost;
    default:
        // The journal stays, so that it is mended at the next start, when there is room or time.
        return KdTakeResult::Kept;
    }
}

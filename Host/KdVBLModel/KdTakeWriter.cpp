#include "KdTakeWriter.h"

#include "KdTakePipeline.h"

#include <KdCore/KdBaseLog.h>
#include <KdVBLModel/KdAacEncoder.h>
#include <KdVBLModel/KdTakeFile.h>
#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdTakeRepair.h>

#include <QFile>
#include <QFileInfo>

#include <gst/audio/audio.h>

#include <atomic>
#include <future>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto kPatience = 1900ms;
constexpr auto kDrainPatience = 1400ms;
constexpr auto kShutDownPatience = 500ms;
/** A disk that is this far behind has failed; until then its sound waits in memory. */
constexpr auto kBacklogLimit = 60s;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdTakeWriter", function, line};
}

GstCaps* rawCaps(const KdAacFormat& format, int bitsPerSample)
{
    GstCaps* const caps = KdAacEncoder::inputCaps(format);
    const char* const sample = bitsPerSample <= 16 ? GST_AUDIO_NE(S16) : GST_AUDIO_NE(F32);
    gst_caps_set_simple(caps, "format", G_TYPE_STRING, sample, "layout", G_TYPE_STRING,
                        "interleaved", nullptr);
    return caps;
}

KdTakeRecord recordOf(const QString& path, const KdAacFormat& format)
{
    KdTakeRecord record;
    record.takePath = path;
    record.kind = KdTakeRecord::Kind::Audio;
    record.format = QStringLiteral("AAC %1 Hz, %2 channels, %3 kbit/s")
                        .arg(format.samplerate)
                        .arg(format.channels)
                        .arg(format.bitrate / 1000);
    return record;
}

} // namespace

class KdTakeWriter::Private
{
public:
    ~Private()
    {
        if (caps) {
            gst_caps_unref(caps);
        }
    }

    bool open(const QString& path, const KdVBLMODEL::KdAudioFormat& asked, bool takeAgain,
              QString* error);
    bool claim(const QString& path, bool takeAgain, QString* error);
    void stamp(GstBuffer* buffer);
    Result end();
    Result abandon();
    bool shutDownInTime();
    Result judgeFailed(const QString& path, bool isInPlace,
                       std::chrono::steady_clock::time_point until);

    std::shared_ptr<KdTakePipeline> pipeline; ///< shared with a thread that shuts it down
    KdTakeFile file;
    KdTakeJournal journal;
    KdAacFormat format;
    GstCaps* caps = nullptr;
    int bytesPerFrame = 0;
    std::atomic<qint64> frames{0};
    bool isOpen = false;
    Result result = Result::Lost;
};

bool KdTakeWriter::Private::open(const QString& path, const KdVBLMODEL::KdAudioFormat& asked,
                                 bool takeAgain, QString* error)
{
    format = nearestAacFormat(asked);
    if (!format.note.isEmpty()) {
        KdBaseLog::write(KdBaseLog::Info, here("KdTakeWriter::open"), "%s",
                         qUtf8Printable(format.note));
    }
    caps = rawCaps(format, asked.bitPerSample);
    GstAudioInfo info;
    if (!gst_audio_info_from_caps(&info, caps)) {
        *error = QStringLiteral("The audio format is unusable.");
        return false;
    }
    bytesPerFrame = GST_AUDIO_INFO_BPF(&info);
    if (!claim(path, takeAgain, error)) {
        return false;
    }
    pipeline = std::make_shared<KdTakePipeline>();
    if (!pipeline->start(KdTakeFile::locationFor(path), format, caps, error)) {
        pipeline.reset();
        journal.remove();
        file.release();
        return false;
    }
    isOpen = true;
    return true;
}

bool KdTakeWriter::Private::claim(const QString& path, bool takeAgain, QString* error)
{
    // A former take that is set aside is found by the journal alone, so the journal goes first
    // then.
    if (takeAgain && !journal.begin(recordOf(path, format), error)) {
        return false;
    }
    if (!(takeAgain ? file.claimAgain(path, error) : file.claim(path, error))) {
        journal.remove();
        return false;
    }
    if (!takeAgain && !journal.begin(recordOf(path, format), error)) {
        file.release();
        return false;
    }
    return true;
}

void KdTakeWriter::Private::stamp(GstBuffer* buffer)
{
    const qint64 count = static_cast<qint64>(gst_buffer_get_size(buffer)) / bytesPerFrame;
    const qint64 first = frames.fetch_add(count);
    const auto timeOf = [this](qint64 frame) {
        return gst_util_uint64_scale_int(static_cast<guint64>(frame), GST_SECOND,
                                         format.samplerate);
    };
    GST_BUFFER_PTS(buffer) = timeOf(first);
    GST_BUFFER_DTS(buffer) = GST_CLOCK_TIME_NONE;
    GST_BUFFER_DURATION(buffer) = timeOf(first + count) - timeOf(first);
    GST_BUFFER_OFFSET(buffer) = static_cast<guint64>(first);
    GST_BUFFER_OFFSET_END(buffer) = static_cast<guint64>(first + count);
    GST_BUFFER_FLAG_UNSET(buffer, GST_BUFFER_FLAG_DISCONT);
}

// The order matters: the end of the stream goes through the muxer, then the elements let the file
// go, then it is looked at and made durable, and only then is the journal, which would have it
// repaired, taken away.
KdTakeWriter::Result KdTakeWriter::Private::end()
{
    if (frames == 0) {
        return abandon();
    }
    const auto until = std::chrono::steady_clock::now() + kPatience;
    const bool isDrained = pipeline->drain(kDrainPatience);
    const bool isShutDown = shutDownInTime();
    const QString path = file.path();
    const bool isInPlace = file.isInPlace();
    QString problem = isDrained ? QString() : pipeline->error();
    const bool isOnDisk = isShutDown && file.finish(&problem);
    if (isDrained && isOnDisk) {
        journal.remove();
        return Result::Finished;
    }
    KdBaseLog::write(KdBaseLog::Error, here("KdTakeWriter::finish"),
                     "The take %s did not end well: %s", qUtf8Printable(path),
                     qUtf8Printable(problem));
    return isShutDown ? judgeFailed(path, isInPlace, until) : Result::Lost;
}

KdTakeWriter::Result KdTakeWriter::Private::abandon()
{
    shutDownInTime();
    file.release();
    journal.remove();
    return Result::Lost;
}

bool KdTakeWriter::Private::shutDownInTime()
{
    // A disk that hangs holds the elements' threads, and must not hold the caller's too.
    std::packaged_task<void()> task([held = pipeline] { held->shutDown(); });
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
KdTakeWriter::Result KdTakeWriter::Private::judgeFailed(const QString& path, bool isInPlace,
                                                        std::chrono::steady_clock::time_point until)
{
    if (!isInPlace || QFileInfo(path).size() == 0) {
        journal.remove();
        return Result::Lost;
    }
    const RepairResult repaired = KdTakeRepair::run(
        path, [until](int /*percent*/) { return std::chrono::steady_clock::now() < until; });
    KdBaseLog::write(KdBaseLog::Info, here("KdTakeWriter::finish"), "%s",
                     qUtf8Printable(repaired.message));
    switch (repaired.outcome) {
    case RepairResult::Outcome::Repaired:
        journal.remove();
        return Result::Kept;
    case RepairResult::Outcome::NothingRecoverable:
        QFile::remove(path);
        journal.remove();
        return Result::Lost;
    default:
        // The journal stays, so that it is mended at the next start, when there is room or time.
        return Result::Kept;
    }
}

KdTakeWriter::KdTakeWriter() : d(std::make_unique<Private>()) {}

KdTakeWriter::~KdTakeWriter()
{
    finish();
}

bool KdTakeWriter::open(const QString& path, const KdVBLMODEL::KdAudioFormat& format,
                        bool takeAgain, QString* error)
{
    QString problem;
    if (d->caps) {
        problem = QStringLiteral("The writer was used before.");
    } else if (d->open(path, format, takeAgain, &problem)) {
        return true;
    }
    KdBaseLog::write(KdBaseLog::Error, here("KdTakeWriter::open"), "%s", qUtf8Printable(problem));
    if (error) {
        *error = problem;
    }
    return false;
}

GstCaps* KdTakeWriter::inputCaps() const
{
    return d->caps;
}

int KdTakeWriter::samplerate() const
{
    return d->format.samplerate;
}

int KdTakeWriter::channels() const
{
    return d->format.channels;
}

bool KdTakeWriter::push(GstBuffer* buffer)
{
    if (!buffer) {
        return false;
    }
    if (!d->isOpen || d->pipeline->hasFailed()) {
        gst_buffer_unref(buffer);
        return false;
    }
    if (d->pipeline->backlog() > kBacklogLimit) {
        gst_buffer_unref(buffer);
        d->pipeline->fail(QStringLiteral("The disk is too slow for the recording."));
        return false;
    }
    d->file.begun();
    GstBuffer* const own = gst_buffer_make_writable(buffer);
    d->stamp(own);
    return d->pipeline->push(own);
}

qint64 KdTakeWriter::framesPushed() const
{
    return d->frames;
}

bool KdTakeWriter::hasFailed() const
{
    return d->pipeline && d->pipeline->hasFailed();
}

QString KdTakeWriter::error() const
{
    return d->pipeline ? d->pipeline->error() : QString();
}

KdTakeWriter::Result KdTakeWriter::finish()
{
    if (d->isOpen) {
        d->isOpen = false;
        d->result = d->end();
    }
    return d->result;
}

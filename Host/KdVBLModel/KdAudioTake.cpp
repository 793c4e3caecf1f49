#include <KdVBLModel/KdAudioTake.h>

#include <KdVBLModel/KdAudioChain.h>
#include <KdVBLModel/KdDiskReserve.h>

#include <KdCore/KdBaseLog.h>

namespace {

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdAudioTake", function, line};
}

} // namespace

KdAudioTake::~KdAudioTake()
{
    finish();
}

bool KdAudioTake::open(const QString& path, const KdVBLMODEL::KdAudioFormat& format, int intervalMs,
                       bool takeAgain)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_path = path;
    m_bitrate = format.bitrate;
    m_intervalMs = intervalMs;
    if (isDiskNearlyFull()) {
        KdBaseLog::write(KdBaseLog::Error, source("KdAudioTake::open"),
                         "The disk is full; there is no room for %s.", qUtf8Printable(path));
        return false;
    }
    if (!m_writer.open(path, format, takeAgain, nullptr)) {
        return false;
    }
    const KdGstCapsPtr from(KdAudioChain::createCaps());
    m_converter = KdAudioConverter::create(from.get(), m_writer.inputCaps());
    m_pauses.start(0);
    m_isClosed = !m_converter;
    return m_converter != nullptr;
}

std::optional<qint64> KdAudioTake::feed(GstBuffer* buffer, qint64 nowNs)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    GstMapInfo map;
    if (m_isClosed || !gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return std::nullopt;
    }
    const qint64 begin = m_arrivals.received();
    const qint64 frames = static_cast<qint64>(map.size) / m_converter->bytesPerFrame();
    m_arrivals.arrived(frames, nowNs);
    write(map.data, m_pauses.recorded(begin, begin + frames), begin);
    gst_buffer_unmap(buffer, &map);
    return dueTime();
}

void KdAudioTake::write(const guint8* data, const std::vector<KdPauseClock::Span>& spans,
                        qint64 begin)
{
    for (const KdPauseClock::Span& span : spans) {
        const qint64 offset = (span.begin - begin) * m_converter->bytesPerFrame();
        push(m_converter->convert(data + offset, span.end - span.begin));
    }
}

void KdAudioTake::push(KdGstBufferPtr buffer)
{
    if (buffer && m_writer.push(buffer.release())) {
        m_changed.notify_all();
    }
}

std::optional<qint64> KdAudioTake::dueTime()
{
    const qint64 msec = recordedMs();
    const qint64 intervals = msec / m_intervalMs;
    if (intervals == m_toldIntervals) {
        return std::nullopt;
    }
    m_toldIntervals = intervals;
    return msec;
}

void KdAudioTake::pause(qint64 nowNs)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pauses.pause(m_arrivals.positionAt(nowNs));
}

void KdAudioTake::resume(qint64 nowNs)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pauses.resume(m_arrivals.positionAt(nowNs));
}

void KdAudioTake::close()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isClosed) {
        m_isClosed = true;
        push(m_converter->drain());
    }
}

qint64 KdAudioTake::recordedMs() const
{
    const int rate = m_writer.samplerate();
    return rate > 0 ? m_writer.framesPushed() * 1000 / rate : 0;
}

bool KdAudioTake::waitForSound(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, patience, [this] { return hasSound(); });
}

bool KdAudioTake::mustEnd()
{
    if (m_writer.hasFailed()) {
        return true;
    }
    if (!isDiskNearlyFull()) {
        return false;
    }
    KdBaseLog::write(KdBaseLog::Error, source("KdAudioTake::mustEnd"),
                     "The disk is full; the take %s ends after %lld ms.", qUtf8Printable(m_path),
                     static_cast<long long>(recordedMs()));
    return true;
}

bool KdAudioTake::isDiskNearlyFull() const
{
    const qint64 free = KdDiskReserve::freeBytesAt(m_path);
    return free >= 0 &&
           free < KdDiskReserve::bytesToFinish(recordedMs(), m_writer.samplerate(), m_bitrate);
}

bool KdAudioTake::finish()
{
    if (const std::optional<bool> known = waitForOutcome(std::chrono::milliseconds(0))) {
        return *known;
    }
    close();
    const KdTakeWriter::Result result = m_writer.finish();
    const bool isKept = result != KdTakeWriter::Result::Lost;
    logEnd(result);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_outcome = isKept;
    m_changed.notify_all();
    return isKept;
}

void KdAudioTake::logEnd(KdTakeWriter::Result result) const
{
    if (!m_converter) {
        return; // it never began
    }
    const char* end = result == KdTakeWriter::Result::Finished ? "finished"
                      : result == KdTakeWriter::Result::Kept   ? "kept up to a failure"
                                                               : "no file";
    KdBaseLog::write(KdBaseLog::Info, source("KdAudioTake::finish"), "%s: %lld ms, %s",
                     qUtf8Printable(m_path), static_cast<long long>(recordedMs()), end);
}

std::optional<bool> KdAudioTake::waitForOutcome(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, patience, [this] { return m_outcome.has_value(); });
    return m_outcome;
}

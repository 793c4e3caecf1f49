#include <KdVBLModel/KdTakeSound.h>

#include <KdCore/KdBaseLog.h>
#include <KdVBLModel/KdAacEncoder.h>

#include <gst/audio/audio.h>

namespace {

KdGstCapsPtr rawCaps(const KdAacFormat& format, int bitsPerSample)
{
    KdGstCapsPtr caps(KdAacEncoder::inputCaps(format));
    const char* const sample = bitsPerSample <= 16 ? GST_AUDIO_NE(S16) : GST_AUDIO_NE(F32);
    gst_caps_set_simple(caps.get(), "format", G_TYPE_STRING, sample, "layout", G_TYPE_STRING,
                        "interleaved", nullptr);
    return caps;
}

} // namespace

bool KdTakeSound::open(const KdVBLMODEL::KdAudioFormat& asked, QString* error)
{
    m_format = nearestAacFormat(asked);
    if (!m_format.note.isEmpty()) {
        KdBaseLog::write(KdBaseLog::Info, {"Host/KdVBLModel/KdTakeSound", "KdTakeSound::open"},
                         "%s", qUtf8Printable(m_format.note));
    }
    m_caps = rawCaps(m_format, asked.bitPerSample);
    GstAudioInfo info;
    if (!gst_audio_info_from_caps(&info, m_caps.get())) {
        *error = QStringLiteral("The audio format is unusable.");
        return false;
    }
    m_bytesPerFrame = GST_AUDIO_INFO_BPF(&info);
    return true;
}

QVector<KdTakeTrack> KdTakeSound::createTracks(QString* error)
{
    GstElement* const encoder = KdAacEncoder::create(m_format, error);
    GstElement* const convert =
        encoder ? gst_element_factory_make("audioconvert", nullptr) : nullptr;
    if (!convert) {
        if (encoder) {
            gst_object_unref(encoder);
            *error = QStringLiteral("The element audioconvert is not installed.");
        }
        return {};
    }
    m_encoder = kdRef(encoder);
    m_delay = KdAacEncoder::delay(encoder);
    KdTakeTrack track;
    track.input = m_caps.get();
    track.chain = {convert, encoder};
    return {track};
}

QString KdTakeSound::text() const
{
    return QStringLiteral("AAC %1 Hz, %2 channels, %3 kbit/s")
        .arg(m_format.samplerate)
        .arg(m_format.channels)
        .arg(m_format.bitrate / 1000);
}

void KdTakeSound::stamp(GstBuffer* buffer)
{
    const qint64 count = static_cast<qint64>(gst_buffer_get_size(buffer)) / m_bytesPerFrame;
    stampAt(buffer, m_frames.fetch_add(count), count);
}

void KdTakeSound::stampAt(GstBuffer* buffer, qint64 first, qint64 count) const
{
    const auto timeOf = [this](qint64 frame) {
        return gst_util_uint64_scale_int(static_cast<guint64>(frame), GST_SECOND,
                                         m_format.samplerate);
    };
    GST_BUFFER_PTS(buffer) = timeOf(first);
    GST_BUFFER_DTS(buffer) = GST_CLOCK_TIME_NONE;
    GST_BUFFER_DURATION(buffer) = timeOf(first + count) - timeOf(first);
    GST_BUFFER_OFFSET(buffer) = static_cast<guint64>(first);
    GST_BUFFER_OFFSET_END(buffer) = static_cast<guint64>(first + count);
    GST_BUFFER_FLAG_UNSET(buffer, GST_BUFFER_FLAG_DISCONT);
}

KdGstBufferPtr KdTakeSound::silence(qint64 frames) const
{
    if (frames <= 0) {
        return nullptr;
    }
    const auto bytes = static_cast<gsize>(frames) * static_cast<gsize>(m_bytesPerFrame);
    KdGstBufferPtr buffer(gst_buffer_new_allocate(nullptr, bytes, nullptr));
    gst_buffer_memset(buffer.get(), 0, 0, bytes);
    return buffer;
}

KdGstBufferPtr KdTakeSound::tail() const
{
    const int frames = m_encoder ? KdAacEncoder::framesToFlush(m_encoder.get(), m_frames) : 0;
    KdGstBufferPtr buffer = silence(frames);
    if (buffer) {
        stampAt(buffer.get(), m_frames, frames);
    }
    return buffer;
}

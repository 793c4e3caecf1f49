#include <KdVBLModel/KdAudioConverter.h>

#include <vector>

namespace {

// What the resampler of GStreamer's own pipelines uses: inaudible, at a hundredth of a core.
constexpr guint kResamplerQuality = 4;

GstStructure* options(int fromRate, int toRate)
{
    GstStructure* options = gst_structure_new("options", GST_AUDIO_CONVERTER_OPT_RESAMPLER_METHOD,
                                              GST_TYPE_AUDIO_RESAMPLER_METHOD,
                                              GST_AUDIO_RESAMPLER_METHOD_KAISER, nullptr);
    gst_audio_resampler_options_set_quality(GST_AUDIO_RESAMPLER_METHOD_KAISER, kResamplerQuality,
                                            fromRate, toRate, options);
    return options;
}

} // namespace

std::unique_ptr<KdAudioConverter> KdAudioConverter::create(const GstCaps* from, const GstCaps* to)
{
    GstAudioInfo fromInfo;
    GstAudioInfo toInfo;
    if (!from || !to || !gst_audio_info_from_caps(&fromInfo, from) ||
        !gst_audio_info_from_caps(&toInfo, to)) {
        return nullptr;
    }
    GstAudioConverter* converter = gst_audio_converter_new(
        GST_AUDIO_CONVERTER_FLAG_NONE, &fromInfo, &toInfo, options(fromInfo.rate, toInfo.rate));
    return std::unique_ptr<KdAudioConverter>(
        converter ? new KdAudioConverter(fromInfo, toInfo, converter) : nullptr);
}

KdAudioConverter::KdAudioConverter(const GstAudioInfo& from, const GstAudioInfo& to,
                                   GstAudioConverter* converter)
    : m_from(from), m_to(to), m_converter(converter)
{
}

KdAudioConverter::~KdAudioConverter()
{
    gst_audio_converter_free(m_converter);
}

// The library crashes when it is given less than it needs for one frame: that waits here.
KdGstBufferPtr KdAudioConverter::convert(const void* data, qint64 frames)
{
    const auto* bytes = static_cast<const char*>(data);
    m_waiting.insert(m_waiting.end(), bytes, bytes + frames * m_from.bpf);
    const gsize inFrames = m_waiting.size() / static_cast<gsize>(m_from.bpf);
    const gsize outFrames = gst_audio_converter_get_out_frames(m_converter, inFrames);
    if (outFrames == 0) {
        return nullptr;
    }
    const gsize size = outFrames * static_cast<gsize>(m_to.bpf);
    KdGstBufferPtr buffer(gst_buffer_new_allocate(nullptr, size, nullptr));
    GstMapInfo map;
    if (!gst_buffer_map(buffer.get(), &map, GST_MAP_WRITE)) {
        return nullptr;
    }
    gpointer in[] = {m_waiting.data()};
    gpointer out[] = {map.data};
    const bool isConverted = gst_audio_converter_samples(m_converter, GST_AUDIO_CONVERTER_FLAG_NONE,
                                                         in, inFrames, out, outFrames);
    m_isUsed = true;
    m_waiting.clear();
    gst_buffer_unmap(buffer.get(), &map);
    return isConverted ? std::move(buffer) : nullptr;
}

KdGstBufferPtr KdAudioConverter::drain()
{
    const bool isUsed = m_isUsed || !m_waiting.empty();
    const gsize held = isUsed ? gst_audio_converter_get_max_latency(m_converter) : 0;
    // Silence of our own: the library's own way of draining does not survive every state.
    const std::vector<char> silence(held * static_cast<gsize>(m_from.bpf), 0);
    return held > 0 ? convert(silence.data(), static_cast<qint64>(held)) : nullptr;
}

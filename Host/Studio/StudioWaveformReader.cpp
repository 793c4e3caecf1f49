#include <Studio/StudioWaveformReader.h>

#include <KdCore/KdBaseLog.h>
#include <Studio/StudioGst.h>
#include <Studio/StudioWorkGate.h>

#include <gst/app/gstappsink.h>

namespace {

constexpr GstClockTime kPullTimeout = 200 * GST_MSECOND;
/** A decoder that delivers nothing for 5 s is given up. */
constexpr int kMostEmptyPulls = 25;

struct Decoder
{
    StudioGst::Pipeline pipeline;
    GstElement* sink = nullptr; ///< owned by the pipeline
};

void linkSound(GstElement*, GstPad* pad, gpointer converter)
{
    GstPad* const target = gst_element_get_static_pad(static_cast<GstElement*>(converter), "sink");
    if (!gst_pad_is_linked(target)) {
        gst_pad_link(pad, target);
    }
    gst_object_unref(target);
}

/** Only sound is of interest: a picture would be decoded for nothing. */
GstCaps* monoFloat()
{
    return gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "F32LE", "channels",
                               G_TYPE_INT, 1, "layout", G_TYPE_STRING, "interleaved", nullptr);
}

void configure(GstElement* source, GstElement* decoder, GstElement* sink, const QString& path)
{
    g_object_set(source, "location", path.toUtf8().constData(), nullptr);
    GstCaps* const raw = gst_caps_from_string("audio/x-raw");
    g_object_set(decoder, "caps", raw, "expose-all-streams", FALSE, nullptr);
    gst_caps_unref(raw);
    GstCaps* const caps = monoFloat();
    g_object_set(sink, "caps", caps, "sync", FALSE, "max-buffers", 8U, "emit-signals", FALSE,
                 nullptr);
    gst_caps_unref(caps);
}

Decoder makeDecoder(const QString& path, QString* missing)
{
    Decoder decoder;
    decoder.pipeline.reset(gst_pipeline_new(nullptr));
    GstElement* const pipeline = decoder.pipeline.get();
    GstElement* const source = StudioGst::add(pipeline, "filesrc", missing);
    GstElement* const decodebin = StudioGst::add(pipeline, "decodebin", missing);
    GstElement* const converter = StudioGst::add(pipeline, "audioconvert", missing);
    decoder.sink = StudioGst::add(pipeline, "appsink", missing);
    if (!missing->isEmpty()) {
        return decoder;
    }
    configure(source, decodebin, decoder.sink, path);
    g_signal_connect(decodebin, "pad-added", G_CALLBACK(linkSound), converter);
    if (!gst_element_link(source, decodebin) || !gst_element_link(converter, decoder.sink)) {
        *missing = QStringLiteral("a link between decoder and sink");
    }
    return decoder;
}

void fold(GstSample* sample, StudioPeakFolder* folder)
{
    GstBuffer* const buffer = gst_sample_get_buffer(sample);
    GstMapInfo map;
    if (buffer && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        folder->add(reinterpret_cast<const float*>(map.data), map.size / sizeof(float));
        gst_buffer_unmap(buffer, &map);
    }
}

void pullAll(const Decoder& decoder, StudioWorkGate& gate, StudioPeakFolder* folder)
{
    GstAppSink* const sink = GST_APP_SINK(decoder.sink);
    int emptyPulls = 0;
    while (emptyPulls < kMostEmptyPulls && gate.pass()) {
        const StudioGst::Sample sample(gst_app_sink_try_pull_sample(sink, kPullTimeout));
        if (sample) {
            fold(sample.get(), folder);
            emptyPulls = 0;
        } else if (gst_app_sink_is_eos(sink) ||
                   !StudioGst::busError(decoder.pipeline.get()).isEmpty()) {
            return;
        } else {
            ++emptyPulls;
        }
    }
}

} // namespace

StudioPeaks readWaveform(const QString& path, StudioWorkGate& gate)
{
    if (!StudioGst::start()) {
        return {};
    }
    QString missing;
    const Decoder decoder = makeDecoder(path, &missing);
    if (!missing.isEmpty()) {
        KdBaseLog::write(KdBaseLog::Warning, {"Host/Studio/StudioWaveformReader", "readWaveform"},
                         "No waveform: GStreamer lacks %s", qPrintable(missing));
        return {};
    }
    StudioPeakFolder folder;
    gst_element_set_state(decoder.pipeline.get(), GST_STATE_PLAYING);
    pullAll(decoder, gate, &folder);
    return folder.peaks();
}

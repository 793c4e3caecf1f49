#include <Studio/StudioSoundCheck.h>

#include <Studio/StudioGst.h>

#include <QElapsedTimer>

#include <gst/app/gstappsink.h>

#include <cmath>

namespace StudioSoundCheck {

namespace {

constexpr float kAudible = 0.01F;
constexpr GstClockTime kPullTimeout = 100 * GST_MSECOND;

bool isAudible(GstSample* sample)
{
    GstBuffer* const buffer = gst_sample_get_buffer(sample);
    GstMapInfo map;
    if (!buffer || !gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return false;
    }
    const auto* const samples = reinterpret_cast<const float*>(map.data);
    const std::size_t count = map.size / sizeof(float);
    bool audible = false;
    for (std::size_t i = 0; i < count && !audible; ++i) {
        audible = std::abs(samples[i]) > kAudible;
    }
    gst_buffer_unmap(buffer, &map);
    return audible;
}

QString waitForSound(GstElement* pipeline, GstElement* sink, int timeoutMs)
{
    QElapsedTimer elapsed;
    elapsed.start();
    bool anything = false;
    while (!elapsed.hasExpired(timeoutMs)) {
        const StudioGst::Sample sample(
            gst_app_sink_try_pull_sample(GST_APP_SINK(sink), kPullTimeout));
        if (sample && isAudible(sample.get())) {
            return {};
        }
        anything = anything || sample;
        QString error = StudioGst::busError(pipeline);
        if (!error.isEmpty()) {
            return error;
        }
    }
    return anything ? QStringLiteral("It delivers nothing but silence.")
                    : QStringLiteral("It delivers nothing at all.");
}

} // namespace

QString listen(const QString& device, int timeoutMs)
{
    if (!StudioGst::start()) {
        return QStringLiteral("The media framework cannot be started.");
    }
    const StudioGst::Pipeline pipeline(gst_pipeline_new(nullptr));
    QString missing;
    GstElement* const source = StudioGst::add(pipeline.get(), "pulsesrc", &missing);
    GstElement* const converter = StudioGst::add(pipeline.get(), "audioconvert", &missing);
    GstElement* const sink = StudioGst::add(pipeline.get(), "appsink", &missing);
    if (!missing.isEmpty()) {
        return QStringLiteral("GStreamer lacks the element \"%1\".").arg(missing);
    }
    g_object_set(source, "device", device.toUtf8().constData(), nullptr);
    GstCaps* const caps =
        gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "F32LE", nullptr);
    g_object_set(sink, "caps", caps, "sync", FALSE, "max-buffers", 8U, "drop", TRUE, nullptr);
    gst_caps_unref(caps);
    gst_element_link_many(source, converter, sink, nullptr);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    return waitForSound(pipeline.get(), sink, timeoutMs);
}

} // namespace StudioSoundCheck

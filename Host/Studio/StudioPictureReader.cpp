#include <Studio/StudioPictureReader.h>

#include <KdCore/KdBaseLog.h>
#include <Studio/StudioGst.h>
#include <Studio/StudioWorkGate.h>

#include <gst/app/gstappsink.h>

namespace {

constexpr GstClockTime kPullTimeout = 200 * GST_MSECOND;
/** A decoder that delivers nothing for 5 s is given up. */
constexpr int kMostEmptyPulls = 25;

void linkPicture(GstElement*, GstPad* pad, gpointer converter)
{
    GstPad* const target = gst_element_get_static_pad(static_cast<GstElement*>(converter), "sink");
    if (!gst_pad_is_linked(target)) {
        gst_pad_link(pad, target);
    }
    gst_object_unref(target);
}

/** Only the picture is of interest: sound would be decoded for nothing. */
void configure(GstElement* source, GstElement* decoder, GstElement* sink, const QString& path)
{
    g_object_set(source, "location", path.toUtf8().constData(), nullptr);
    GstCaps* const raw = gst_caps_from_string("video/x-raw(ANY)");
    g_object_set(decoder, "caps", raw, "expose-all-streams", FALSE, nullptr);
    gst_caps_unref(raw);
    GstCaps* const caps = StudioGst::pictureCaps();
    g_object_set(sink, "caps", caps, "max-buffers", 1U, "emit-signals", FALSE, nullptr);
    gst_caps_unref(caps);
}

/** @return the sink, which the pipeline owns; null when missing names something */
GstElement* makeDecoder(GstElement* pipeline, const QString& path, QString* missing)
{
    GstElement* const source = StudioGst::add(pipeline, "filesrc", missing);
    GstElement* const decodebin = StudioGst::add(pipeline, "decodebin", missing);
    GstElement* const converter = StudioGst::add(pipeline, "videoconvert", missing);
    GstElement* const sink = StudioGst::add(pipeline, "appsink", missing);
    if (!missing->isEmpty()) {
        return nullptr;
    }
    configure(source, decodebin, sink, path);
    g_signal_connect(decodebin, "pad-added", G_CALLBACK(linkPicture), converter);
    if (!gst_element_link(source, decodebin) || !gst_element_link(converter, sink)) {
        *missing = QStringLiteral("a link between decoder and sink");
    }
    return sink;
}

StudioGst::Sample waitForPicture(GstElement* pipeline, GstElement* sink, StudioWorkGate& gate)
{
    for (int i = 0; i < kMostEmptyPulls && gate.pass(); ++i) {
        StudioGst::Sample sample(gst_app_sink_try_pull_preroll(GST_APP_SINK(sink), kPullTimeout));
        if (sample || gst_app_sink_is_eos(GST_APP_SINK(sink)) ||
            !StudioGst::busError(pipeline).isEmpty()) {
            return sample;
        }
    }
    return nullptr;
}

StudioGst::Sample pictureAt(GstElement* pipeline, GstElement* sink, qint64 milliseconds,
                            StudioWorkGate& gate)
{
    StudioGst::Sample first = waitForPicture(pipeline, sink, gate);
    if (!first || milliseconds <= 0) {
        return first;
    }
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_KEY_UNIT);
    if (!gst_element_seek_simple(pipeline, GST_FORMAT_TIME, flags, milliseconds * GST_MSECOND)) {
        return first;
    }
    StudioGst::Sample there = waitForPicture(pipeline, sink, gate);
    return there ? std::move(there) : std::move(first);
}

QImage within(const QImage& picture, const QSize& bound)
{
    const bool fits = picture.width() <= bound.width() && picture.height() <= bound.height();
    return fits ? picture.copy()
                : picture.scaled(bound, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QImage readPicture(const QString& path, qint64 milliseconds, const QSize& bound,
                   StudioWorkGate& gate)
{
    if (!StudioGst::start()) {
        return {};
    }
    const StudioGst::Pipeline pipeline(gst_pipeline_new(nullptr));
    QString missing;
    GstElement* const sink = makeDecoder(pipeline.get(), path, &missing);
    if (!missing.isEmpty()) {
        KdBaseLog::write(KdBaseLog::Warning, {"Host/Studio/StudioPictureReader", "readPicture"},
                         "No picture: GStreamer lacks %s", qPrintable(missing));
        return {};
    }
    gst_element_set_state(pipeline.get(), GST_STATE_PAUSED);
    const StudioGst::Sample sample = pictureAt(pipeline.get(), sink, milliseconds, gate);
    return sample ? within(StudioGst::toImage(sample.get()), bound) : QImage();
}

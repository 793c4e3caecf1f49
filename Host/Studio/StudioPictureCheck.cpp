#include <Studio/StudioPictureCheck.h>

#include <Studio/StudioGst.h>
#include <Studio/StudioPipeWire.h>
#include <Studio/StudioTools.h>

#include <QElapsedTimer>

#include <gst/app/gstappsink.h>

namespace StudioPictureCheck {

namespace {

constexpr GstClockTime kPullTimeout = 100 * GST_MSECOND;

QString waitForMotion(GstElement* pipeline, GstElement* sink, int timeoutMs)
{
    QElapsedTimer elapsed;
    elapsed.start();
    QImage first;
    while (!elapsed.hasExpired(timeoutMs)) {
        const StudioGst::Sample sample(
            gst_app_sink_try_pull_sample(GST_APP_SINK(sink), kPullTimeout));
        const QImage picture = sample ? StudioGst::toImage(sample.get()).copy() : QImage();
        if (!first.isNull() && !picture.isNull() && picture != first) {
            return {};
        }
        first = first.isNull() ? picture : first;
        QString error = StudioGst::busError(pipeline);
        if (!error.isEmpty()) {
            return error;
        }
    }
    return first.isNull() ? QStringLiteral("It delivers nothing at all.")
                          : QStringLiteral("Its picture never changes.");
}

} // namespace

QString look(const QString& device, int timeoutMs)
{
    if (!StudioGst::start()) {
        return QStringLiteral("The media framework cannot be started.");
    }
    // Its element would wait for it for half a minute at each step.
    const bool isThere = StudioTools::until(timeoutMs, [&device] {
        return StudioPipeWire::hasNode(StudioTools::pipeWireDump(), device);
    });
    if (!isThere) {
        return QStringLiteral("It is not there.");
    }
    const StudioGst::Pipeline pipeline(gst_pipeline_new(nullptr));
    QString missing;
    GstElement* const source = StudioGst::add(pipeline.get(), "pipewiresrc", &missing);
    GstElement* const converter = StudioGst::add(pipeline.get(), "videoconvert", &missing);
    GstElement* const sink = StudioGst::add(pipeline.get(), "appsink", &missing);
    if (!missing.isEmpty()) {
        return QStringLiteral("GStreamer lacks the element \"%1\".").arg(missing);
    }
    g_object_set(source, "target-object", device.toUtf8().constData(), nullptr);
    GstCaps* const caps = StudioGst::pictureCaps();
    g_object_set(sink, "caps", caps, "sync", FALSE, "max-buffers", 2U, "drop", TRUE, nullptr);
    gst_caps_unref(caps);
    gst_element_link_many(source, converter, sink, nullptr);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    return waitForMotion(pipeline.get(), sink, timeoutMs);
}

} // namespace StudioPictureCheck

#include <KdVBLModel/KdH264Encoder.h>

#include <KdCore/KdBaseLog.h>

#include <cmath>

namespace {

constexpr double kUsualBitrate = 4e6;
constexpr double kUsualPixels = 1280.0 * 720.0 * 30.0;
constexpr double kGrowth = 0.75;
constexpr double kLeastBitrate = 200e3;
constexpr double kMostBitrate = 50e6;

// A second between two pictures that stand alone: as far as a player goes back to seek, and at most
// what a damaged file loses.
int keyFrameDistance(double frameRate)
{
    return std::max(1, static_cast<int>(std::lround(frameRate)));
}

// The encoder holds no picture back, so there is nothing to drain; asked to, it complains on the
// standard error of whoever has loaded us.
GstPadProbeReturn passEndBy(GstPad* pad, GstPadProbeInfo* info, gpointer /*unused*/)
{
    GstEvent* const event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_EOS) {
        return GST_PAD_PROBE_OK;
    }
    const KdGstPtr<GstElement> encoder(gst_pad_get_parent_element(pad));
    const KdGstPtr<GstPad> output(gst_element_get_static_pad(encoder.get(), "src"));
    gst_pad_push_event(output.get(), gst_event_ref(event));
    return GST_PAD_PROBE_DROP;
}

GstPadProbeReturn noteDuration(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer duration)
{
    *static_cast<GstClockTime*>(duration) = GST_BUFFER_DURATION(GST_PAD_PROBE_INFO_BUFFER(info));
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn putDurationBack(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer duration)
{
    GstBuffer* const picture = gst_buffer_make_writable(GST_PAD_PROBE_INFO_BUFFER(info));
    GST_BUFFER_DURATION(picture) = *static_cast<const GstClockTime*>(duration);
    GST_PAD_PROBE_INFO_DATA(info) = picture;
    return GST_PAD_PROBE_OK;
}

// The parser knows better how long a picture is shown, by the rate. The last one's length, which
// nothing follows, would be lost. Pictures pass encoder and parser one by one.
void keepDurations(GstElement* encoder, GstElement* parser)
{
    auto* const duration = new GstClockTime(GST_CLOCK_TIME_NONE);
    const KdGstPtr<GstPad> before(gst_element_get_static_pad(encoder, "src"));
    const KdGstPtr<GstPad> after(gst_element_get_static_pad(parser, "src"));
    gst_pad_add_probe(before.get(), GST_PAD_PROBE_TYPE_BUFFER, noteDuration, duration, nullptr);
    gst_pad_add_probe(after.get(), GST_PAD_PROBE_TYPE_BUFFER, putDurationBack, duration,
                      [](gpointer data) { delete static_cast<GstClockTime*>(data); });
}

// On a picture so large one thread is late.
int threadsFor(QSize size)
{
    constexpr int kManyPixels = 1920 * 1088;
    return size.width() * size.height() > kManyPixels ? 4 : 1;
}

GstElement* createFast(QSize size, double frameRate)
{
    GstElement* const encoder = gst_element_factory_make("openh264enc", nullptr);
    if (!encoder) {
        return nullptr;
    }
    gst_util_set_object_arg(G_OBJECT(encoder), "complexity", "low");
    gst_util_set_object_arg(G_OBJECT(encoder), "rate-control", "bitrate");
    const int threads = threadsFor(size);
    g_object_set(encoder, "bitrate", guint(KdH264Encoder::bitrateFor(size, frameRate)), "gop-size",
                 guint(keyFrameDistance(frameRate)), "multi-thread", guint(threads), "num-slices",
                 guint(threads), nullptr);
    const KdGstPtr<GstPad> input(gst_element_get_static_pad(encoder, "sink"));
    gst_pad_add_probe(input.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, passEndBy, nullptr,
                      nullptr);
    return encoder;
}

GstElement* createOther(QSize size, double frameRate)
{
    GstElement* const encoder = gst_element_factory_make("x264enc", nullptr);
    if (!encoder) {
        return nullptr;
    }
    gst_util_set_object_arg(G_OBJECT(encoder), "speed-preset", "superfast");
    gst_util_set_object_arg(G_OBJECT(encoder), "tune", "zerolatency");
    g_object_set(encoder, "bitrate", guint(KdH264Encoder::bitrateFor(size, frameRate) / 1000),
                 "key-int-max", guint(keyFrameDistance(frameRate)), nullptr);
    KdBaseLog::write(KdBaseLog::Warning,
                     {"Host/KdVBLModel/KdH264Encoder", "KdH264Encoder::createChain"},
                     "The element openh264enc is not installed; x264enc takes twice its time");
    return encoder;
}

} // namespace

int KdH264Encoder::bitrateFor(QSize size, double frameRate)
{
    const double pixels = static_cast<double>(size.width()) * size.height() * frameRate;
    const double bitrate = kUsualBitrate * std::pow(pixels / kUsualPixels, kGrowth);
    return static_cast<int>(std::clamp(bitrate, kLeastBitrate, kMostBitrate));
}

QVector<GstElement*> KdH264Encoder::createChain(QSize size, double frameRate, QString* error)
{
    GstElement* const parser = gst_element_factory_make("h264parse", nullptr);
    if (!parser) {
        *error = QStringLiteral("The element h264parse is not installed.");
        return {};
    }
    GstElement* const fast = createFast(size, frameRate);
    GstElement* const encoder = fast ? fast : createOther(size, frameRate);
    if (!encoder) {
        gst_object_unref(parser);
        *error = QStringLiteral("No H.264 encoder is installed, neither openh264enc nor x264enc.");
        return {};
    }
    keepDurations(encoder, parser);
    return {encoder, parser};
}

#include <Studio/StudioGst.h>

#include <QUrl>

#include <gst/video/video.h>

namespace StudioGst {

namespace {

/** A mapped picture, for as long as an image shows it. */
struct MappedPicture
{
    GstVideoFrame frame;
    Sample sample;
};

void unmap(void* mapped)
{
    const std::unique_ptr<MappedPicture> picture(static_cast<MappedPicture*>(mapped));
    gst_video_frame_unmap(&picture->frame);
}

} // namespace

bool start()
{
    static const bool started = gst_init_check(nullptr, nullptr, nullptr) != FALSE;
    return started;
}

QString fileUri(const QString& path)
{
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
}

QString errorText(GstMessage* message)
{
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    QString text = error ? QString::fromUtf8(error->message) : QString();
    g_clear_error(&error);
    return text;
}

QString busError(GstElement* pipeline)
{
    const Bus bus(gst_element_get_bus(pipeline));
    const Message message(gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR));
    return message ? errorText(message.get()) : QString();
}

GstElement* add(GstElement* pipeline, const char* factory, QString* missing)
{
    GstElement* const element = gst_element_factory_make(factory, nullptr);
    if (!element) {
        *missing = QString::fromLatin1(factory);
        return nullptr;
    }
    gst_bin_add(GST_BIN(pipeline), element);
    return element;
}

GstCaps* pictureCaps()
{
    const char* const format = G_BYTE_ORDER == G_LITTLE_ENDIAN ? "BGRx" : "xRGB";
    return gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, format, "pixel-aspect-ratio",
                               GST_TYPE_FRACTION, 1, 1, nullptr);
}

QImage toImage(GstSample* sample)
{
    GstVideoInfo info;
    GstCaps* const caps = gst_sample_get_caps(sample);
    GstBuffer* const buffer = gst_sample_get_buffer(sample);
    auto mapped = std::make_unique<MappedPicture>();
    if (!caps || !buffer || !gst_video_info_from_caps(&info, caps) ||
        !gst_video_frame_map(&mapped->frame, &info, buffer, GST_MAP_READ)) {
        return {};
    }
    mapped->sample.reset(gst_sample_ref(sample));
    const GstVideoFrame* const frame = &mapped->frame;
    const auto* const pixels = static_cast<const uchar*>(GST_VIDEO_FRAME_PLANE_DATA(frame, 0));
    return QImage(pixels, GST_VIDEO_FRAME_WIDTH(frame), GST_VIDEO_FRAME_HEIGHT(frame),
                  GST_VIDEO_FRAME_PLANE_STRIDE(frame, 0), QImage::Format_RGB32, unmap,
                  mapped.release());
}

} // namespace StudioGst

#include "TakeMaker.h"

#include <KdVBLModel/KdAacEncoder.h>
#include <KdVBLModel/KdTakeFile.h>

#include <QProcess>
#include <QtEndian>

#include <gst/gst.h>

#include <memory>

namespace {

struct Unref
{
    void operator()(gpointer object) const { gst_object_unref(object); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstMessage* message) const { gst_message_unref(message); }
};

GstElement* add(GstElement* pipeline, GstElement* element)
{
    gst_bin_add(GST_BIN(pipeline), element);
    return element;
}

GstElement* add(GstElement* pipeline, const char* factory)
{
    return add(pipeline, gst_element_factory_make(factory, nullptr));
}

GstElement* addFilter(GstElement* pipeline, GstCaps* caps)
{
    GstElement* const filter = add(pipeline, "capsfilter");
    g_object_set(filter, "caps", caps, nullptr);
    return filter;
}

GstElement* addQueue(GstElement* pipeline)
{
    GstElement* const queue = add(pipeline, "queue");
    g_object_set(queue, "max-size-buffers", 0U, "max-size-bytes", 0U, "max-size-time",
                 guint64(10 * GST_SECOND), nullptr);
    return queue;
}

void addAudio(GstElement* pipeline, GstElement* muxer, const TakeMaker::Take& take)
{
    constexpr int kBuffersOfASecond = 100;
    KdAacFormat format;
    format.samplerate = 48000;
    format.isConstant = false;
    GstElement* const source = add(pipeline, "audiotestsrc");
    gst_util_set_object_arg(G_OBJECT(source), "wave", "pink-noise");
    g_object_set(source, "samplesperbuffer", format.samplerate / kBuffersOfASecond, "num-buffers",
                 take.seconds * kBuffersOfASecond, nullptr);
    const std::unique_ptr<GstCaps, Unref> caps(KdAacEncoder::inputCaps(format));
    GstElement* const convert = add(pipeline, "audioconvert");
    GstElement* const filter = addFilter(pipeline, caps.get());
    GstElement* const encoder = add(pipeline, KdAacEncoder::create(format, nullptr));
    GstElement* const parser = add(pipeline, "aacparse");
    GstElement* const queue = addQueue(pipeline);
    gst_element_link_many(source, convert, filter, encoder, parser, queue, muxer, nullptr);
}

void addVideo(GstElement* pipeline, GstElement* muxer, const TakeMaker::Take& take)
{
    constexpr int kFrameRate = 30;
    GstElement* const source = add(pipeline, "videotestsrc");
    gst_util_set_object_arg(G_OBJECT(source), "pattern", "ball");
    g_object_set(source, "num-buffers", take.seconds * kFrameRate, nullptr);
    const std::unique_ptr<GstCaps, Unref> caps(
        gst_caps_new_simple("video/x-raw", "width", G_TYPE_INT, 320, "height", G_TYPE_INT, 240,
                            "framerate", GST_TYPE_FRACTION, kFrameRate, 1, nullptr));
    GstElement* const filter = addFilter(pipeline, caps.get());
    GstElement* const encoder = add(pipeline, "openh264enc");
    g_object_set(encoder, "gop-size", guint(kFrameRate), nullptr);
    GstElement* const parser = add(pipeline, "h264parse");
    GstElement* const queue = addQueue(pipeline);
    gst_element_link_many(source, filter, encoder, parser, queue, muxer, nullptr);
}

QString runToEnd(GstElement* pipeline)
{
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    const std::unique_ptr<GstBus, Unref> bus(gst_element_get_bus(pipeline));
    const std::unique_ptr<GstMessage, Unref> message(gst_bus_timed_pop_filtered(
        bus.get(), GST_CLOCK_TIME_NONE, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR)));
    gst_element_set_state(pipeline, GST_STATE_NULL);
    if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS) {
        return QString();
    }
    GError* error = nullptr;
    gst_message_parse_error(message.get(), &error, nullptr);
    QString text = QString::fromUtf8(error->message);
    g_error_free(error);
    return text;
}

struct Output
{
    QString standard;
    QString error;
};

Output run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return {QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// "audio,0.021333,0.021333,341"
void addPacket(const QString& line, TakeMaker::Contents* contents)
{
    const QStringList fields = line.split(QLatin1Char(','));
    if (fields.size() < 4) {
        return;
    }
    const bool isVideo = fields[0] == QLatin1String("video");
    const qint64 end = qRound64((fields[1].toDouble() + fields[2].toDouble()) * 1000.0);
    (isVideo ? contents->videoFrames : contents->audioFrames) += 1;
    qint64& length = isVideo ? contents->videoMs : contents->audioMs;
    length = qMax(length, end);
    contents->packets.append(QStringLiteral("%1 %2 %3").arg(fields[0], fields[1], fields[3]));
}

} // namespace

QString TakeMaker::write(const Take& take)
{
    const std::unique_ptr<GstElement, Unref> pipeline(gst_pipeline_new(nullptr));
    GstElement* const muxer = add(pipeline.get(), "mp4mux");
    GstElement* const sink = add(pipeline.get(), "filesink");
    g_object_set(muxer, "fragment-duration", 500U, nullptr);
    gst_util_set_object_arg(G_OBJECT(muxer), "fragment-mode", "first-moov-then-finalise");
    gst_util_set_object_arg(G_OBJECT(sink), "buffer-mode", "unbuffered");
    g_object_set(sink, "location", KdTakeFile::locationFor(take.path).constData(), nullptr);
    gst_element_link(muxer, sink);
    addAudio(pipeline.get(), muxer, take);
    if (take.hasVideo) {
        addVideo(pipeline.get(), muxer, take);
    }
    return runToEnd(pipeline.get());
}

TakeMaker::Contents TakeMaker::read(const QString& path)
{
    Contents contents;
    contents.streams = run(QStringLiteral("ffprobe"),
                           {QStringLiteral("-v"), QStringLiteral("error"),
                            QStringLiteral("-show_entries"), QStringLiteral("stream=index"),
                            QStringLiteral("-of"), QStringLiteral("csv=p=0"), path})
                           .standard.count(QLatin1Char('\n'));
    const QStringList lines =
        run(QStringLiteral("ffprobe"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
             QStringLiteral("packet=codec_type,pts_time,duration_time,size"), QStringLiteral("-of"),
             QStringLiteral("csv=p=0"), path})
            .standard.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        addPacket(line, &contents);
    }
    contents.complaints =
        run(QStringLiteral("ffmpeg"),
            {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-i"), path,
             QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")})
            .error;
    return contents;
}

bool TakeMaker::unfinalise(QByteArray* file)
{
    constexpr int kSlot = 32;
    constexpr int kFirstMedia = 40;
    const int header = file->indexOf("hoov") - 4;
    const int mediaSize = qFromBigEndian<qint32>(file->constData() + kFirstMedia);
    if (header <= kFirstMedia || file->mid(kSlot + 4, 4) != "free") {
        return false;
    }
    file->truncate(kFirstMedia + mediaSize);
    file->replace(header + 4, 4, "moov");
    qToBigEndian<qint32>(header - kFirstMedia, file->data() + kFirstMedia);
    return true;
}

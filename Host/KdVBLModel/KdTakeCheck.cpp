#include "KdTakeCheck.h"

#include "KdGst.h"
#include "KdTakeFile.h"

#include <gst/gst.h>

#include <memory>
#include <mutex>

namespace {

// A disk that gives nothing for so long gives nothing at all.
constexpr GstClockTime kPatience = 30 * GST_SECOND;
constexpr GstClockTime kLook = 50 * GST_MSECOND;

/** Counted on streaming threads, looked at on the calling one. */
class Counts
{
public:
    explicit Counts(GstElement* pipeline)
    {
        // Threads that GStreamer makes see what was written so far only through this lock.
        const std::lock_guard<std::mutex> publish(m_mutex);
        m_pipeline = pipeline;
    }

    GstElement* pipeline() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_pipeline;
    }
    int audio() const { return get(m_audio); }
    int video() const { return get(m_video); }

    static GstPadProbeReturn countAudio(GstPad* /*pad*/, GstPadProbeInfo* /*info*/, gpointer counts)
    {
        return static_cast<Counts*>(counts)->add(&Counts::m_audio);
    }
    static GstPadProbeReturn countVideo(GstPad* /*pad*/, GstPadProbeInfo* /*info*/, gpointer counts)
    {
        return static_cast<Counts*>(counts)->add(&Counts::m_video);
    }

private:
    int get(const int& counter) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return counter;
    }
    GstPadProbeReturn add(int Counts::*counter)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++(this->*counter);
        return GST_PAD_PROBE_OK;
    }

    mutable std::mutex m_mutex; ///< guards what follows
    GstElement* m_pipeline = nullptr;
    int m_audio = 0;
    int m_video = 0;
};

// Every stream gets its parser, which refuses what is not the format that it claims to be.
void addStream(GstElement* /*demuxer*/, GstPad* pad, gpointer data)
{
    auto* const counts = static_cast<Counts*>(data);
    const KdGstCapsPtr caps(gst_pad_query_caps(pad, nullptr));
    const GstStructure* const structure = gst_caps_get_structure(caps.get(), 0);
    const bool isVideo = gst_structure_has_name(structure, "video/x-h264");
    if (!isVideo && !gst_structure_has_name(structure, "audio/mpeg")) {
        return;
    }
    GstElement* const parser =
        gst_element_factory_make(isVideo ? "h264parse" : "aacparse", nullptr);
    GstElement* const sink = gst_element_factory_make("fakesink", nullptr);
    g_object_set(sink, "async", FALSE, "sync", FALSE, nullptr);
    gst_bin_add_many(GST_BIN(counts->pipeline()), parser, sink, nullptr);
    gst_element_link(parser, sink);
    const KdGstPtr<GstPad> input(gst_element_get_static_pad(parser, "sink"));
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER,
                      isVideo ? Counts::countVideo : Counts::countAudio, counts, nullptr);
    gst_element_sync_state_with_parent(sink);
    gst_element_sync_state_with_parent(parser);
    gst_pad_link(pad, input.get());
}

QString problemOf(GstMessage* message)
{
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    QString text = QString::fromUtf8(error->message);
    g_error_free(error);
    return text;
}

enum class End
{
    Reached,
    Cancelled,
    Failed
};

// Waits for the end of the file for as long as something arrives.
End runToEnd(GstElement* pipeline, const Counts& counts, const std::function<bool()>& goesOn,
             QString* problem)
{
    const KdGstPtr<GstBus> bus(gst_element_get_bus(pipeline));
    int before = 0;
    GstClockTime idle = 0;
    while (idle < kPatience) {
        if (goesOn && !goesOn()) {
            return End::Cancelled;
        }
        const std::unique_ptr<GstMessage, KdGstMiniObjectUnref> message(gst_bus_timed_pop_filtered(
            bus.get(), kLook, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR)));
        if (message && GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS) {
            return End::Reached;
        }
        if (message) {
            *problem = problemOf(message.get());
            return End::Failed;
        }
        const int now = counts.audio() + counts.video();
        idle = before == now ? idle + kLook : 0;
        before = now;
    }
    *problem = QStringLiteral("Reading the file came to a halt.");
    return End::Failed;
}

} // namespace

KdTakeContents KdTakeCheck::read(const QString& path, const std::function<bool()>& goesOn)
{
    KdTakeContents contents;
    const KdGstPtr<GstElement> pipeline(gst_pipeline_new(nullptr));
    GstElement* const source = gst_element_factory_make("filesrc", nullptr);
    GstElement* const demuxer = gst_element_factory_make("qtdemux", nullptr);
    if (!source || !demuxer) {
        contents.problem = QStringLiteral("The elements filesrc and qtdemux are not installed.");
        return contents;
    }
    g_object_set(source, "location", KdTakeFile::locationFor(path).constData(), nullptr);
    gst_bin_add_many(GST_BIN(pipeline.get()), source, demuxer, nullptr);
    gst_element_link(source, demuxer);
    Counts counts(pipeline.get());
    g_signal_connect(demuxer, "pad-added", G_CALLBACK(addStream), &counts);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const End end = runToEnd(pipeline.get(), counts, goesOn, &contents.problem);
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    contents.isReadable = end == End::Reached;
    contents.audioFrames = counts.audio();
    contents.videoFrames = counts.video();
    return contents;
}

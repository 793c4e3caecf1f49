#include "KdTakeCheck.h"

#include "KdGst.h"
#include "KdTakeFile.h"

#include <gst/gst.h>

#include <atomic>
#include <memory>

namespace {

// A disk that gives nothing for so long gives nothing at all.
constexpr GstClockTime kPatience = 30 * GST_SECOND;
constexpr GstClockTime kLook = 50 * GST_MSECOND;

/** Counted on the streaming thread, looked at on the calling one. */
struct Counts
{
    GstElement* pipeline = nullptr;
    std::atomic<int> audio{0};
    std::atomic<int> video{0};
    int total() const { return audio + video; }
};

GstPadProbeReturn count(GstPad* /*pad*/, GstPadProbeInfo* /*info*/, gpointer counter)
{
    ++*static_cast<std::atomic<int>*>(counter);
    return GST_PAD_PROBE_OK;
}

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
    gst_bin_add_many(GST_BIN(counts->pipeline), parser, sink, nullptr);
    gst_element_link(parser, sink);
    const KdGstPtr<GstPad> input(gst_element_get_static_pad(parser, "sink"));
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, count,
                      isVideo ? &counts->video : &counts->audio, nullptr);
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
        idle = before == counts.total() ? idle + kLook : 0;
        before = counts.total();
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
    Counts counts;
    counts.pipeline = pipeline.get();
    g_signal_connect(demuxer, "pad-added", G_CALLBACK(addStream), &counts);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const End end = runToEnd(pipeline.get(), counts, goesOn, &contents.problem);
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    contents.isReadable = end == End::Reached;
    contents.audioFrames = counts.audio;
    contents.videoFrames = counts.video;
    return contents;
}

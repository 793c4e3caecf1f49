#include "KdTakePipeline.h"

#include <KdCore/KdBaseLog.h>
#include <KdVBLModel/KdGst.h>

#include <gst/app/gstappsrc.h>

#include <algorithm>

namespace {

// A kill costs at most one fragment, and finding them again at the end takes a moment for each.
constexpr guint kFragmentMs = 500;

GstElement* make(GstElement* pipeline, const char* factory, QString* error)
{
    GstElement* const element = gst_element_factory_make(factory, nullptr);
    if (!element) {
        *error = QStringLiteral("The element %1 is not installed.").arg(QLatin1String(factory));
        return nullptr;
    }
    gst_bin_add(GST_BIN(pipeline), element);
    return element;
}

void configureSource(GstElement* source, GstCaps* input)
{
    // Nothing here may make the capture wait: a slow disk shows as a backlog instead.
    g_object_set(source, "caps", input, "format", GST_FORMAT_TIME, "is-live", FALSE, "block", FALSE,
                 "max-bytes", guint64(0), nullptr);
}

void configureQueue(GstElement* queue)
{
    g_object_set(queue, "max-size-buffers", 0U, "max-size-bytes", 0U, "max-size-time", guint64(0),
                 nullptr);
}

void configureMuxer(GstElement* muxer)
{
    g_object_set(muxer, "fragment-duration", kFragmentMs, nullptr);
    gst_util_set_object_arg(G_OBJECT(muxer), "fragment-mode", "first-moov-then-finalise");
}

void configureSink(GstElement* sink, const QByteArray& location)
{
    g_object_set(sink, "location", location.constData(), "sync", FALSE, "async", FALSE, nullptr);
    gst_util_set_object_arg(G_OBJECT(sink), "buffer-mode", "unbuffered");
}

} // namespace

KdTakePipeline::KdTakePipeline() = default;

KdTakePipeline::~KdTakePipeline()
{
    shutDown();
}

bool KdTakePipeline::start(const QByteArray& location, const QVector<KdTakeTrack>& tracks,
                           QString* error)
{
    m_pipeline = gst_pipeline_new(nullptr);
    if (!addElements(location, tracks, error)) {
        return false;
    }
    GstBus* const bus = gst_element_get_bus(m_pipeline);
    gst_bus_set_sync_handler(bus, handleMessage, this, nullptr);
    gst_object_unref(bus);
    // GLib lends threads that ran before this object was made: this is the store that they read.
    m_isHurrying = false;
    if (gst_element_set_state(m_pipeline, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        *error =
            hasFailed() ? this->error() : QStringLiteral("The recording pipeline does not start.");
        return false;
    }
    return true;
}

bool KdTakePipeline::addElements(const QByteArray& location, const QVector<KdTakeTrack>& tracks,
                                 QString* error)
{
    // First of all, so that what was handed over has an owner whatever happens next.
    for (const KdTakeTrack& track : tracks) {
        for (GstElement* element : track.chain) {
            gst_bin_add(GST_BIN(m_pipeline), element);
        }
    }
    GstElement* const muxer = make(m_pipeline, "mp4mux", error);
    GstElement* const sink = muxer ? make(m_pipeline, "filesink", error) : nullptr;
    if (!sink) {
        return false;
    }
    configureMuxer(muxer);
    configureSink(sink, location);
    const bool isLinked = gst_element_link(muxer, sink);
    return isLinked && std::all_of(tracks.begin(), tracks.end(), [&](const KdTakeTrack& track) {
               return addTrack(track, muxer, error);
           });
}

bool KdTakePipeline::addTrack(const KdTakeTrack& track, GstElement* muxer, QString* error)
{
    GstElement* const source = make(m_pipeline, "appsrc", error);
    GstElement* const queue = track.isQueued ? make(m_pipeline, "queue", error) : nullptr;
    if (!source || (track.isQueued && !queue)) {
        return false;
    }
    configureSource(source, track.input);
    QVector<GstElement*> elements = track.chain;
    elements.prepend(source);
    if (queue) {
        configureQueue(queue);
        elements.append(queue);
    }
    elements.append(muxer);
    for (int i = 1; i < elements.size(); ++i) {
        if (!gst_element_link(elements[i - 1], elements[i])) {
            *error = QStringLiteral("The recording pipeline cannot be linked.");
            return false;
        }
    }
    if (track.isSkippable) {
        const KdGstPtr<GstPad> output(gst_element_get_static_pad(source, "src"));
        gst_pad_add_probe(output.get(), GST_PAD_PROBE_TYPE_BUFFER, skip, this, nullptr);
    }
    m_ways.append(Way{source, queue, track.isSkippable});
    return true;
}

GstPadProbeReturn KdTakePipeline::skip(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer self)
{
    auto* const pipeline = static_cast<KdTakePipeline*>(self);
    const GstBuffer* const buffer = GST_PAD_PROBE_INFO_BUFFER(info);
    if (!pipeline->m_isHurrying || GST_BUFFER_PTS(buffer) == pipeline->m_last) {
        return GST_PAD_PROBE_OK;
    }
    ++pipeline->m_skipped;
    return GST_PAD_PROBE_DROP;
}

bool KdTakePipeline::push(int track, GstBuffer* buffer)
{
    if (hasFailed()) {
        gst_buffer_unref(buffer);
        return false;
    }
    if (m_ways[track].isSkippable) {
        m_last = GST_BUFFER_PTS(buffer);
    }
    return gst_app_src_push_buffer(GST_APP_SRC(m_ways[track].source), buffer) == GST_FLOW_OK;
}

std::chrono::nanoseconds KdTakePipeline::backlog(int track) const
{
    const Way& way = m_ways[track];
    guint64 queued = 0;
    if (way.queue) {
        g_object_get(way.queue, "current-level-time", &queued, nullptr);
    }
    return std::chrono::nanoseconds(gst_app_src_get_current_level_time(GST_APP_SRC(way.source)) +
                                    queued);
}

quint64 KdTakePipeline::rawBacklog(int track) const
{
    return gst_app_src_get_current_level_bytes(GST_APP_SRC(m_ways[track].source));
}

bool KdTakePipeline::drain(std::chrono::milliseconds patience)
{
    for (const Way& way : m_ways) {
        gst_app_src_end_of_stream(GST_APP_SRC(way.source));
    }
    if (!waitForEnd(patience / 2)) {
        m_isHurrying = true;
        waitForEnd(patience / 2);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isDrained && m_error.isEmpty()) {
        m_error = QStringLiteral("The end of the recording did not reach the file in time.");
    }
    return m_isDrained && m_error.isEmpty();
}

bool KdTakePipeline::waitForEnd(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    // After an error of the sink the end of the stream never comes.
    return m_ended.wait_for(lock, patience, [this] { return m_isDrained || !m_error.isEmpty(); });
}

void KdTakePipeline::shutDown()
{
    if (!m_pipeline) {
        return;
    }
    gst_element_set_state(m_pipeline, GST_STATE_NULL);
    GstBus* const bus = gst_element_get_bus(m_pipeline);
    gst_bus_set_sync_handler(bus, nullptr, nullptr, nullptr);
    gst_object_unref(bus);
    gst_object_unref(m_pipeline);
    m_pipeline = nullptr;
    m_ways.clear();
}

bool KdTakePipeline::hasFailed() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_error.isEmpty();
}

QString KdTakePipeline::error() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}

void KdTakePipeline::fail(const QString& error)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_error.isEmpty()) {
        m_error = error;
    }
    m_ended.notify_all();
}

GstBusSyncReply KdTakePipeline::handleMessage(GstBus* /*bus*/, GstMessage* message, gpointer self)
{
    auto* const pipeline = static_cast<KdTakePipeline*>(self);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        pipeline->noteError(message);
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
        const std::lock_guard<std::mutex> lock(pipeline->m_mutex);
        pipeline->m_isDrained = true;
        pipeline->m_ended.notify_all();
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void KdTakePipeline::noteError(GstMessage* message)
{
    GError* details = nullptr;
    gchar* debug = nullptr;
    gst_message_parse_error(message, &details, &debug);
    const QString text = QString::fromUtf8(details->message);
    KdBaseLog::write(KdBaseLog::Error,
                     {"Host/KdVBLModel/KdTakePipeline", "KdTakePipeline::noteError"}, "%s: %s (%s)",
                     GST_MESSAGE_SRC_NAME(message), details->message, debug ? debug : "no details");
    g_error_free(details);
    g_free(debug);
    fail(text);
}

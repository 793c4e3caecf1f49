#include <KdVBLModel/KdCapturePipeline.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

namespace {

void logProblem(KdBaseLog::LogLevel level, GstMessage* message)
{
    GError* error = nullptr;
    gchar* details = nullptr;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        gst_message_parse_error(message, &error, &details);
    } else {
        gst_message_parse_warning(message, &error, &details);
    }
    KdBaseLog::write(level, {"Host/KdVBLModel/KdCapturePipeline", "KdCapturePipeline::handle"},
                     "%s: %s (%s)", GST_MESSAGE_SRC_NAME(message), error->message,
                     details ? details : "no details");
    g_error_free(error);
    g_free(details);
}

} // namespace

KdCapturePipeline::KdCapturePipeline(GstElement* bin, Callbacks callbacks)
    : m_pipeline(kdSink(gst_pipeline_new("capture"))), m_callbacks(std::move(callbacks))
{
    gst_bin_add(GST_BIN(m_pipeline.get()), bin);
    const KdGstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), onMessage, this, nullptr);
    // Threads that GStreamer makes see what was written so far only through this lock.
    const std::lock_guard<std::mutex> publish(m_mutex);
}

KdCapturePipeline::~KdCapturePipeline()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    const KdGstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
    const std::lock_guard<std::mutex> lastCall(m_mutex);
}

void KdCapturePipeline::useMonotonicClock()
{
    const KdGstPtr<GstClock> clock(gst_system_clock_obtain());
    gst_pipeline_use_clock(GST_PIPELINE(m_pipeline.get()), clock.get());
}

bool KdCapturePipeline::start()
{
    m_startedNs = kdMonotonicNs();
    const GstStateChangeReturn change = gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
    if (change == GST_STATE_CHANGE_FAILURE) {
        fail(); // not every element says why
    }
    return change != GST_STATE_CHANGE_FAILURE;
}

bool KdCapturePipeline::hasFailed() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_hasFailed;
}

void KdCapturePipeline::silence()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_callbacks = {};
}

GstBusSyncReply KdCapturePipeline::onMessage(GstBus*, GstMessage* message, gpointer self)
{
    static_cast<KdCapturePipeline*>(self)->handle(message);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void KdCapturePipeline::handle(GstMessage* message)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ERROR:
        // What follows the first one says the same again, from every step of the way down.
        logProblem(hasFailed() ? KdBaseLog::Info : KdBaseLog::Warning, message);
        fail();
        break;
    case GST_MESSAGE_WARNING:
        logProblem(KdBaseLog::Warning, message);
        break;
    case GST_MESSAGE_EOS:
        fail();
        break;
    case GST_MESSAGE_ELEMENT:
        tell(gst_message_get_structure(message));
        break;
    default:
        break;
    }
}

void KdCapturePipeline::tell(const GstStructure* what)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_callbacks.told) {
        m_callbacks.told(what);
    }
}

void KdCapturePipeline::fail()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_hasFailed && m_callbacks.failed) {
        m_callbacks.failed();
    }
    m_hasFailed = true;
}

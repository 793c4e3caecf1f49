#include <KdVBLModel/KdAudioCapture.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

namespace {

constexpr qint64 kStallNs = 2000000000;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdAudioCapture", function, line};
}

void logProblem(KdBaseLog::LogLevel level, GstMessage* message)
{
    GError* error = nullptr;
    gchar* details = nullptr;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        gst_message_parse_error(message, &error, &details);
    } else {
        gst_message_parse_warning(message, &error, &details);
    }
    KdBaseLog::write(level, here("KdAudioCapture::handle"), "%s: %s (%s)",
                     GST_MESSAGE_SRC_NAME(message), error->message,
                     details ? details : "no details");
    g_error_free(error);
    g_free(details);
}

} // namespace

KdAudioCapture::KdAudioCapture(const KdCaptureDevice& device, GstElement* source,
                               Callbacks callbacks)
    : m_device(device)
    , m_chain(source, callbacks.samples)
    , m_pipeline(kdSink(gst_pipeline_new("capture")))
    , m_callbacks(std::move(callbacks))
{
    gst_bin_add(GST_BIN(m_pipeline.get()), m_chain.bin());
    const KdGstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), onMessage, this, nullptr);
    // Threads that GStreamer makes see what was written so far only through this lock.
    const std::lock_guard<std::mutex> publish(m_mutex);
}

KdAudioCapture::~KdAudioCapture()
{
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    const KdGstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
    const std::lock_guard<std::mutex> lastCall(m_mutex);
}

bool KdAudioCapture::start()
{
    if (!m_chain.isValid()) {
        KdBaseLog::write(KdBaseLog::Error, here("KdAudioCapture::start"),
                         "The audio input %s cannot be opened: %s.", qUtf8Printable(m_device.name),
                         m_chain.error().c_str());
        return false;
    }
    m_startedNs = kdMonotonicNs();
    const GstStateChangeReturn change = gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
    return change != GST_STATE_CHANGE_FAILURE;
}

bool KdAudioCapture::isStalled() const
{
    return kdMonotonicNs() - std::max(m_startedNs, m_chain.lastArrivalNs()) > kStallNs;
}

bool KdAudioCapture::hasFailed() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_hasFailed;
}

GstBusSyncReply KdAudioCapture::onMessage(GstBus*, GstMessage* message, gpointer self)
{
    static_cast<KdAudioCapture*>(self)->handle(message);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void KdAudioCapture::handle(GstMessage* message)
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
        if (const auto decibel = KdAudioChain::peakDecibel(gst_message_get_structure(message))) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_callbacks.level(*decibel);
        }
        break;
    default:
        break;
    }
}

void KdAudioCapture::fail()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_hasFailed) {
        m_hasFailed = true;
        m_callbacks.failed();
    }
}

#include <KdVBLModel/KdCameraChain.h>

#include <KdVBLModel/KdMonotonicTime.h>

namespace {

/** Pictures that may wait while one is worked on. */
constexpr guint kWaitingPictures = 3;

constexpr qint64 kOldestBelievedNs = 1000000000;

/**
 * Held while the time of a picture is read or written, which travels from thread to thread with
 * memory that is used again, also by another camera; and never for longer.
 */
std::mutex& timesMutex()
{
    static std::mutex mutex;
    return mutex;
}

bool isMadeBy(GstElement* element, const char* factory)
{
    GstElementFactory* made = gst_element_get_factory(element);
    return made && g_str_equal(GST_OBJECT_NAME(made), factory);
}

void configureSource(GstElement* source)
{
    if (isMadeBy(source, "pipewiresrc")) {
        g_object_set(source, "client-name", "KdRecord", "do-timestamp", TRUE, nullptr);
    }
}

void configureQueue(GstElement* queue)
{
    g_object_set(queue, "leaky", 2 /* the oldest goes */, "max-size-buffers", kWaitingPictures,
                 "max-size-bytes", 0U, "max-size-time", G_GUINT64_CONSTANT(0), nullptr);
}

/** When a buffer was captured: as its source says where that is possible, else now. */
qint64 captureTime(GstElement* source, GstBuffer* buffer)
{
    const qint64 now = kdMonotonicNs();
    if (!GST_BUFFER_PTS_IS_VALID(buffer)) {
        return now;
    }
    const auto said =
        static_cast<qint64>(GST_BUFFER_PTS(buffer) + gst_element_get_base_time(source));
    return said <= now && now - said < kOldestBelievedNs ? said : now;
}

/** What onArrival() wrote. */
qint64 timeOf(GstBuffer* buffer)
{
    const std::lock_guard<std::mutex> lock(timesMutex());
    return GST_BUFFER_PTS_IS_VALID(buffer) ? static_cast<qint64>(GST_BUFFER_PTS(buffer))
                                           : kdMonotonicNs();
}

} // namespace

KdCameraChain::KdCameraChain(GstElement* source, const KdCameraMode& mode, Receiver receiver)
    : m_receiver(std::move(receiver))
{
    build(source, mode);
    // Threads that GStreamer makes see what was written so far only through these locks.
    const std::scoped_lock publish(m_mutex, timesMutex());
}

KdCameraChain::~KdCameraChain()
{
    const std::scoped_lock lastCall(m_mutex, timesMutex());
}

void KdCameraChain::silence()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_receiver = {[](const GstCaps*) {}, [](GstBuffer*, qint64) {}};
}

void KdCameraChain::build(GstElement* source, const KdCameraMode& mode)
{
    m_bin = kdSink(gst_bin_new("camera"));
    if (!source) {
        m_error = "it is not plugged in, or its system refuses it";
        return;
    }
    configureSource(source);
    gst_bin_add(GST_BIN(m_bin.get()), source);
    GstElement* format = add("capsfilter");
    GstElement* queue = add("queue");
    GstElement* unpack = add(mode.isJpeg ? "jpegdec" : "identity");
    GstElement* sink = add("fakesink");
    if (!link({source, format, queue, unpack, sink})) {
        return;
    }
    const KdGstCapsPtr caps(KdCameraFormats::createCaps(mode));
    g_object_set(format, "caps", caps.get(), nullptr);
    configureQueue(queue);
    g_object_set(sink, "sync", FALSE, "async", FALSE, "enable-last-sample", FALSE, nullptr);
    const KdGstPtr<GstPad> begin(gst_element_get_static_pad(source, "src"));
    gst_pad_add_probe(begin.get(), GST_PAD_PROBE_TYPE_BUFFER, onArrival, this, nullptr);
    const KdGstPtr<GstPad> end(gst_element_get_static_pad(sink, "sink"));
    const auto types = static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER |
                                                    GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM);
    gst_pad_add_probe(end.get(), types, onPicture, this, nullptr);
}

GstElement* KdCameraChain::add(const char* factory)
{
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element) {
        gst_bin_add(GST_BIN(m_bin.get()), element);
    } else if (m_error.empty()) {
        m_error = std::string("the element ") + factory + " is not installed";
    }
    return element;
}

bool KdCameraChain::link(std::initializer_list<GstElement*> elements)
{
    for (auto next = elements.begin(); isValid() && next + 1 != elements.end(); ++next) {
        if (!gst_element_link(*next, *(next + 1))) {
            m_error = std::string("cannot link ") + GST_OBJECT_NAME(*next);
        }
    }
    return isValid();
}

// The time of capture travels on as the picture's own.
GstPadProbeReturn KdCameraChain::onArrival(GstPad* pad, GstPadProbeInfo* info, gpointer self)
{
    const std::lock_guard<std::mutex> lock(timesMutex());
    auto* chain = static_cast<KdCameraChain*>(self);
    chain->m_lastArrivalNs = kdMonotonicNs();
    GstBuffer* buffer = gst_buffer_make_writable(GST_PAD_PROBE_INFO_BUFFER(info));
    const KdGstPtr<GstElement> source(gst_pad_get_parent_element(pad));
    if (source) {
        GST_BUFFER_PTS(buffer) = static_cast<GstClockTime>(captureTime(source.get(), buffer));
    }
    GST_PAD_PROBE_INFO_DATA(info) = buffer;
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn KdCameraChain::onPicture(GstPad*, GstPadProbeInfo* info, gpointer self)
{
    static_cast<KdCameraChain*>(self)->deliver(info);
    return GST_PAD_PROBE_OK;
}

void KdCameraChain::deliver(GstPadProbeInfo* info)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
        GstBuffer* buffer = GST_PAD_PROBE_INFO_BUFFER(info);
        m_receiver.picture(buffer, timeOf(buffer));
        return;
    }
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS) {
        GstCaps* caps = nullptr;
        gst_event_parse_caps(event, &caps);
        m_receiver.format(caps);
    }
}

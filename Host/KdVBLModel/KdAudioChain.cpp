#include <KdVBLModel/KdAudioChain.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <gst/audio/audio.h>

#include <algorithm>
#include <limits>

namespace {

// What sound servers do by default, a bit more than 1024 frames: a smaller wish makes the whole
// server run in smaller steps, and a busy machine then drops sound. The buffer is what we may be
// late ourselves.
constexpr gint64 kLatencyUs = 22000;
constexpr gint64 kBufferUs = 2000000;

bool hasProperty(GstElement* element, const char* name)
{
    return g_object_class_find_property(G_OBJECT_GET_CLASS(element), name) != nullptr;
}

bool isMadeBy(GstElement* element, const char* factory)
{
    GstElementFactory* made = gst_element_get_factory(element);
    return made && g_str_equal(GST_OBJECT_NAME(made), factory);
}

void setStreamProperties(GstElement* source)
{
    // Otherwise the server moves the stream to another device when this one goes, without a word.
    GstStructure* properties =
        gst_structure_new("p", "node.dont-reconnect", G_TYPE_STRING, "true", "node.latency",
                          G_TYPE_STRING, "1024/48000", nullptr);
    g_object_set(source, "stream-properties", properties, nullptr);
    gst_structure_free(properties);
}

void configureSource(GstElement* source)
{
    if (hasProperty(source, "latency-time")) {
        g_object_set(source, "latency-time", kLatencyUs, "buffer-time", kBufferUs, nullptr);
    }
    if (isMadeBy(source, "pulsesrc") || isMadeBy(source, "pipewiresrc")) {
        setStreamProperties(source);
        g_object_set(source, "client-name", "KdRecord", nullptr);
    }
    if (isMadeBy(source, "pipewiresrc")) {
        g_object_set(source, "do-timestamp", TRUE, nullptr);
    }
}

double loudest(const GValue* channels)
{
    auto* array = static_cast<GValueArray*>(g_value_get_boxed(channels));
    double loudest = -std::numeric_limits<double>::infinity();
    for (guint i = 0; array && i < array->n_values; ++i) {
        loudest = std::max(loudest, g_value_get_double(array->values + i));
    }
    return loudest;
}

} // namespace

KdAudioChain::KdAudioChain(GstElement* source, Samples samples) : m_samples(std::move(samples))
{
    build(source);
    // Threads that GStreamer makes see what was written so far only through this lock.
    const std::lock_guard<std::mutex> publish(m_mutex);
}

KdAudioChain::~KdAudioChain()
{
    const std::lock_guard<std::mutex> lastCall(m_mutex);
}

GstCaps* KdAudioChain::createCaps()
{
    return gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, GST_AUDIO_NE(F32), "layout",
                               G_TYPE_STRING, "interleaved", "rate", G_TYPE_INT, kSamplerate,
                               "channels", G_TYPE_INT, kChannels, nullptr);
}

void KdAudioChain::build(GstElement* source)
{
    m_bin = kdSink(gst_bin_new("audio"));
    if (!source) {
        m_error = "it is not plugged in, or its system refuses it";
        return;
    }
    configureSource(source);
    gst_bin_add(GST_BIN(m_bin.get()), source);
    GstElement* convert = add("audioconvert");
    GstElement* resample = add("audioresample");
    GstElement* format = add("capsfilter");
    m_volume = add("volume");
    m_level = add("level");
    GstElement* sink = add("fakesink");
    if (!link({source, convert, resample, format, m_volume, m_level, sink})) {
        return;
    }
    const KdGstCapsPtr caps(createCaps());
    g_object_set(format, "caps", caps.get(), nullptr);
    g_object_set(sink, "sync", FALSE, "async", FALSE, "enable-last-sample", FALSE, nullptr);
    const KdGstPtr<GstPad> end(gst_element_get_static_pad(sink, "sink"));
    gst_pad_add_probe(end.get(), GST_PAD_PROBE_TYPE_BUFFER, onBuffer, this, nullptr);
}

GstElement* KdAudioChain::add(const char* factory)
{
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element) {
        gst_bin_add(GST_BIN(m_bin.get()), element);
    } else if (m_error.empty()) {
        m_error = std::string("the element ") + factory + " is not installed";
    }
    return element;
}

bool KdAudioChain::link(std::initializer_list<GstElement*> elements)
{
    for (auto next = elements.begin(); isValid() && next + 1 != elements.end(); ++next) {
        if (!gst_element_link(*next, *(next + 1))) {
            m_error = std::string("cannot link ") + GST_OBJECT_NAME(*next);
        }
    }
    return isValid();
}

GstPadProbeReturn KdAudioChain::onBuffer(GstPad*, GstPadProbeInfo* info, gpointer self)
{
    auto* chain = static_cast<KdAudioChain*>(self);
    const std::lock_guard<std::mutex> lock(chain->m_mutex);
    chain->m_lastArrivalNs = kdMonotonicNs();
    chain->m_samples(GST_PAD_PROBE_INFO_BUFFER(info));
    return GST_PAD_PROBE_OK;
}

void KdAudioChain::setVolume(double volume)
{
    if (m_volume) {
        g_object_set(m_volume, "volume", volume >= 0.0 && volume <= 1.0 ? volume : 1.0, nullptr);
    }
}

void KdAudioChain::setLevelInterval(int msec)
{
    if (m_level) {
        g_object_set(m_level, "interval", static_cast<guint64>(msec) * GST_MSECOND, nullptr);
    }
}

std::optional<double> KdAudioChain::peakDecibel(const GstStructure* message)
{
    if (!message || !gst_structure_has_name(message, "level")) {
        return std::nullopt;
    }
    const GValue* peak = gst_structure_get_value(message, "peak");
    return peak ? std::make_optional(loudest(peak)) : std::nullopt;
}

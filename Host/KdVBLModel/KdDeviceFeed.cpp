#include <KdVBLModel/KdDeviceFeed.h>

#include <KdVBLModel/KdElementWarmUp.h>

#include <KdCore/KdBaseLog.h>

using namespace KdVBLMODEL;

namespace {

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdDeviceFeed", function, line};
}

GstDevice* deviceOf(KdDeviceList::Handle handle)
{
    return static_cast<GstDevice*>(const_cast<void*>(handle));
}

void releaseOffers(const KdDeviceList& list)
{
    const QVector<KdDeviceList::Handle> handles = list.handles();
    for (KdDeviceList::Handle handle : handles) {
        gst_object_unref(deviceOf(handle));
    }
}

gboolean quitLoop(gpointer loop)
{
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_REMOVE;
}

} // namespace

KdDeviceFeed::KdDeviceFeed(_KdDevType kind, std::shared_ptr<Listeners> listeners)
    : m_kind(kind)
    , m_listeners(std::move(listeners))
    , m_context(g_main_context_new())
    , m_loop(g_main_loop_new(m_context, FALSE))
{
}

KdDeviceFeed::~KdDeviceFeed()
{
    releaseOffers(m_list);
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
}

void KdDeviceFeed::start(Milliseconds delay)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_thread.joinable()) {
        m_thread = std::thread([self = shared_from_this(), delay] { self->run(delay); });
    }
}

void KdDeviceFeed::quit(Milliseconds patience)
{
    if (!m_thread.joinable()) {
        return;
    }
    GSource* once = g_idle_source_new();
    g_source_set_callback(once, quitLoop, m_loop, nullptr);
    g_source_attach(once, m_context);
    g_source_unref(once);
    bool hasEnded = false;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_isQuitting = true;
        m_changed.notify_all();
        hasEnded = m_changed.wait_for(lock, patience, [this] { return m_hasEnded; });
    }
    if (hasEnded) {
        m_thread.join();
    } else {
        m_thread.detach();
    }
}

bool KdDeviceFeed::waitUntilListed(Milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (patience.count() > 0) {
        m_isAwaited = true;
        m_changed.notify_all();
    }
    return m_changed.wait_for(lock, patience, [this] { return m_isListed; });
}

QVector<KdCaptureDevice> KdDeviceFeed::devices() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_list.devices(m_kind);
}

KdGstPtr<GstDevice> KdDeviceFeed::offerOf(const KdCaptureDevice& device) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return kdRef(deviceOf(m_list.bestOffer(device.kind, device.id)));
}

void KdDeviceFeed::run(Milliseconds delay)
{
    if (waitForStart(delay)) {
        g_main_context_push_thread_default(m_context);
        watch();
        g_main_context_pop_thread_default(m_context);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isListed = true;
    m_hasEnded = true;
    m_changed.notify_all();
}

/** @return false when it was told to quit meanwhile. */
bool KdDeviceFeed::waitForStart(Milliseconds delay)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, delay, [this] { return m_isAwaited || m_isQuitting; });
    return !m_isQuitting;
}

void KdDeviceFeed::watch()
{
    GError* error = nullptr;
    if (!gst_init_check(nullptr, nullptr, &error)) {
        KdBaseLog::write(KdBaseLog::Error, source("KdDeviceFeed::watch"),
                         "GStreamer does not start: %s",
                         error ? error->message : "no reason given");
        g_clear_error(&error);
        return;
    }
    const auto createSystem = m_kind == kdtWebcam ? kdCameraDevices : kdSoundDevices;
    m_system = createSystem(
        m_context, {[this] { listAnew(); }, [this](GstMessage* message) { handle(message); }});
    g_main_loop_run(m_loop);
    m_system.reset();
}

void KdDeviceFeed::listAnew()
{
    KdDeviceList fresh = currentOffers();
    KdDeviceList former;
    bool isFirst = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        former = m_list;
        fresh.keepNames(former);
        m_list = fresh;
        isFirst = !m_isListed;
        m_isListed = true;
    }
    m_changed.notify_all();
    const QVector<KdDeviceList::Change> changes = KdDeviceList::changes(former, fresh);
    releaseOffers(former);
    if (isFirst) {
        m_listeners->notify(
            [this](IKdDeviceListener& listener) { listener.onDevicesListed(m_kind); });
        warmUp();
        return;
    }
    for (const KdDeviceList::Change& change : changes) {
        announce(change);
    }
}

// Here, where nobody waits, and at once: a take that begins soon needs it.
void KdDeviceFeed::warmUp()
{
    kdWarmUpElements(m_kind, [this] {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return !m_isQuitting;
    });
}

KdDeviceList KdDeviceFeed::currentOffers() const
{
    KdDeviceList list;
    GList* devices = m_system->devices();
    for (GList* item = devices; item; item = item->next) {
        KdGstPtr<GstDevice> device(GST_DEVICE(item->data));
        if (const auto offer = offerFrom(device.get())) {
            list.add(device.release(), *offer);
        }
    }
    g_list_free(devices);
    return list;
}

/** @return nothing for a device of another kind. */
std::optional<KdDeviceOffer> KdDeviceFeed::offerFrom(GstDevice* device) const
{
    std::optional<KdDeviceOffer> offer = kdOfferFrom(kdFactsOf(device));
    return offer && offer->kind == m_kind ? offer : std::nullopt;
}

void KdDeviceFeed::handle(GstMessage* message)
{
    GstDevice* device = nullptr;
    GstDevice* former = nullptr;
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_DEVICE_ADDED:
        gst_message_parse_device_added(message, &device);
        add(KdGstPtr<GstDevice>(device));
        break;
    case GST_MESSAGE_DEVICE_CHANGED:
        gst_message_parse_device_changed(message, &device, &former);
        replace(KdGstPtr<GstDevice>(former), KdGstPtr<GstDevice>(device));
        break;
    case GST_MESSAGE_DEVICE_REMOVED:
        gst_message_parse_device_removed(message, &device);
        remove(KdGstPtr<GstDevice>(device));
        break;
    default:
        break;
    }
}

void KdDeviceFeed::add(KdGstPtr<GstDevice> device)
{
    const auto offer = offerFrom(device.get());
    if (!offer) {
        return;
    }
    std::optional<KdCaptureDevice> added;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_list.holds(device.get())) {
            return;
        }
        added = m_list.add(device.release(), *offer);
    }
    if (added) {
        announce({true, *added});
    }
}

/** A default that is another one now, mostly: the device stays, and so does its place. */
void KdDeviceFeed::replace(const KdGstPtr<GstDevice>& former, KdGstPtr<GstDevice> device)
{
    const auto offer = offerFrom(device.get());
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (offer && m_list.replace(former.get(), device.get(), *offer)) {
        static_cast<void>(device.release()); // the list's from now on
        gst_object_unref(former.get());
    }
}

void KdDeviceFeed::remove(const KdGstPtr<GstDevice>& device)
{
    std::optional<KdCaptureDevice> removed;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_list.holds(device.get())) {
            return;
        }
        removed = m_list.remove(device.get());
    }
    gst_object_unref(device.get());
    if (removed) {
        announce({false, *removed});
    }
}

void KdDeviceFeed::announce(const KdDeviceList::Change& change)
{
    KdBaseLog::write(KdBaseLog::Info, source("KdDeviceFeed::announce"), "%s: %s",
                     change.isAdded ? "Device added" : "Device removed",
                     qUtf8Printable(change.device.name));
    m_listeners->notify([&change](IKdDeviceListener& listener) {
        if (change.isAdded) {
            listener.onDeviceAdded(change.device);
        } else {
            listener.onDeviceRemoved(change.device);
        }
    });
}

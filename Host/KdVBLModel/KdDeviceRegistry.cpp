#include <KdVBLModel/KdDeviceRegistry.h>

#include <KdVBLModel/KdDeviceList.h>
#include <KdVBLModel/KdElementWarmUp.h>
#include <KdVBLModel/KdGst.h>
#include <KdCore/KdObserverList.h>
#include <KdVBLModel/KdSoundServerWatch.h>

#include <KdCore/KdBaseLog.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

constexpr std::chrono::milliseconds kPatienceAtExit{1000};

// One of them, the first that answers, and not a GstDeviceMonitor, which starts all: PipeWire
// 0.3.65 corrupts the heap when its provider stops after nodes came and went, and the bare hardware
// of ALSA is of no use to anybody while a sound server holds it.
constexpr const char* kProviders[] = {"pulsedeviceprovider", "pipewiredeviceprovider",
                                      "alsadeviceprovider", "wasapi2deviceprovider",
                                      "osxaudiodeviceprovider"};

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdDeviceRegistry", function, line};
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

} // namespace

class KdDeviceRegistry::Private
{
public:
    Private();
    ~Private();

    /** The thread's whole life. */
    void run();
    /** Any thread, also before run(). */
    void quit();

    GMainContext* m_context;
    GMainLoop* m_loop;
    KdObserverList<IKdDeviceListener> m_listeners;

    mutable std::mutex m_mutex; ///< guards what follows; never held during a call on a listener
    std::condition_variable m_changed;
    KdDeviceList m_list; ///< its handles are devices, each with a reference
    std::thread m_thread;
    bool m_isListed = false;
    bool m_hasEnded = false;

private:
    static gboolean onMessage(GstBus*, GstMessage* message, gpointer self);
    static gboolean onQuit(gpointer loop);

    void watch();
    void serverChanged(bool isRunning);
    void startProvider();
    void stopProvider();
    void listAnew();
    KdDeviceList currentOffers() const;
    void handle(GstMessage* message);
    void add(KdGstPtr<GstDevice> device);
    void replace(const KdGstPtr<GstDevice>& former, KdGstPtr<GstDevice> device);
    void remove(const KdGstPtr<GstDevice>& device);
    void announce(const KdDeviceList::Change& change);

    // The thread's alone.
    KdGstPtr<GstDeviceProvider> m_provider;
    GSource* m_messages = nullptr;
    bool m_hasServer = false; ///< this machine; it may be away now
};

KdDeviceRegistry::Private::Private()
    : m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE))
{
}

KdDeviceRegistry::Private::~Private()
{
    releaseOffers(m_list);
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
}

void KdDeviceRegistry::Private::quit()
{
    GSource* once = g_idle_source_new();
    g_source_set_callback(once, &Private::onQuit, m_loop, nullptr);
    g_source_attach(once, m_context);
    g_source_unref(once);
}

gboolean KdDeviceRegistry::Private::onQuit(gpointer loop)
{
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_REMOVE;
}

void KdDeviceRegistry::Private::run()
{
    g_main_context_push_thread_default(m_context);
    GError* error = nullptr;
    if (gst_init_check(nullptr, nullptr, &error)) {
        watch();
    } else {
        KdBaseLog::write(KdBaseLog::Error, source("KdDeviceRegistry::run"),
                         "GStreamer does not start: %s",
                         error ? error->message : "no reason given");
        g_clear_error(&error);
    }
    g_main_context_pop_thread_default(m_context);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isListed = true;
    m_hasEnded = true;
    m_changed.notify_all();
}

void KdDeviceRegistry::Private::watch()
{
    const KdSoundServerWatch server(m_context,
                                    [this](bool isRunning) { serverChanged(isRunning); });
    g_main_loop_run(m_loop);
    stopProvider();
}

/** The first system of this machine that answers. */
void KdDeviceRegistry::Private::startProvider()
{
    for (const char* name : kProviders) {
        KdGstPtr<GstDeviceProvider> provider(gst_device_provider_factory_get_by_name(name));
        if (provider && gst_device_provider_start(provider.get())) {
            const KdGstPtr<GstBus> bus(gst_device_provider_get_bus(provider.get()));
            m_messages = gst_bus_create_watch(bus.get());
            g_source_set_callback(m_messages, G_SOURCE_FUNC(&Private::onMessage), this, nullptr);
            g_source_attach(m_messages, m_context);
            m_provider = std::move(provider);
            return;
        }
    }
    KdBaseLog::write(KdBaseLog::Info, source("KdDeviceRegistry::startProvider"),
                     "Nothing on this machine can list capture devices now.");
}

void KdDeviceRegistry::Private::stopProvider()
{
    if (m_provider) {
        g_source_destroy(m_messages);
        g_source_unref(m_messages);
        gst_device_provider_stop(m_provider.get());
        m_provider.reset();
    }
}

void KdDeviceRegistry::Private::serverChanged(bool isRunning)
{
    KdBaseLog::write(KdBaseLog::Info, source("KdDeviceRegistry::serverChanged"),
                     isRunning ? "The sound server is running." : "There is no sound server.");
    m_hasServer |= isRunning;
    stopProvider();
    // While the server of a machine that has one is away, what others offer are its leftovers.
    if (isRunning || !m_hasServer) {
        startProvider();
    }
    listAnew();
}

void KdDeviceRegistry::Private::listAnew()
{
    const KdDeviceList fresh = currentOffers();
    KdDeviceList former;
    bool isFirst = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        former = m_list;
        m_list = fresh;
        isFirst = !m_isListed;
        m_isListed = true;
    }
    m_changed.notify_all();
    const QVector<KdDeviceList::Change> changes = KdDeviceList::changes(former, fresh);
    releaseOffers(former);
    if (isFirst) {
        m_listeners.notify([](IKdDeviceListener& listener) { listener.onDevicesListed(); });
        kdWarmUpElements(); // here, where nobody waits
        return;
    }
    for (const KdDeviceList::Change& change : changes) {
        announce(change);
    }
}

KdDeviceList KdDeviceRegistry::Private::currentOffers() const
{
    KdDeviceList list;
    GList* devices = m_provider ? gst_device_provider_get_devices(m_provider.get()) : nullptr;
    for (GList* item = devices; item; item = item->next) {
        KdGstPtr<GstDevice> device(GST_DEVICE(item->data));
        if (const auto offer = kdOfferFrom(kdFactsOf(device.get()))) {
            list.add(device.release(), *offer);
        }
    }
    g_list_free(devices);
    return list;
}

gboolean KdDeviceRegistry::Private::onMessage(GstBus*, GstMessage* message, gpointer self)
{
    static_cast<Private*>(self)->handle(message);
    return G_SOURCE_CONTINUE;
}

void KdDeviceRegistry::Private::handle(GstMessage* message)
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

void KdDeviceRegistry::Private::add(KdGstPtr<GstDevice> device)
{
    const auto offer = kdOfferFrom(kdFactsOf(device.get()));
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
void KdDeviceRegistry::Private::replace(const KdGstPtr<GstDevice>& former,
                                        KdGstPtr<GstDevice> device)
{
    const auto offer = kdOfferFrom(kdFactsOf(device.get()));
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (offer && m_list.replace(former.get(), device.get(), *offer)) {
        static_cast<void>(device.release()); // the list's from now on
        gst_object_unref(former.get());
    }
}

void KdDeviceRegistry::Private::remove(const KdGstPtr<GstDevice>& device)
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

void KdDeviceRegistry::Private::announce(const KdDeviceList::Change& change)
{
    KdBaseLog::write(KdBaseLog::Info, source("KdDeviceRegistry::announce"), "%s: %s",
                     change.isAdded ? "Device added" : "Device removed",
                     qUtf8Printable(change.device.name));
    m_listeners.notify([&change](IKdDeviceListener& listener) {
        if (change.isAdded) {
            listener.onDeviceAdded(change.device);
        } else {
            listener.onDeviceRemoved(change.device);
        }
    });
}

KdDeviceRegistry::KdDeviceRegistry() : d(std::make_shared<Private>()) {}

KdDeviceRegistry::~KdDeviceRegistry()
{
    if (!d->m_thread.joinable()) {
        return;
    }
    d->quit();
    bool hasEnded = false;
    {
        std::unique_lock<std::mutex> lock(d->m_mutex);
        hasEnded = d->m_changed.wait_for(lock, kPatienceAtExit, [this] { return d->m_hasEnded; });
    }
    if (hasEnded) {
        d->m_thread.join();
    } else {
        d->m_thread.detach();
    }
}

KdDeviceRegistry& KdDeviceRegistry::instance()
{
    static KdDeviceRegistry registry;
    return registry;
}

void KdDeviceRegistry::start()
{
    const std::lock_guard<std::mutex> lock(d->m_mutex);
    if (!d->m_thread.joinable()) {
        d->m_thread = std::thread([keptAlive = d] { keptAlive->run(); });
    }
}

bool KdDeviceRegistry::waitUntilListed(std::chrono::milliseconds patience)
{
    start();
    std::unique_lock<std::mutex> lock(d->m_mutex);
    return d->m_changed.wait_for(lock, patience, [this] { return d->m_isListed; });
}

QVector<KdCaptureDevice> KdDeviceRegistry::devices(KdVBLMODEL::_KdDevType kind) const
{
    const std::lock_guard<std::mutex> lock(d->m_mutex);
    return d->m_list.devices(kind);
}

GstElement* KdDeviceRegistry::createSource(const KdCaptureDevice& device) const
{
    KdGstPtr<GstDevice> offer;
    {
        const std::lock_guard<std::mutex> lock(d->m_mutex);
        offer = kdRef(deviceOf(d->m_list.bestOffer(device.kind, device.id)));
    }
    return offer ? gst_device_create_element(offer.get(), nullptr) : nullptr;
}

void KdDeviceRegistry::addListener(IKdDeviceListener* listener)
{
    d->m_listeners.add(listener);
}

void KdDeviceRegistry::removeListener(IKdDeviceListener* listener)
{
    d->m_listeners.remove(listener);
}

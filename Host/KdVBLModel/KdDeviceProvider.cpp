#include <KdVBLModel/KdDeviceProvider.h>

std::unique_ptr<KdDeviceProvider> KdDeviceProvider::start(KdGstPtr<GstDeviceProvider> provider,
                                                          GMainContext* context, Handler handler)
{
    if (!provider || !gst_device_provider_start(provider.get())) {
        return nullptr;
    }
    return std::unique_ptr<KdDeviceProvider>(
        new KdDeviceProvider(std::move(provider), context, std::move(handler)));
}

std::unique_ptr<KdDeviceProvider> KdDeviceProvider::start(const char* name, GMainContext* context,
                                                          Handler handler)
{
    KdGstPtr<GstDeviceProvider> provider(gst_device_provider_factory_get_by_name(name));
    return start(std::move(provider), context, std::move(handler));
}

KdDeviceProvider::KdDeviceProvider(KdGstPtr<GstDeviceProvider> provider, GMainContext* context,
                                   Handler handler)
    : m_provider(std::move(provider)), m_handler(std::move(handler))
{
    const KdGstPtr<GstBus> bus(gst_device_provider_get_bus(m_provider.get()));
    m_messages = gst_bus_create_watch(bus.get());
    g_source_set_callback(m_messages, G_SOURCE_FUNC(&KdDeviceProvider::onMessage), this, nullptr);
    g_source_attach(m_messages, context);
}

KdDeviceProvider::~KdDeviceProvider()
{
    g_source_destroy(m_messages);
    g_source_unref(m_messages);
    if (m_provider) {
        gst_device_provider_stop(m_provider.get());
    }
}

void KdDeviceProvider::abandon(std::unique_ptr<KdDeviceProvider> provider)
{
    if (!provider) {
        return;
    }
    const KdGstPtr<GstBus> bus(gst_device_provider_get_bus(provider->m_provider.get()));
    gst_bus_set_flushing(bus.get(), TRUE); // nobody reads what it says from now on
    static_cast<void>(provider->m_provider.release());
}

gboolean KdDeviceProvider::onMessage(GstBus*, GstMessage* message, gpointer self)
{
    static_cast<KdDeviceProvider*>(self)->m_handler(message);
    return G_SOURCE_CONTINUE;
}

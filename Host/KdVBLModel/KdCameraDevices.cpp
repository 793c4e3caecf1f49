#include <KdVBLModel/KdDeviceProvider.h>
#include <KdVBLModel/KdDeviceSystem.h>
#include <KdVBLModel/KdVideoServerWatch.h>

#include <KdCore/KdBaseLog.h>

#include <array>

namespace {

constexpr const char* kServersProvider = "pipewiredeviceprovider";

// The system's own. Each is asked: a machine has one of them.
constexpr std::array kProviders{"v4l2deviceprovider", "mfdeviceprovider", "ksdeviceprovider",
                                "avfdeviceprovider"};

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdCameraDevices", function, line};
}

class KdCameraDevices final : public IKdDeviceSystem
{
public:
    KdCameraDevices(GMainContext* context, Callbacks callbacks);
    /** The server's provider goes on: see below. */
    ~KdCameraDevices() override { KdDeviceProvider::abandon(std::move(m_servers)); }

    GList* devices() const override;

private:
    void serverChanged(int connection);
    std::unique_ptr<KdDeviceProvider> startServersProvider(int connection) const;

    GMainContext* m_context;
    Callbacks m_callbacks;
    std::array<std::unique_ptr<KdDeviceProvider>, kProviders.size()> m_systems;
    std::unique_ptr<KdDeviceProvider> m_servers;
    KdVideoServerWatch m_watch;
};

KdCameraDevices::KdCameraDevices(GMainContext* context, Callbacks callbacks)
    : m_context(context)
    , m_callbacks(std::move(callbacks))
    , m_watch(context, [this](int connection) { serverChanged(connection); })
{
    for (std::size_t i = 0; i < kProviders.size(); ++i) {
        m_systems[i] = KdDeviceProvider::start(kProviders[i], context, m_callbacks.message);
    }
}

GList* KdCameraDevices::devices() const
{
    GList* devices = m_servers ? m_servers->devices() : nullptr;
    for (const auto& system : m_systems) {
        devices = g_list_concat(devices, system ? system->devices() : nullptr);
    }
    return devices;
}

// PipeWire 0.3.65 corrupts the heap when its provider stops after nodes came and went: none ever
// stops. Each start of the server gets a provider of its own, with a connection of its own, because
// a provider never notices that its server has gone.
void KdCameraDevices::serverChanged(int connection)
{
    KdBaseLog::write(KdBaseLog::Info, source("KdCameraDevices::serverChanged"),
                     connection >= 0 ? "The video server is running."
                                     : "There is no video server.");
    KdDeviceProvider::abandon(std::move(m_servers));
    m_servers = connection >= 0 ? startServersProvider(connection) : nullptr;
    m_callbacks.listChanged();
}

std::unique_ptr<KdDeviceProvider> KdCameraDevices::startServersProvider(int connection) const
{
    const KdGstPtr<GstPluginFeature> found(
        GST_PLUGIN_FEATURE(gst_device_provider_factory_find(kServersProvider)));
    const KdGstPtr<GstPluginFeature> factory(found ? gst_plugin_feature_load(found.get())
                                                   : nullptr);
    if (!factory) {
        return nullptr;
    }
    const GType type = gst_device_provider_factory_get_device_provider_type(
        GST_DEVICE_PROVIDER_FACTORY(factory.get()));
    auto* provider = GST_DEVICE_PROVIDER(g_object_new(type, nullptr));
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(provider), "fd")) {
        g_object_set(provider, "fd", connection, nullptr);
    }
    return KdDeviceProvider::start(kdSink(provider), m_context, m_callbacks.message);
}

} // namespace

std::unique_ptr<IKdDeviceSystem> kdCameraDevices(GMainContext* context,
                                                 IKdDeviceSystem::Callbacks callbacks)
{
    return std::make_unique<KdCameraDevices>(context, std::move(callbacks));
}

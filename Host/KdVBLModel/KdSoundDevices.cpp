#include <KdVBLModel/KdDeviceProvider.h>
#include <KdVBLModel/KdDeviceSystem.h>
#include <KdVBLModel/KdSoundServerWatch.h>

#include <KdCore/KdBaseLog.h>

namespace {

// One of them, the first that answers, and not a GstDeviceMonitor, which starts all: PipeWire
// 0.3.65 corrupts the heap when its provider stops after nodes came and went, and the bare hardware
// of ALSA is of no use to anybody while a sound server holds it.
constexpr const char* kProviders[] = {"pulsedeviceprovider", "pipewiredeviceprovider",
                                      "alsadeviceprovider", "wasapi2deviceprovider",
                                      "osxaudiodeviceprovider"};

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdSoundDevices", function, line};
}

class KdSoundDevices final : public IKdDeviceSystem
{
public:
    KdSoundDevices(GMainContext* context, Callbacks callbacks)
        : m_context(context)
        , m_callbacks(std::move(callbacks))
        , m_server(context, [this](bool isRunning) { serverChanged(isRunning); })
    {
    }

    GList* devices() const override { return m_provider ? m_provider->devices() : nullptr; }

private:
    void serverChanged(bool isRunning);
    void startProvider();

    GMainContext* m_context;
    Callbacks m_callbacks;
    std::unique_ptr<KdDeviceProvider> m_provider;
    bool m_hasServer = false; ///< this machine; it may be away now
    KdSoundServerWatch m_server;
};

void KdSoundDevices::serverChanged(bool isRunning)
{
    KdBaseLog::write(KdBaseLog::Info, source("KdSoundDevices::serverChanged"),
                     isRunning ? "The sound server is running." : "There is no sound server.");
    m_hasServer |= isRunning;
    m_provider.reset();
    // While the server of a machine that has one is away, what others offer are its leftovers.
    if (isRunning || !m_hasServer) {
        startProvider();
    }
    m_callbacks.listChanged();
}

/** The first system of this machine that answers. */
void KdSoundDevices::startProvider()
{
    for (const char* name : kProviders) {
        m_provider = KdDeviceProvider::start(name, m_context, m_callbacks.message);
        if (m_provider) {
            return;
        }
    }
    KdBaseLog::write(KdBaseLog::Info, source("KdSoundDevices::startProvider"),
                     "Nothing on this machine can list audio inputs now.");
}

} // namespace

std::unique_ptr<IKdDeviceSystem> kdSoundDevices(GMainContext* context,
                                                IKdDeviceSystem::Callbacks callbacks)
{
    return std::make_unique<KdSoundDevices>(context, std::move(callbacks));
}

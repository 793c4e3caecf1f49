#pragma once

#include <KdVBLModel/KdGst.h>

#include <functional>
#include <memory>

/**
 * One of GStreamer's device providers while it runs. Lives on the thread that runs the context.
 */
class KdDeviceProvider
{
public:
    using Handler = std::function<void(GstMessage*)>;

    /** @param handler told of devices that come, change and go, on the context's thread
     * @return null when there is no such provider, or when it does not start. */
    static std::unique_ptr<KdDeviceProvider> start(KdGstPtr<GstDeviceProvider> provider,
                                                   GMainContext* context, Handler handler);
    /** @param name of the provider's factory */
    static std::unique_ptr<KdDeviceProvider> start(const char* name, GMainContext* context,
                                                   Handler handler);

    /** Stops the provider. */
    ~KdDeviceProvider();

    /** Never stops the provider, which stays to the end of the process and is not heard again. */
    static void abandon(std::unique_ptr<KdDeviceProvider> provider);

    /** @return what it offers now; the list and the devices are the caller's. */
    GList* devices() const { return gst_device_provider_get_devices(m_provider.get()); }

private:
    KdDeviceProvider(KdGstPtr<GstDeviceProvider> provider, GMainContext* context, Handler handler);
    KdDeviceProvider(const KdDeviceProvider&) = delete;
    KdDeviceProvider& operator=(const KdDeviceProvider&) = delete;

    static gboolean onMessage(GstBus* bus, GstMessage* message, gpointer self);

    KdGstPtr<GstDeviceProvider> m_provider;
    Handler m_handler;
    GSource* m_messages = nullptr;
};

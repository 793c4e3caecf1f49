#include <KdVBLModel/KdDeviceRegistry.h>

#include <KdVBLModel/KdDeviceFeed.h>

#include <QCoreApplication>

using namespace KdVBLMODEL;

namespace {

constexpr std::chrono::milliseconds kPatienceAtExit{1000};

void quitRegistry()
{
    KdDeviceRegistry::instance().quit();
}

} // namespace

class KdDeviceRegistry::Private
{
public:
    const std::shared_ptr<KdDeviceFeed>& feedOf(_KdDevType kind) const
    {
        return kind == kdtWebcam ? cameras : microphones;
    }

    const std::shared_ptr<KdDeviceFeed::Listeners> listeners =
        std::make_shared<KdDeviceFeed::Listeners>();
    const std::shared_ptr<KdDeviceFeed> microphones =
        std::make_shared<KdDeviceFeed>(kdtMicrophone, listeners);
    const std::shared_ptr<KdDeviceFeed> cameras =
        std::make_shared<KdDeviceFeed>(kdtWebcam, listeners);
};

// When static objects are destroyed those that the threads use are among the first.
KdDeviceRegistry::KdDeviceRegistry() : d(std::make_unique<Private>())
{
    qAddPostRoutine(quitRegistry);
}

KdDeviceRegistry::~KdDeviceRegistry()
{
    quit();
}

void KdDeviceRegistry::quit()
{
    d->cameras->quit(kPatienceAtExit);
    d->microphones->quit(kPatienceAtExit);
}

KdDeviceRegistry& KdDeviceRegistry::instance()
{
    static KdDeviceRegistry registry;
    return registry;
}

void KdDeviceRegistry::start(_KdDevType kind, std::chrono::milliseconds delay)
{
    d->feedOf(kind)->start(delay);
}

bool KdDeviceRegistry::waitUntilListed(_KdDevType kind, std::chrono::milliseconds patience)
{
    start(kind);
    return d->feedOf(kind)->waitUntilListed(patience);
}

QVector<KdCaptureDevice> KdDeviceRegistry::devices(_KdDevType kind) const
{
    const bool isWatched = kind == kdtWebcam || kind == kdtMicrophone;
    return isWatched ? d->feedOf(kind)->devices() : QVector<KdCaptureDevice>();
}

bool KdDeviceRegistry::has(const KdCaptureDevice& device) const
{
    return d->feedOf(device.kind)->offerOf(device) != nullptr;
}

GstElement* KdDeviceRegistry::createSource(const KdCaptureDevice& device) const
{
    const KdGstPtr<GstDevice> offer = d->feedOf(device.kind)->offerOf(device);
    return offer ? gst_device_create_element(offer.get(), nullptr) : nullptr;
}

GstCaps* KdDeviceRegistry::createCaps(const KdCaptureDevice& device) const
{
    const KdGstPtr<GstDevice> offer = d->feedOf(device.kind)->offerOf(device);
    return offer ? gst_device_get_caps(offer.get()) : nullptr;
}

void KdDeviceRegistry::addListener(IKdDeviceListener* listener)
{
    d->listeners->add(listener);
}

void KdDeviceRegistry::removeListener(IKdDeviceListener* listener)
{
    d->listeners->remove(listener);
}

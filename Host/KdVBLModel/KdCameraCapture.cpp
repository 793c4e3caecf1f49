#include <KdVBLModel/KdCameraCapture.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

#include <algorithm>

namespace {
constexpr qint64 kStallNs = 2000000000LL * KD_BUILD_SLOWDOWN;
/** Some cameras take seconds until they have found their exposure. */
constexpr qint64 kFirstPictureNs = 5000000000LL * KD_BUILD_SLOWDOWN;
} // namespace

KdCameraCapture::KdCameraCapture(const KdCaptureDevice& device, const KdCameraMode& mode,
                                 GstElement* source, KdCameraChain::Receiver receiver,
                                 std::function<void()> failed)
    : m_device(device)
    , m_mode(mode)
    , m_chain(source, mode, std::move(receiver))
    , m_pipeline(m_chain.bin(), {std::move(failed), {}})
    , m_createdNs(kdMonotonicNs())
{
    m_pipeline.useMonotonicClock();
}

void KdCameraCapture::start()
{
    if (m_chain.isValid()) {
        m_pipeline.start(); // a failure comes as a message, too
    } else {
        KdBaseLog::write(KdBaseLog::Error,
                         {"Host/KdVBLModel/KdCameraCapture", "KdCameraCapture::start"},
                         "The camera %s cannot be opened: %s.", qUtf8Printable(m_device.name),
                         m_chain.error().c_str());
        m_pipeline.fail();
    }
    m_hasStarted = true;
}

void KdCameraCapture::silence()
{
    m_pipeline.silence();
    m_chain.silence();
}

bool KdCameraCapture::isStalled() const
{
    const qint64 now = kdMonotonicNs();
    return hasPicture() ? now - m_chain.lastArrivalNs() > kStallNs
                        : now - m_createdNs > kFirstPictureNs;
}

#include <KdVBLModel/KdCameraInput.h>

#include <KdVBLModel/KdDeviceRegistry.h>

#include <KdCore/KdBaseLog.h>

namespace {

constexpr std::chrono::milliseconds kClosingPatience{1000};
/** For one that is still being opened: whoever does not answer now does not answer for long. */
constexpr std::chrono::milliseconds kOpeningPatience{300};

} // namespace

KdCameraInput::KdCameraInput(Callbacks callbacks)
    : m_callbacks(std::move(callbacks)), m_opener(std::make_unique<KdSerialThread>())
{
}

KdCameraInput::~KdCameraInput()
{
    close();
    m_opener->finish(kClosingPatience);
}

// The former one goes first: no camera is open twice, and most could not be.
void KdCameraInput::open(const KdCaptureDevice& device, const KdCameraMode& mode)
{
    if (isOpen(device, mode)) {
        return;
    }
    close();
    KdBaseLog::write(KdBaseLog::Info, {"Host/KdVBLModel/KdCameraInput", "KdCameraInput::open"},
                     "Opening %s: %d x %d, %.2f pictures a second%s.", qUtf8Printable(device.name),
                     mode.size.width(), mode.size.height(), mode.frameRate(),
                     mode.isJpeg ? ", JPEG" : "");
    m_capture = create(device, mode);
    m_opener->post([capture = m_capture] { capture->start(); });
}

KdCameraInput::Capture KdCameraInput::create(const KdCaptureDevice& device,
                                             const KdCameraMode& mode)
{
    const int number = ++m_number;
    KdCameraChain::Receiver receiver;
    receiver.format = m_callbacks.format;
    receiver.picture = [this, device](GstBuffer* picture, qint64 captureNs) {
        m_callbacks.picture(picture, captureNs, device);
    };
    GstElement* source = KdDeviceRegistry::instance().createSource(device);
    return std::make_shared<KdCameraCapture>(device, mode, source, std::move(receiver),
                                             [this, number] { m_callbacks.failed(number); });
}

void KdCameraInput::close()
{
    if (!m_capture) {
        return;
    }
    m_capture->silence();
    const auto patience = m_capture->hasStarted() ? kClosingPatience : kOpeningPatience;
    const std::optional<bool> isClosed = m_opener->call<bool>(
        [capture = std::move(m_capture)]() mutable {
            capture.reset();
            return true;
        },
        patience);
    m_capture.reset();
    if (!isClosed) {
        m_opener->finish(std::chrono::milliseconds(0));
        m_opener = std::make_unique<KdSerialThread>();
    }
}

bool KdCameraInput::isStalled() const
{
    if (!m_capture || !m_capture->isStalled()) {
        return false;
    }
    KdBaseLog::write(KdBaseLog::Warning,
                     {"Host/KdVBLModel/KdCameraInput", "KdCameraInput::isStalled"},
                     "The camera %s gives nothing%s.", qUtf8Printable(m_capture->device().name),
                     m_capture->hasPicture() ? " any more" : "");
    return true;
}

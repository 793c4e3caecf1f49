#include <KdVBLModel/KdSoundInput.h>

#include <KdVBLModel/KdDeviceRegistry.h>

#include <KdCore/KdBaseLog.h>

KdSoundInput::KdSoundInput(Callbacks callbacks) : m_callbacks(std::move(callbacks)) {}

bool KdSoundInput::open(const KdCaptureDevice& device, double volume, int intervalMs)
{
    const bool isRunning = isOpen(device) && !hasFailed();
    if (!isRunning) {
        close();
        m_capture = create(device);
    }
    m_capture->chain().setVolume(volume);
    m_capture->chain().setLevelInterval(intervalMs);
    if (!isRunning && !m_capture->start()) {
        close();
    }
    return isOpen();
}

std::unique_ptr<KdAudioCapture> KdSoundInput::create(const KdCaptureDevice& device)
{
    const int number = ++m_number;
    KdAudioCapture::Callbacks callbacks;
    callbacks.samples = [this, device](GstBuffer* buffer) { m_callbacks.samples(buffer, device); };
    callbacks.level = m_callbacks.level;
    callbacks.failed = [this, number] { m_callbacks.failed(number); };
    GstElement* source = KdDeviceRegistry::instance().createSource(device);
    return std::make_unique<KdAudioCapture>(device, source, std::move(callbacks));
}

bool KdSoundInput::close()
{
    const bool wasOpen = isOpen();
    m_capture.reset();
    return wasOpen;
}

bool KdSoundInput::isStalled() const
{
    if (!m_capture || !m_capture->isStalled()) {
        return false;
    }
    KdBaseLog::write(
        KdBaseLog::Warning, {"Host/KdVBLModel/KdSoundInput", "KdSoundInput::isStalled"},
        "The audio input %s gives nothing any more.", qUtf8Printable(m_capture->device().name));
    return true;
}

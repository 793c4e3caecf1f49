#include <KdVBLModel/KdAudioCapture.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

namespace {

constexpr qint64 kStallNs = 2000000000;

KdCapturePipeline::Callbacks pipelineCallbacks(const KdAudioCapture::Callbacks& callbacks)
{
    const auto tellLevel = [level = callbacks.level](const GstStructure* told) {
        if (const auto decibel = KdAudioChain::peakDecibel(told)) {
            level(*decibel);
        }
    };
    return {callbacks.failed, tellLevel};
}

} // namespace

KdAudioCapture::KdAudioCapture(const KdCaptureDevice& device, GstElement* source,
                               const Callbacks& callbacks)
    : m_device(device)
    , m_chain(source, callbacks.samples)
    , m_pipeline(m_chain.bin(), pipelineCallbacks(callbacks))
{
}

bool KdAudioCapture::start()
{
    if (!m_chain.isValid()) {
        KdBaseLog::write(KdBaseLog::Error,
                         {"Host/KdVBLModel/KdAudioCapture", "KdAudioCapture::start"},
                         "The audio input %s cannot be opened: %s.", qUtf8Printable(m_device.name),
                         m_chain.error().c_str());
        return false;
    }
    return m_pipeline.start();
}

bool KdAudioCapture::isStalled() const
{
    return kdMonotonicNs() - std::max(m_pipeline.startedNs(), m_chain.lastArrivalNs()) > kStallNs;
}

#pragma once

#include <KdVBLModel/KdAudioChain.h>
#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdCapturePipeline.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <functional>

/**
 * One audio input that runs: from the opening of the device to its end, whether a take is on or
 * not. Made, used and destroyed on one thread; each of these may block while the sound server
 * does.
 */
class KDVBLMODEL_EXPORT KdAudioCapture
{
public:
    /** Called on threads of the pipeline; none may call the capture. */
    struct Callbacks
    {
        KdAudioChain::Samples samples;
        std::function<void(double decibel)> level;
        /** The input has failed; nothing more comes. The reason is in the log already. */
        std::function<void()> failed;
    };

    /** @param source floating, of the device; null makes a capture that does not start. The
     * destructor closes the device: no callback runs or starts afterwards. */
    KdAudioCapture(const KdCaptureDevice& device, GstElement* source, const Callbacks& callbacks);

    /** Opens the device. @return false when it cannot be; the log says why. */
    bool start();

    const KdCaptureDevice& device() const { return m_device; }
    KdAudioChain& chain() { return m_chain; }

    /** @return whether the device is silent in a way that a working one never is: it gives nothing,
     * not even zeros, for longer than a busy machine explains. */
    bool isStalled() const;

    /** Any thread. */
    bool hasFailed() const { return m_pipeline.hasFailed(); }

private:
    KdAudioCapture(const KdAudioCapture&) = delete;
    KdAudioCapture& operator=(const KdAudioCapture&) = delete;

    const KdCaptureDevice m_device;
    KdAudioChain m_chain;
    KdCapturePipeline m_pipeline;
};

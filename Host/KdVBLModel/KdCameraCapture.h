#pragma once

#include <KdVBLModel/KdCameraChain.h>
#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdCapturePipeline.h>
#include <KdVBLModel/KdVBLModelExport.h>

/**
 * One camera that runs in one mode, whether a take is on or not. It never moves to another camera.
 *
 * start() and the destructor may block for as long as the video server does, half a minute for a
 * camera that another program holds: they belong to a thread on which nobody waits. All else may be
 * called on any thread.
 */
class KDVBLMODEL_EXPORT KdCameraCapture
{
public:
    /** @param source floating, of the device; null makes a capture that does not start
     * @param receiver called on a thread of the pipeline; it must not call the capture
     * @param failed called once on a thread of the pipeline when it has failed; the reason is in
     * the log already. The destructor closes the device: no callback runs or starts afterwards. */
    KdCameraCapture(const KdCaptureDevice& device, const KdCameraMode& mode, GstElement* source,
                    KdCameraChain::Receiver receiver, std::function<void()> failed);

    /** Opens the device. One that cannot be opened has failed; the log says why. */
    void start();
    /** Whether start() was called and has returned. */
    bool hasStarted() const { return m_hasStarted; }

    /** No callback runs or starts afterwards. */
    void silence();

    const KdCaptureDevice& device() const { return m_device; }
    const KdCameraMode& mode() const { return m_mode; }

    /** Whether a picture came. */
    bool hasPicture() const { return m_chain.lastArrivalNs() > 0; }

    /** @return whether nothing comes for longer than a busy machine explains. A source whose camera
     * is gone, or held by another program, says nothing in some systems. */
    bool isStalled() const;

    bool hasFailed() const { return m_pipeline.hasFailed(); }

private:
    KdCameraCapture(const KdCameraCapture&) = delete;
    KdCameraCapture& operator=(const KdCameraCapture&) = delete;

    const KdCaptureDevice m_device;
    const KdCameraMode m_mode;
    KdCameraChain m_chain;
    KdCapturePipeline m_pipeline;
    const qint64 m_createdNs;
    std::atomic<bool> m_hasStarted{false};
};

#pragma once

#include <KdVBLModel/KdCameraCapture.h>
#include <KdVBLModel/KdSerialThread.h>

#include <memory>

/**
 * The camera of an engine: open or not, and one at a time. Used and destroyed on one thread, the
 * engine's worker, which never waits for long: devices are opened and closed on a thread of their
 * own, and one that neither opens nor closes is left behind with it.
 */
class KdCameraInput
{
public:
    struct Callbacks
    {
        /** What comes from this camera, from now on; see KdCameraChain::Receiver. On the camera's
         * thread, as is the next one. */
        std::function<void(const GstCaps*)> format;
        std::function<void(GstBuffer*, qint64 captureNs, const KdCaptureDevice& from)> picture;
        /** On a thread of the camera, which is still open; see isNumber(). */
        std::function<void(int number)> failed;
    };

    explicit KdCameraInput(Callbacks callbacks);
    ~KdCameraInput();

    /** Begins to open the device in that mode unless it runs so already. A device that cannot be
     * opened fails. */
    void open(const KdCaptureDevice& device, const KdCameraMode& mode);
    /** No callback runs or starts afterwards. Harmless when none is open. */
    void close();

    bool isOpen() const { return m_capture != nullptr; }
    bool isOpen(const KdCaptureDevice& device) const
    {
        return m_capture && m_capture->device().isSameAs(device);
    }
    bool isOpen(const KdCaptureDevice& device, const KdCameraMode& mode) const
    {
        return isOpen(device) && m_capture->mode() == mode && !m_capture->hasFailed();
    }

    /** A null device when none is open. */
    KdCaptureDevice device() const { return m_capture ? m_capture->device() : KdCaptureDevice(); }
    bool hasPicture() const { return m_capture && m_capture->hasPicture(); }
    bool hasFailed() const { return m_capture && m_capture->hasFailed(); }

    /** Tells a failure of this camera from a late one of a former. */
    bool isNumber(int number) const { return m_capture && number == m_number; }

    /** @return whether it gives nothing any more; the log says so. */
    bool isStalled() const;

private:
    KdCameraInput(const KdCameraInput&) = delete;
    KdCameraInput& operator=(const KdCameraInput&) = delete;

    using Capture = std::shared_ptr<KdCameraCapture>;

    Capture create(const KdCaptureDevice& device, const KdCameraMode& mode);

    const Callbacks m_callbacks;
    Capture m_capture; ///< shared with what m_opener does
    std::unique_ptr<KdSerialThread> m_opener;
    int m_number = 0;
};

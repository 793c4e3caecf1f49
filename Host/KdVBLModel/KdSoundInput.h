#pragma once

#include <KdVBLModel/KdAudioCapture.h>

#include <memory>

/**
 * The audio input of an engine: open or not, and one at a time. Used and destroyed on one thread,
 * the engine's worker.
 */
class KdSoundInput
{
public:
    struct Callbacks
    {
        /** On the input's thread. */
        std::function<void(GstBuffer*, const KdCaptureDevice& from)> samples;
        /** On the input's thread. */
        std::function<void(double decibel)> level;
        /** On a thread of the input, which is still open; see isNumber(). */
        std::function<void(int number)> failed;
    };

    explicit KdSoundInput(Callbacks callbacks);

    /** Opens the device unless it runs already, and sets volume and interval.
     * @return false when it cannot be opened; the log says why. */
    bool open(const KdCaptureDevice& device, double volume, int intervalMs);
    /** @return whether there was one to close. */
    bool close();

    bool isOpen() const { return m_capture != nullptr; }
    bool isOpen(const KdCaptureDevice& device) const
    {
        return m_capture && m_capture->device().isSameAs(device);
    }
    /** A null device when none is open. */
    KdCaptureDevice device() const { return m_capture ? m_capture->device() : KdCaptureDevice(); }
    bool hasFailed() const { return m_capture && m_capture->hasFailed(); }

    /** Tells a failure of this input from a late one of a former. */
    bool isNumber(int number) const { return m_capture && number == m_number; }

    /** @return whether it gives nothing any more; the log says so. */
    bool isStalled() const;

private:
    KdSoundInput(const KdSoundInput&) = delete;
    KdSoundInput& operator=(const KdSoundInput&) = delete;

    std::unique_ptr<KdAudioCapture> create(const KdCaptureDevice& device);

    const Callbacks m_callbacks;
    std::unique_ptr<KdAudioCapture> m_capture;
    int m_number = 0;
};

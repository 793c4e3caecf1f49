#pragma once

#include <KdVBLModel/KdGstNames.h>

#include <functional>
#include <memory>

/**
 * Tells when the sound server comes and goes. The device providers of GStreamer do not: after a
 * server's death they keep listing what it had, and never see the next one.
 *
 * Lives on the thread that runs the context.
 */
class KdSoundServerWatch
{
public:
    using Changed = std::function<void(bool isRunning)>;

    /** @param changed called first for the state found, then for every change, on the context's
     * thread. Where no PulseAudio interface is built in: once, with false. */
    KdSoundServerWatch(GMainContext* context, Changed changed);
    ~KdSoundServerWatch();

private:
    KdSoundServerWatch(const KdSoundServerWatch&) = delete;
    KdSoundServerWatch& operator=(const KdSoundServerWatch&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};

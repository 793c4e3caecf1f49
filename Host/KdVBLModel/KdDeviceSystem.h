#pragma once

#include <KdVBLModel/KdGst.h>

#include <functional>
#include <memory>

/**
 * Whoever lists the capture devices of one kind on this machine. Lives on the thread that runs the
 * context, and may block it while a server does.
 */
class IKdDeviceSystem
{
public:
    /** Called on the context's thread. */
    struct Callbacks
    {
        /** Look at devices() anew: what was there before may be gone. The first call, which may
         * come out of the constructor's work later, means that the first list is complete. */
        std::function<void()> listChanged;
        /** A device came, changed or went. */
        std::function<void(GstMessage*)> message;
    };

    virtual ~IKdDeviceSystem() = default;

    /** @return what is offered now, other kinds of devices among it; list and devices are the
     * caller's. */
    virtual GList* devices() const = 0;
};

/** Microphones: of the first sound server that answers. */
std::unique_ptr<IKdDeviceSystem> kdSoundDevices(GMainContext* context,
                                                IKdDeviceSystem::Callbacks callbacks);

/** Webcams: those of the video server and those of the system itself. */
std::unique_ptr<IKdDeviceSystem> kdCameraDevices(GMainContext* context,
                                                 IKdDeviceSystem::Callbacks callbacks);

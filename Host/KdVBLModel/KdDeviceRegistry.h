#pragma once

#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdGstNames.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QVector>

#include <chrono>
#include <memory>

/** Told of devices that come and go. Called on the registry's thread; must not block. */
class IKdDeviceListener
{
public:
    virtual void onDeviceAdded(const KdCaptureDevice& device) = 0;
    virtual void onDeviceRemoved(const KdCaptureDevice& device) = 0;
    /** The first list of one kind is complete; what is in it was not announced one by one. */
    virtual void onDevicesListed(KdVBLMODEL::_KdDevType kind) = 0;

protected:
    ~IKdDeviceListener() = default;
};

/**
 * The capture devices of this machine, watched once for the whole process. Everything that is slow,
 * the start of GStreamer included, happens on a thread of its own.
 *
 * Without a sound server there are no devices; they come as added when one is started.
 *
 * All operations may be called on any thread.
 */
class KDVBLMODEL_EXPORT KdDeviceRegistry
{
public:
    static KdDeviceRegistry& instance();
    ~KdDeviceRegistry();
    /** Ends its threads, for good, as the end of the QCoreApplication does; gives up one that a
     * server holds. */
    void quit();

    /**
     * Begins to list the devices of one kind, microphones or webcams. Returns at once; harmless
     * when repeated.
     * @param delay for whoever has something to do first: the start of GStreamer takes processors
     * and the loader of libraries from all the rest. Over when somebody waits for the list.
     */
    void start(KdVBLMODEL::_KdDevType kind,
               std::chrono::milliseconds delay = std::chrono::milliseconds(0));

    /** Starts and waits. @return whether the first list is complete. */
    bool waitUntilListed(KdVBLMODEL::_KdDevType kind, std::chrono::milliseconds patience);

    /** The devices of one kind, each once; the system's default first. */
    QVector<KdCaptureDevice> devices(KdVBLMODEL::_KdDevType kind) const;

    /** @return whether the device is there now; never for a null one. */
    bool has(const KdCaptureDevice& device) const;

    /** @return what the device says that it can give; null when it is not there. The caller's. */
    GstCaps* createCaps(const KdCaptureDevice& device) const;

    /** @return a new source element for the device, floating; null when it is not there (any more)
     * or its system refuses. May block while the system is asked. */
    GstElement* createSource(const KdCaptureDevice& device) const;

    void addListener(IKdDeviceListener* listener);
    /** A barrier: afterwards no call on the listener runs on another thread or starts. */
    void removeListener(IKdDeviceListener* listener);

private:
    KdDeviceRegistry();
    KdDeviceRegistry(const KdDeviceRegistry&) = delete;
    KdDeviceRegistry& operator=(const KdDeviceRegistry&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};

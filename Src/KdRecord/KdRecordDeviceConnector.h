#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdRecordExport.h>

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class KdRecordDeviceConnectorPrivate;

/**
 * Keeps the list of capture devices of one type and knows the current one. It does not talk to an
 * engine itself: its owner registers a hook that lists the devices and one that switches to a
 * device, and hands it the engine's device events.
 *
 * Two records are the same device when type and id are equal, whatever their names and indexes.
 *
 * The usual order: construct, register both hooks, refreshDeviceList() once; then switchDevice() as
 * the user chooses, and processDeviceStatusChangeEvent() for every event of the engine.
 *
 * GUI thread, the hooks and signals too; the engine's events have to be brought there. A hook and a
 * receiver of a signal may do anything, destroy the connector included. What a hook throws goes no
 * further: the log tells, and nothing has changed. A hook that calls the operation that is calling
 * it is refused in the same way. A removal that is told while the refresh hook runs, in an event
 * loop of the hook say, is looked up by another refresh after it.
 */
class KDRECORD_EXPORT KdRecordDeviceConnector : public QObject
{
    Q_OBJECT

public:
    /** Lists the devices of a type, in the order in which they are offered. */
    using RefreshHook = std::function<QList<KdVBLMODEL::_KdCaptureDevInf>(KdVBLMODEL::_KdDevType)>;
    /** Switches the engine to a device and answers whether it did. */
    using SwitchHook = std::function<bool(KdVBLMODEL::_KdCaptureDevInf)>;

    /** @param type the devices to keep. */
    explicit KdRecordDeviceConnector(KdVBLMODEL::_KdDevType type);
    ~KdRecordDeviceConnector() override;

    /** @param hook lists the devices of a type; replaces the former, null takes it away. */
    void registerRefreshDeviceList(RefreshHook hook);
    /** @param hook switches the engine to a device and answers whether it did; replaces the former,
     * null takes it away. */
    void registerSwitchDevice(SwitchHook hook);

    /**
     * @return the devices as listed last; empty before the first refreshDeviceList(). The
     * connector's own: it changes with every refresh.
     */
    const QList<KdVBLMODEL::_KdCaptureDevInf>& allDevices() const;
    /**
     * @return the empty record until a switch succeeds. A device that is lost stays current until
     * then. The connector's own.
     */
    const KdVBLMODEL::_KdCaptureDevInf& currentDevice() const;
    /** @return the type that the connector was made for. */
    KdVBLMODEL::_KdDevType deviceType() const;
    /**
     * @param type of a device.
     * @return the type's English name, not translated; "Unknow" for one that has none.
     */
    static QString deviceTypeName(KdVBLMODEL::_KdDevType type);

    /**
     * Lists the devices anew and takes over what has changed of the current one, which is found by
     * its id alone. Without a hook nothing happens but a log record.
     */
    void refreshDeviceList();

    /**
     * Switches to a device by its place, as the operation below.
     * @param index position in allDevices().
     * @return false, with nothing changed, for any other and where the operation below answers so.
     */
    bool switchDevice(int index);
    /**
     * Switches to a device and makes it current.
     * @param device one of allDevices(); a copy of it is handed to the hook.
     * @return false, with nothing changed, when it is not listed or the hook is missing or refuses.
     */
    bool switchDevice(KdVBLMODEL::_KdCaptureDevInf& device);

    /**
     * Reacts to an event of the engine if it is about devices of this type (those of audio inputs
     * about speakers too): lists them anew, and tells whether the current one is lost or occupied.
     * @param status as the engine told it.
     * @param deviceIndex ignored.
     */
    void processDeviceStatusChangeEvent(KdVBLMODEL::_KdCaptureDeviceStatus status, int deviceIndex);

Q_SIGNALS:
    /** The devices were listed anew, whether or not anything changed. */
    void sigDeviceListRefreshed();
    /** Another program holds the webcam. */
    void sigDeviceOccupied();
    /** @param device the current device, which is listed no more. */
    void sigCurrentDeviceLost(KdVBLMODEL::KdCaptureDevInfo device);
    /**
     * For a host that tells of its switches; the connector never emits it.
     * @param currentDevice the one that is current now.
     */
    void sigCurrentDeviceSwitched(KdVBLMODEL::KdCaptureDevInfo currentDevice);

private:
    const std::unique_ptr<KdRecordDeviceConnectorPrivate> d;
};

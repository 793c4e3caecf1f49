#pragma once

#include <KdRecord/KdRecordDeviceConnector.h>

/** The state of a KdRecordDeviceConnector and what it does. */
class KdRecordDeviceConnectorPrivate
{
public:
    using Device = KdVBLMODEL::_KdCaptureDevInf;

    KdRecordDeviceConnectorPrivate(KdRecordDeviceConnector* connector, KdVBLMODEL::_KdDevType type);

    void refreshDeviceList();
    void handleDeviceRemoval();
    bool switchDevice(const Device& device);

    KdRecordDeviceConnector* const q;
    const KdVBLMODEL::_KdDevType deviceType;
    Device currentDevice;
    QList<Device> devices;
    KdRecordDeviceConnector::RefreshHook refreshHook;
    KdRecordDeviceConnector::SwitchHook switchHook;

private:
    struct ListResult
    {
        bool isAlive = false;         ///< the connector still exists
        bool isRemovalMissed = false; ///< one was told while the hook ran
    };

    void refresh(bool isRemoval);
    ListResult listDevices();
    bool checkRefreshDeviceListFunction() const;
    bool checkSwitchDeviceFunction() const;
    void updateCurrentDevice();

    bool m_isRefreshing = false;    ///< the refresh hook runs
    bool m_isRemovalMissed = false; ///< while it did so
    bool m_isSwitching = false;     ///< the switch hook runs
};

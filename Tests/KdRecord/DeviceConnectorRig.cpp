#include "DeviceConnectorRig.h"

using namespace KdVBLMODEL;

namespace DeviceConnectorTest {

_KdCaptureDevInf device(const char* name, int index, _KdDevType type)
{
    return {type, index, QLatin1String(name), QLatin1String(name) + QStringLiteral("-id")};
}

QStringList namesOf(const Devices& devices)
{
    QStringList names;
    for (const _KdCaptureDevInf& listed : devices) {
        names.append(listed.name);
    }
    return names;
}

QString text(const _KdCaptureDevInf& device)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(device.devType)
        .arg(device.index)
        .arg(device.name, device.id);
}

Rig::Rig(_KdDevType type) : connector(new KdRecordDeviceConnector(type))
{
    connector->registerRefreshDeviceList([this](_KdDevType asked) {
        askedTypes.append(asked);
        return plugged;
    });
    connector->registerSwitchDevice([this](const _KdCaptureDevInf& chosen) {
        switchedTo.append(chosen);
        return acceptsSwitch;
    });
}

Rig::~Rig()
{
    delete connector;
}

void Rig::event(int status, int index)
{
    connector->processDeviceStatusChangeEvent(static_cast<_KdCaptureDeviceStatus>(status), index);
}

} // namespace DeviceConnectorTest

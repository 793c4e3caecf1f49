#pragma once

#include <KdRecord/KdRecordDeviceConnector.h>

#include <QPointer>
#include <QSignalSpy>

/** What the tests of the connector have in common. */
namespace DeviceConnectorTest {

using Devices = QList<KdVBLMODEL::_KdCaptureDevInf>;

/** @return a device whose id is its name with "-id" after it. */
KdVBLMODEL::_KdCaptureDevInf device(const char* name, int index = 0,
                                    KdVBLMODEL::_KdDevType type = KdVBLMODEL::kdtWebcam);
QStringList namesOf(const Devices& devices);
/** @return "type index name id". */
QString text(const KdVBLMODEL::_KdCaptureDevInf& device);

/** A connector with hooks that answer from here, and spies on its signals. */
class Rig
{
public:
    explicit Rig(KdVBLMODEL::_KdDevType type = KdVBLMODEL::kdtWebcam);
    ~Rig();

    /** Tells the connector of something that happened to devices; the status may be any number. */
    void event(int status, int index = 0);

    QPointer<KdRecordDeviceConnector> connector; ///< null once a test has destroyed it
    Devices plugged;
    bool acceptsSwitch = true;
    QList<int> askedTypes;
    Devices switchedTo;
    QSignalSpy refreshed{connector, &KdRecordDeviceConnector::sigDeviceListRefreshed};
    QSignalSpy occupied{connector, &KdRecordDeviceConnector::sigDeviceOccupied};
    QSignalSpy lost{connector, &KdRecordDeviceConnector::sigCurrentDeviceLost};
    QSignalSpy switched{connector, &KdRecordDeviceConnector::sigCurrentDeviceSwitched};

private:
    Q_DISABLE_COPY(Rig)
};

} // namespace DeviceConnectorTest

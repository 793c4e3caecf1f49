#include "KdRecorderCallbacks.h"

#include <QMetaObject>
#include <QObject>

void KdRecorderCallbacks::postTime(QObject* adapter, long long msec)
{
    QMetaObject::invokeMethod(adapter, "slotTimeCallback", Qt::QueuedConnection,
                              Q_ARG(qlonglong, msec));
}

void KdRecorderCallbacks::postVolume(QObject* adapter, int volume)
{
    QMetaObject::invokeMethod(adapter, "slotVolumeCallback", Qt::QueuedConnection,
                              Q_ARG(int, volume));
}

void KdRecorderCallbacks::postDevice(QObject* adapter, const KdBaseLog::Source& source,
                                     int devStatus, int deviceIdx)
{
    KdBaseLog::write(KdBaseLog::Info, source, "devStatus: %d, deviceIdx: %d", devStatus, deviceIdx);
    QMetaObject::invokeMethod(adapter, "slotCaptureDeviceCallback", Qt::QueuedConnection,
                              Q_ARG(int, devStatus), Q_ARG(int, deviceIdx));
}

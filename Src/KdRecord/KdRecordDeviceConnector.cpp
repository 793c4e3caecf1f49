#include "KdRecordDeviceConnector.h"

#include "KdRecordDeviceConnectorPrivate.h"

#include <QThread>

#include <utility>

using namespace KdVBLMODEL;

KdRecordDeviceConnector::KdRecordDeviceConnector(_KdDevType type)
    : d(std::make_unique<KdRecordDeviceConnectorPrivate>(this, type))
{
    // Under the name that the signals bear, for those who look a type up by it.
    qRegisterMetaType<KdCaptureDevInfo>("KdVBLMODEL::KdCaptureDevInfo");
}

KdRecordDeviceConnector::~KdRecordDeviceConnector() = default;

void KdRecordDeviceConnector::registerRefreshDeviceList(RefreshHook hook)
{
    d->refreshHook = std::move(hook);
}

void KdRecordDeviceConnector::registerSwitchDevice(SwitchHook hook)
{
    d->switchHook = std::move(hook);
}

const QList<_KdCaptureDevInf>& KdRecordDeviceConnector::allDevices() const
{
    return d->devices;
}

const _KdCaptureDevInf& KdRecordDeviceConnector::currentDevice() const
{
    return d->currentDevice;
}

_KdDevType KdRecordDeviceConnector::deviceType() const
{
    return d->deviceType;
}

QString KdRecordDeviceConnector::deviceTypeName(_KdDevType type)
{
    switch (type) {
    case kdtDesktop:
        return QStringLiteral("Desktop");
    case kdtWebcam:
        return QStringLiteral("Webcam");
    case kdtGame:
        return QStringLiteral("Game");
    case kdtCursor:
        return QStringLiteral("Cursor");
    case kdtKeyboard:
        return QStringLiteral("Keyboard");
    case kdtSpeaker:
        return QStringLiteral("Speaker");
    case kdtMicrophone:
        return QStringLiteral("Microphone");
    case kdtNone:
        break;
    }
    return QStringLiteral("Unknow");
}

void KdRecordDeviceConnector::refreshDeviceList()
{
    Q_ASSERT(QThread::currentThread() == thread());
    d->refreshDeviceList();
}

bool KdRecordDeviceConnector::switchDevice(int index)
{
    if (index < 0 || index >= d->devices.size()) {
        return false;
    }
    _KdCaptureDevInf device = d->devices.at(index);
    return switchDevice(device);
}

bool KdRecordDeviceConnector::switchDevice(_KdCaptureDevInf& device)
{
    Q_ASSERT(QThread::currentThread() == thread());
    return d->switchDevice(device);
}

void KdRecordDeviceConnector::processDeviceStatusChangeEvent(_KdCaptureDeviceStatus status,
                                                             int deviceIndex)
{
    Q_UNUSED(deviceIndex)
    Q_ASSERT(QThread::currentThread() == thread());
    const bool isWebcam = d->deviceType == kdtWebcam;
    const bool isAudio = d->deviceType == kdtSpeaker || d->deviceType == kdtMicrophone;
    if ((isWebcam && status == fcdWebcamListChanged) || (isAudio && status == fcdAudioInputAdded)) {
        d->refreshDeviceList();
    } else if ((isWebcam && status == fcdWebcamRemoved) ||
               (isAudio && status == fcdAudioInputRemoved)) {
        d->handleDeviceRemoval();
    } else if (isWebcam && status == fcdWebcamOccupied) {
        Q_EMIT sigDeviceOccupied();
    }
}

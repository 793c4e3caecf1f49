#include <Studio/StudioDeviceSource.h>

using namespace KdVBLMODEL;

StudioDeviceSource::StudioDeviceSource(QObject* parent)
    : QObject(parent), m_pRecorder(createWebcamRecorder())
{
    if (m_pRecorder) {
        m_pRecorder->addEventObserver(this);
        switchCallbacks(true);
    }
}

StudioDeviceSource::~StudioDeviceSource()
{
    if (m_pRecorder) {
        switchCallbacks(false);
        m_pRecorder->removeEventObserver(this); // nothing comes any more when this returns
        m_pRecorder->release();
    }
}

void StudioDeviceSource::switchCallbacks(bool on)
{
    m_pRecorder->setCallbackSwitch3(on);
    m_pRecorder->setCallbackSwitch2(on);
    m_pRecorder->setCallbackSwitch1(on);
}

QList<_KdCaptureDevInf> StudioDeviceSource::devices(_KdDevType type)
{
    QList<_KdCaptureDevInf> list;
    const bool isListed = m_pRecorder && m_pRecorder->getDevices(type, &list);
    return isListed ? list : QList<_KdCaptureDevInf>();
}

bool StudioDeviceSource::select(const _KdCaptureDevInf& device)
{
    return m_pRecorder &&
           m_pRecorder->setDevice(static_cast<_KdDevType>(device.devType), device.index);
}

void StudioDeviceSource::onCaptureDeviceCallback(int devStatus, int deviceIdx)
{
    QMetaObject::invokeMethod(
        this, [this, devStatus, deviceIdx] { Q_EMIT deviceStatusChanged(devStatus, deviceIdx); },
        Qt::QueuedConnection);
}

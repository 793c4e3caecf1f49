#include <KdVBLModel/KdAudioRecorder.h>

#include <KdVBLModel/KdAudioEngine.h>
#include <KdVBLModel/KdCaptureDeviceInfo.h>

using namespace KdVBLMODEL;

IKdAudioRecorder* KdVBLMODEL::createAudioRecorder(QObject* owner)
{
    Q_UNUSED(owner)
    return new KdAudioRecorder;
}

KdAudioRecorder::KdAudioRecorder() : m_engine(KdAudioEngine::create()) {}

KdAudioRecorder::~KdAudioRecorder()
{
    m_engine->shutDown();
}

void KdAudioRecorder::release()
{
    delete this;
}

bool KdAudioRecorder::start()
{
    return m_engine->start();
}

void KdAudioRecorder::pause()
{
    m_engine->pause();
}

void KdAudioRecorder::resume()
{
    m_engine->resume();
}

bool KdAudioRecorder::stop()
{
    return m_engine->stop();
}

void KdAudioRecorder::setAudioFormat(const KdAudioFormat* format)
{
    if (format) {
        m_engine->setFormat(*format);
    }
}

void KdAudioRecorder::setCallbackSwitch1(bool on)
{
    m_engine->setSwitch(KdCallbackPump::DeviceSwitch, on);
}

void KdAudioRecorder::setCallbackSwitch2(bool on)
{
    m_engine->setSwitch(KdCallbackPump::TimeSwitch, on);
}

void KdAudioRecorder::setCallbackSwitch3(bool on)
{
    m_engine->setSwitch(KdCallbackPump::LevelSwitch, on);
}

void KdAudioRecorder::setInterval(int msec)
{
    m_engine->setInterval(msec);
}

void KdAudioRecorder::getDevices(QList<_KdCaptureDevInf>* devices)
{
    if (devices) {
        *devices = kdInfosOf(m_engine->listDevices());
    }
}

void KdAudioRecorder::setDevice(int index)
{
    m_engine->setDevice(index);
}

void KdAudioRecorder::setOutputFile(const QString& path)
{
    m_engine->setOutputFile(path);
}

QString KdAudioRecorder::getOutputFile()
{
    return m_engine->outputFile();
}

_KdCaptureStatus KdAudioRecorder::curStatus()
{
    return m_engine->status();
}

void KdAudioRecorder::addEventObserver(IKdRecorderEventObserver* observer)
{
    m_engine->callbacks().addObserver(observer);
}

void KdAudioRecorder::removeEventObserver(IKdRecorderEventObserver* observer)
{
    m_engine->callbacks().removeObserver(observer);
}

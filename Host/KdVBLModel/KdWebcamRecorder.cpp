#include <KdVBLModel/KdWebcamRecorder.h>

#include <KdVBLModel/KdCaptureDeviceInfo.h>
#include <KdVBLModel/KdWebcamEngine.h>

using namespace KdVBLMODEL;

namespace {

bool isCaptured(_KdDevType type)
{
    return type == kdtWebcam || type == kdtMicrophone;
}

} // namespace

IKdWebcamRecorder* KdVBLMODEL::createWebcamRecorder()
{
    return new KdWebcamRecorder;
}

KdWebcamRecorder::KdWebcamRecorder() : m_engine(KdWebcamEngine::create()) {}

KdWebcamRecorder::~KdWebcamRecorder()
{
    m_engine->shutDown();
}

void KdWebcamRecorder::release()
{
    delete this;
}

bool KdWebcamRecorder::start()
{
    return m_engine->start();
}

bool KdWebcamRecorder::pause()
{
    return m_engine->pause();
}

bool KdWebcamRecorder::resume()
{
    return m_engine->resume();
}

bool KdWebcamRecorder::stop()
{
    return m_engine->stop();
}

bool KdWebcamRecorder::setResolution(QSize resolution)
{
    return m_engine->setResolution(resolution);
}

bool KdWebcamRecorder::setVideoFormat(const KdVideoFormat* format)
{
    const bool isKnown = format && format->fourcc == kFourCcH264;
    return isKnown && m_engine->setFrameRate(format->frameRate);
}

bool KdWebcamRecorder::setAudioFormat(const KdAudioFormat* format)
{
    if (format) {
        m_engine->setSoundFormat(*format);
    }
    return format != nullptr;
}

void KdWebcamRecorder::getResolutions(QList<QSize>* resolutions)
{
    if (resolutions) {
        *resolutions = m_engine->resolutions();
    }
}

void KdWebcamRecorder::getFrameRates(QList<double>* frameRates)
{
    if (frameRates) {
        *frameRates = m_engine->frameRates();
    }
}

void KdWebcamRecorder::setCallbackSwitch1(bool on)
{
    m_engine->setSwitch(KdCallbackPump::DeviceSwitch, on);
}

void KdWebcamRecorder::setCallbackSwitch2(bool on)
{
    m_engine->setSwitch(KdCallbackPump::TimeSwitch, on);
}

void KdWebcamRecorder::setCallbackSwitch3(bool on)
{
    m_engine->setSwitch(KdCallbackPump::LevelSwitch, on);
}

void KdWebcamRecorder::setRecordAudio(bool on)
{
    m_engine->setRecordAudio(on);
}

void KdWebcamRecorder::setInterval(int msec)
{
    m_engine->setInterval(msec);
}

bool KdWebcamRecorder::getDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices)
{
    if (!devices) {
        return false;
    }
    devices->clear();
    if (isCaptured(type)) {
        *devices = kdInfosOf(m_engine->listDevices(type));
    }
    return isCaptured(type);
}

bool KdWebcamRecorder::setDevice(_KdDevType type, int index)
{
    return isCaptured(type) && m_engine->setDevice(type, index);
}

void KdWebcamRecorder::setOutputFile(const QString& path)
{
    m_engine->setOutputFile(path);
}

QString KdWebcamRecorder::getOutputFile()
{
    return m_engine->outputFile();
}

bool KdWebcamRecorder::startPreview()
{
    return m_engine->startPreview();
}

bool KdWebcamRecorder::stopPreview()
{
    return m_engine->stopPreview();
}

_KdCaptureStatus KdWebcamRecorder::curStatus()
{
    return m_engine->status();
}

void KdWebcamRecorder::addEventObserver(IKdRecorderEventObserver* observer)
{
    m_engine->callbacks().addObserver(observer);
}

void KdWebcamRecorder::removeEventObserver(IKdRecorderEventObserver* observer)
{
    m_engine->callbacks().removeObserver(observer);
}

bool KdWebcamRecorder::setRecordDisplayShape(_KdCaptureRecordShape shape)
{
    const bool isKnown = shape == fcrsCircle || shape == fcrsSquare;
    if (isKnown) {
        m_engine->setShape(shape);
    }
    return isKnown;
}

_KdCaptureRecordShape KdWebcamRecorder::getRecordDisplayShape()
{
    return m_engine->shape();
}

void KdWebcamRecorder::setBackgroundMode(_KdCaptureRecordBackgroundMode mode)
{
    const bool isKnown = mode == fcbmRemove || mode == fcbmBlur;
    m_engine->setBackground(isKnown ? mode : fcbmNone);
}

_KdCaptureRecordBackgroundMode KdWebcamRecorder::getBackgroundMode()
{
    return m_engine->background();
}

bool KdWebcamRecorder::setOnlyWebcam(bool on)
{
    Q_UNUSED(on) // there is nothing else that this recorder could take
    return true;
}

void KdWebcamRecorder::setRecordFlip(bool on)
{
    m_engine->setFlip(on);
}

bool KdWebcamRecorder::getRecordFlip()
{
    return m_engine->isFlipped();
}

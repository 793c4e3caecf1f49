#include "KdAudioRecordHelper.h"

#include <KdCore/KdBaseLog.h>
#include <KdRecord/KdRecorderCallbacks.h>

#include <QThread>

using namespace KdVBLMODEL;

namespace {

constexpr char kSourceFile[] = "Src/KdRecord/KdAudioRecordHelper";

} // namespace

KdAudioRecorderHelper::KdAudioRecorderHelper(QObject* parent) : QObject(parent)
{
    // Under the name that the signal bears, for those who look a type up by it.
    qRegisterMetaType<KdCaptureDeviceStatus>("KdVBLMODEL::KdCaptureDeviceStatus");
    m_pRecorder = createAudioRecorder(this);
    attach();
}

KdAudioRecorderHelper::~KdAudioRecorderHelper()
{
    if (!recorder()) {
        return;
    }
    // A barrier: no callback is running or will start when it returns, so that what follows is
    // safe.
    m_pRecorder->removeEventObserver(this);
    m_pRecorder->release();
    m_pRecorder = nullptr;
}

void KdAudioRecorderHelper::getValidAudioDevices(QList<_KdCaptureDevInf>& out)
{
    m_devices.clear();
    if (recorder()) {
        recorder()->getDevices(&m_devices);
    }
    if (&out != &m_devices) {
        out = m_devices;
    }
}

void KdAudioRecorderHelper::setCurrentDevice(int index)
{
    if (recorder()) {
        recorder()->setDevice(index);
    }
    m_currentFormat = m_defaultFormat;
    sendFormat(m_currentFormat);
    if (index < 0 || index >= m_devices.size()) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {kSourceFile, "KdAudioRecorderHelper::setCurrentDevice"},
                         "No audio input has the index %d, there are %d", index, m_devices.size());
    }
    m_currentDevice = m_devices.value(index);
}

void KdAudioRecorderHelper::getCurrentDeviceInfo(_KdCaptureDevInf& out) const
{
    out = m_currentDevice;
}

void KdAudioRecorderHelper::setAudioRecordParams(const _KdAudioRecordParams& params)
{
    if (!recorder()) {
        return;
    }
    recorder()->setOutputFile(params.outputName);
    recorder()->setDevice(params.index);
    recorder()->setInterval(params.interval);
    recorder()->setAudioFormat(&params.format);
    const KdAudioFormat& format = params.format;
    KdBaseLog::write(
        KdBaseLog::Info, {kSourceFile, "KdAudioRecorderHelper::setAudioRecordParams"},
        "outputName: %s, index: %d, interval: %d, volum: %lf, bitrate: %d, bitPerSample: %d, "
        "channels: %d, fourcc: %d, samplerate: %d",
        params.outputName.toLocal8Bit().constData(), params.index, params.interval, format.volume,
        format.bitrate, format.bitPerSample, format.channels, format.fourcc, format.samplerate);
}

void KdAudioRecorderHelper::setAudioVolume(double volume)
{
    KdDeviceAudioFormat format = m_currentFormat;
    format.volume = volume;
    sendFormat(format);
}

void KdAudioRecorderHelper::setBitRate(int bitrate)
{
    KdDeviceAudioFormat format = m_currentFormat;
    format.bitrate = bitrate;
    sendFormat(format);
}

void KdAudioRecorderHelper::setBitsPerSample(int bits)
{
    KdDeviceAudioFormat format = m_currentFormat;
    format.bitPerSample = bits;
    sendFormat(format);
}

void KdAudioRecorderHelper::setChannels(int channels)
{
    KdDeviceAudioFormat format = m_currentFormat;
    format.channels = channels;
    sendFormat(format);
}

void KdAudioRecorderHelper::setFourCC(int fourcc)
{
    KdDeviceAudioFormat format = m_currentFormat;
    format.fourcc = fourcc;
    sendFormat(format);
}

void KdAudioRecorderHelper::SetSampleRate(int samplerate)
{
    KdDeviceAudioFormat format = m_currentFormat;
    format.samplerate = samplerate;
    sendFormat(format);
}

QString KdAudioRecorderHelper::getOutPutFile() const
{
    return recorder() ? recorder()->getOutputFile() : QString();
}

_KdCaptureStatus KdAudioRecorderHelper::curStatus() const
{
    return recorder() ? recorder()->curStatus() : fcsNoStart;
}

bool KdAudioRecorderHelper::start()
{
    const bool isStarted = recorder() && recorder()->start();
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, "KdAudioRecorderHelper::start"}, "start %d",
                     isStarted ? 1 : 0);
    return isStarted;
}

void KdAudioRecorderHelper::pause()
{
    if (recorder()) {
        recorder()->pause();
    }
}

void KdAudioRecorderHelper::resume()
{
    if (recorder()) {
        recorder()->resume();
    }
}

bool KdAudioRecorderHelper::stop()
{
    if (curStatus() == fcsNoStart) {
        KdBaseLog::write(KdBaseLog::Info, {kSourceFile, "KdAudioRecorderHelper::stop"},
                         "audio fcsNoStart status, no need stop");
        return true;
    }
    if (!recorder()->stop()) {
        KdBaseLog::write(KdBaseLog::Error, {kSourceFile, "KdAudioRecorderHelper::stop"},
                         "Failed to stop the audio record process");
        return false;
    }
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, "KdAudioRecorderHelper::stop"},
                     "Stop the audio record process");
    return true;
}

void KdAudioRecorderHelper::removeEventObservers()
{
    if (!recorder()) {
        return;
    }
    KdRecorderCallbacks::switchAll(*recorder(), false);
    recorder()->removeEventObserver(this);
}

void KdAudioRecorderHelper::onCaptureDeviceCallback(int devStatus, int deviceIdx)
{
    KdRecorderCallbacks::postDevice(this,
                                    {kSourceFile, "KdAudioRecorderHelper::onCaptureDeviceCallback"},
                                    devStatus, deviceIdx);
}

void KdAudioRecorderHelper::onTimeCallback(long long msec)
{
    KdRecorderCallbacks::postTime(this, msec);
}

void KdAudioRecorderHelper::onVolumeCallback(int volume)
{
    KdRecorderCallbacks::postVolume(this, volume);
}

void KdAudioRecorderHelper::slotTimeCallback(qint64 msec)
{
    Q_EMIT sigRecordedTime(msec);
}

void KdAudioRecorderHelper::slotVolumeCallback(int volume)
{
    Q_EMIT sigRecorderVolume(volume);
}

void KdAudioRecorderHelper::slotCaptureDeviceCallback(int devStatus, int deviceIdx)
{
    Q_EMIT sigDeviceStatus(static_cast<_KdCaptureDeviceStatus>(devStatus), deviceIdx);
}

/** Every operation goes through here: the recorder is touched on the helper's own thread alone. */
IKdAudioRecorder* KdAudioRecorderHelper::recorder() const
{
    Q_ASSERT(QThread::currentThread() == thread());
    return m_pRecorder;
}

void KdAudioRecorderHelper::attach()
{
    if (!recorder()) {
        return;
    }
    recorder()->addEventObserver(this);
    KdRecorderCallbacks::switchAll(*recorder(), true);
}

void KdAudioRecorderHelper::sendFormat(const KdDeviceAudioFormat& format)
{
    if (!recorder()) {
        return;
    }
    const KdAudioFormat record = format.record();
    recorder()->setAudioFormat(&record);
}

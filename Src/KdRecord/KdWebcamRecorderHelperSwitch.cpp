#include "KdWebcamRecorderHelper.h"

#include <KCore/KAIModuleHelper.h>
#include <KdCore/KdBaseLog.h>
#include <KdRecord/KdDefaultResolution.h>
#include <KdRecord/KdWebcamRecorderCodes.h>

#include <QPointer>

using namespace KdVBLMODEL;

// Device, format and effect switches of the adapter.

namespace {

constexpr char kSourceFile[] = "Src/KdRecord/KdWebcamRecorderHelper";
constexpr char kSetWebcam[] = "KdWebcamRecorderHelper::slotSetCurrentWebCamDevice";
constexpr char kSetAudioInput[] = "KdWebcamRecorderHelper::slotSetCurrentAudioDevice";
constexpr char kSetResolution[] = "KdWebcamRecorderHelper::slotSetCurrentResolution";
constexpr char kSetFrameRate[] = "KdWebcamRecorderHelper::slotSetCurrentFrameRate";
constexpr char kSetEffect[] = "KdWebcamRecorderHelper::setAIEffectType";

/** @return the empty record, with a warning, when there is none at index. */
_KdCaptureDevInf deviceAt(const QList<_KdCaptureDevInf>& list, int index,
                          const KdBaseLog::Source& source)
{
    if (index < 0 || index >= list.size()) {
        KdBaseLog::write(KdBaseLog::Warning, source, "No device has the index %d, there are %d",
                         index, list.size());
    }
    return list.value(index);
}

} // namespace

void KdWebcamRecorderHelper::slotSetCurrentWebCamDevice(int index)
{
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetWebcam},
                     "【Switch camera device BEGIN】device index = %d", index);
    if (recorder() && !recorder()->setDevice(kdtWebcam, index)) {
        KdBaseLog::write(KdBaseLog::Warning, {kSourceFile, kSetWebcam},
                         "Failed to switch camera device, device index = %d", index);
        return;
    }
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetWebcam},
                     "【Switch camera device END】device index = %d", index);
    m_currentWebcam = deviceAt(m_webcams, index, {kSourceFile, kSetWebcam});
    readValidResolutions();

    const QPointer<KdWebcamRecorderHelper> alive(this);
    slotSetCurrentResolution(GetDefaultResoluction(m_resolutions));
    if (alive) { // a receiver of a response may have closed the dialog
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::WebcamSwitched);
    }
    if (alive) {
        startPreview();
    }
}

void KdWebcamRecorderHelper::slotSetCurrentAudioDevice(int index)
{
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetAudioInput},
                     "【Switch audio device BEGIN】device index = %d", index);
    if (recorder() && !recorder()->setDevice(kdtMicrophone, index)) {
        KdBaseLog::write(KdBaseLog::Warning, {kSourceFile, kSetAudioInput},
                         "Failed to switch audio device, device index = %d", index);
        return;
    }
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetAudioInput},
                     "【Switch audio device END】device index = %d", index);
    m_currentAudioInput = deviceAt(m_audioInputs, index, {kSourceFile, kSetAudioInput});
    m_currentAudioFormat = m_defaultAudioFormat;
    sendAudioFormat();
    Q_EMIT sigRecorderResponeType(KdWebcamResponse::AudioInputSwitched);
}

void KdWebcamRecorderHelper::sendAudioFormat()
{
    const KdAudioFormat format = m_currentAudioFormat.record();
    if (recorder() && !recorder()->setAudioFormat(&format)) {
        KdBaseLog::write(KdBaseLog::Warning, {kSourceFile, kSetAudioInput},
                         "Failed to setparam when switchDevice to AudioDevice %s",
                         m_currentAudioInput.name.toUtf8().constData());
    }
}

void KdWebcamRecorderHelper::slotSetCurrentResolution(QSize resolution)
{
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetResolution}, "set current resolution");
    const QByteArray webcam = m_currentWebcam.name.toUtf8();
    if (recorder() && !recorder()->setResolution(resolution)) {
        KdBaseLog::write(KdBaseLog::Warning, {kSourceFile, kSetResolution},
                         "Failed to set resolution(%d x %d) to webcam %s", resolution.width(),
                         resolution.height(), webcam.constData());
    } else {
        KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetResolution},
                         "Set resolution(%d x %d) to webcam %s", resolution.width(),
                         resolution.height(), webcam.constData());
    }
    m_currentResolution = resolution;
    readValidFrameRates();
    // An engine that reports no rate breaks its word; its own choice then stays.
    if (!m_frameRates.isEmpty()) {
        slotSetCurrentFrameRate(m_frameRates.first());
    }
    // Once more after the rate's own: engines settle on the pair of both only now.
    startPreview();
    Q_EMIT sigRecorderResponeType(KdWebcamResponse::ResolutionSwitched);
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetResolution}, "vbl set framerate");
}

void KdWebcamRecorderHelper::slotSetCurrentFrameRate(double frameRates)
{
    KdVideoFormat format;
    format.fourcc = m_videoFourCc;
    format.frameRate = frameRates;
    if (recorder()) {
        const bool isSet = recorder()->setVideoFormat(&format);
        KdBaseLog::write(isSet ? KdBaseLog::Info : KdBaseLog::Warning, {kSourceFile, kSetFrameRate},
                         isSet ? "Set frameRates(%lf fps) to webcam %s"
                               : "Failed to set frameRates(%lf fps) to webcam %s",
                         frameRates, m_currentWebcam.name.toUtf8().constData());
    }
    m_currentFrameRate = frameRates;
    startPreview();
}

void KdWebcamRecorderHelper::setAIEffectType(_KdCaptureRecordBackgroundMode mode)
{
    // The one module stands for every mode; taking an effect away has to work without it.
    constexpr int module = KAIModuleHelper::kBackgroundModule;
    if (mode != fcbmNone) {
        const bool isAvailable = KAIModuleHelper::isAvailableForUse(module);
        KdBaseLog::write(KdBaseLog::Info, {kSourceFile, kSetEffect},
                         isAvailable ? "KAIMODULE_CHECK %d success" : "KAIMODULE_CHECK %d false",
                         module);
        if (!isAvailable) {
            return;
        }
    }
    if (recorder()) {
        recorder()->setBackgroundMode(mode);
    }
}

void KdWebcamRecorderHelper::getValidResolutions(QList<QSize>& out) const
{
    out = m_resolutions;
}

void KdWebcamRecorderHelper::getValidFrameRates(QList<double>& out) const
{
    out = m_frameRates;
}

void KdWebcamRecorderHelper::clearCurrentDeviceInfo(bool webcam)
{
    m_bRecordingActive = false;
    (webcam ? m_currentWebcam : m_currentAudioInput) = _KdCaptureDevInf();
}

void KdWebcamRecorderHelper::readValidResolutions()
{
    m_resolutions.clear();
    if (recorder()) {
        recorder()->getResolutions(&m_resolutions);
    }
}

void KdWebcamRecorderHelper::readValidFrameRates()
{
    m_frameRates.clear();
    if (recorder()) {
        recorder()->getFrameRates(&m_frameRates);
    }
}

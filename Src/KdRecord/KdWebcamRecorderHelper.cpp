#include "KdWebcamRecorderHelper.h"

#include <KdCore/KdBaseLog.h>
#include <KdRecord/KdPileInsetionNotice.h>
#include <KdRecord/KdRecorderCallbacks.h>
#include <KdRecord/KdWebcamRecorderCodes.h>

#include <QPointer>
#include <QThread>
#include <QUuid>

#include <algorithm>

using namespace KdVBLMODEL;

namespace {

constexpr char kSourceFile[] = "Src/KdRecord/KdWebcamRecorderHelper";

void logOutcome(bool isDone, const KdBaseLog::Source& source, const char* done, const char* failed)
{
    KdBaseLog::write(isDone ? KdBaseLog::Info : KdBaseLog::Warning, source, "%s",
                     isDone ? done : failed);
}

} // namespace

KdWebcamRecorderHelper::KdWebcamRecorderHelper(QObject* parent) : QObject(parent) {}

KdWebcamRecorderHelper::~KdWebcamRecorderHelper()
{
    if (recorder()) {
        // A barrier: afterwards no callback runs or starts, so that the members can go.
        recorder()->removeEventObserver(this);
    }
}

void KdWebcamRecorderHelper::setWebcamRecordParams(const _KdWebcamRecordParams& params)
{
    if (!recorder()) {
        return;
    }
    if (params.recordAudio) {
        recorder()->setDevice(kdtMicrophone, params.audioIndex);
    }
    recorder()->setRecordAudio(params.recordAudio);
    recorder()->setInterval(params.interval);
    recorder()->setOutputFile(params.outputName);
    recorder()->setVideoFormat(&params.video);
}

void KdWebcamRecorderHelper::setCountCtrl()
{
    m_bRecordingActive = true;
}

bool KdWebcamRecorderHelper::setOnlyWebcam(bool on)
{
    return recorder() && recorder()->setOnlyWebcam(on);
}

bool KdWebcamRecorderHelper::setRecordDisplayShape(_KdCaptureRecordShape shape)
{
    return recorder() && recorder()->setRecordDisplayShape(shape);
}

void KdWebcamRecorderHelper::setRecordFlip(bool on)
{
    if (recorder()) {
        recorder()->setRecordFlip(on);
    }
}

_KdCaptureRecordShape KdWebcamRecorderHelper::getRecordDisplayShape() const
{
    return recorder() ? recorder()->getRecordDisplayShape() : fcrsSquare;
}

bool KdWebcamRecorderHelper::getRecordFlip() const
{
    return recorder() && recorder()->getRecordFlip();
}

_KdCaptureRecordBackgroundMode KdWebcamRecorderHelper::getCurAIEffectType() const
{
    return recorder() ? recorder()->getBackgroundMode() : fcbmNone;
}

_KdCaptureStatus KdWebcamRecorderHelper::curStatus() const
{
    return recorder() ? recorder()->curStatus() : fcsNoStart;
}

QString KdWebcamRecorderHelper::getOutPutFile() const
{
    return recorder() ? recorder()->getOutputFile() : QString();
}

void KdWebcamRecorderHelper::slotWebcamRecorderOrderType(int order)
{
    switch (order) {
    case KdWebcamOrder::Init:
        initRecorder();
        break;
    case KdWebcamOrder::Uninit:
        uninitRecorder();
        break;
    case KdWebcamOrder::StartTake:
        startTake();
        break;
    case KdWebcamOrder::PauseTake:
        pauseWebcamRecorder();
        break;
    case KdWebcamOrder::ResumeTake:
        resumeWebcamRecorder();
        break;
    case KdWebcamOrder::StopTake:
        stopTake();
        break;
    case KdWebcamOrder::StartPreview:
        startPreview();
        break;
    case KdWebcamOrder::StopPreview:
        stopPreview();
        break;
    case KdWebcamOrder::StopEverything:
        stopEverything();
        break;
    case KdWebcamOrder::CheckDevices:
        checkDevices();
        break;
    default:
        break;
    }
}

/** A second time only reads the devices anew: another recorder could not be released. */
void KdWebcamRecorderHelper::initRecorder()
{
    if (!recorder()) {
        m_pRecorder = createWebcamRecorder();
        if (recorder()) {
            recorder()->addEventObserver(this);
            KdRecorderCallbacks::switchAll(*recorder(), true);
        }
    }
    readValidWebCamDevices();
    readValidAudioDevices();
}

void KdWebcamRecorderHelper::uninitRecorder()
{
    if (!recorder()) {
        return;
    }
    recorder()->removeEventObserver(this);
    recorder()->release();
    m_pRecorder = nullptr;
    m_bPreviewing = false;
}

void KdWebcamRecorderHelper::readValidWebCamDevices()
{
    m_webcams.clear();
    if (recorder() && !recorder()->getDevices(kdtWebcam, &m_webcams)) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {kSourceFile, "KdWebcamRecorderHelper::readValidWebCamDevices"},
                         "Failed to get webcam devicesInfo in the webcam record process");
    }
}

void KdWebcamRecorderHelper::readValidAudioDevices()
{
    m_audioInputs.clear();
    if (recorder() && !recorder()->getDevices(kdtMicrophone, &m_audioInputs)) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {kSourceFile, "KdWebcamRecorderHelper::readValidAudioDevices"},
                         "Failed to get audioinput devicesInfo in the webcam record process");
    }
}

void KdWebcamRecorderHelper::startPreview()
{
    // Before the engine is told, so that no frame of the new run is taken for one of the old.
    QString id = QUuid::createUuid().toString();
    {
        const std::lock_guard<std::mutex> lock(m_previewIdMutex);
        m_sPreviewId.swap(id);
    }
    if (recorder() && !recorder()->startPreview()) {
        KdBaseLog::write(KdBaseLog::Warning, {kSourceFile, "KdWebcamRecorderHelper::startPreview"},
                         "Failed to startPreview to a webcam");
        return;
    }
    m_bPreviewing = true;
}

void KdWebcamRecorderHelper::stopPreview()
{
    if (m_bPreviewing && recorder() && !recorder()->stopPreview()) {
        KdBaseLog::write(KdBaseLog::Warning, {kSourceFile, "KdWebcamRecorderHelper::stopPreview"},
                         "Failed to stopPreview to a webcam");
    }
    m_bPreviewing = false;
}

void KdWebcamRecorderHelper::startTake()
{
    const QPointer<KdWebcamRecorderHelper> alive(this);
    startWebcamRecorder();
    if (alive) { // the host may have closed the dialog when it was told
        m_bRecordingActive = true;
    }
}

void KdWebcamRecorderHelper::startWebcamRecorder()
{
    const QPointer<KdWebcamRecorderHelper> alive(this);
    const KdPileInsetionNotice notice("KdWebcamRecorderHelper::start");
    if (!alive || !recorder()) {
        return;
    }
    logOutcome(recorder()->start(), {kSourceFile, "KdWebcamRecorderHelper::startWebcamRecorder"},
               "Start the webcam record process", "Failed to start the webcam record process");
}

void KdWebcamRecorderHelper::pauseWebcamRecorder()
{
    if (!recorder()) {
        return;
    }
    logOutcome(recorder()->pause(), {kSourceFile, "KdWebcamRecorderHelper::pauseWebcamRecorder"},
               "Pause the webcam record process", "Failed to pause the webcam record process");
}

void KdWebcamRecorderHelper::resumeWebcamRecorder()
{
    if (!recorder()) {
        return;
    }
    logOutcome(recorder()->resume(), {kSourceFile, "KdWebcamRecorderHelper::resumeWebcamRecorder"},
               "Resume the webcam record process", "Failed to resume the webcam record process");
}

void KdWebcamRecorderHelper::stopTake()
{
    stopWebcamRecorder();
    m_bRecordingActive = false;
}

void KdWebcamRecorderHelper::stopWebcamRecorder()
{
    const char* const function = "KdWebcamRecorderHelper::stopWebcamRecorder";
    if (recorder() && recorder()->curStatus() == fcsNoStart) {
        KdBaseLog::write(KdBaseLog::Info, {kSourceFile, function},
                         "webcam fcsNoStart status, no need stop");
        return;
    }
    logOutcome(!recorder() || recorder()->stop(), {kSourceFile, function},
               "Stop the webcam record process", "Failed to stop the webcam record process");
}

void KdWebcamRecorderHelper::stopEverything()
{
    stopPreview();
    stopTake();
}

void KdWebcamRecorderHelper::checkDevices()
{
    const QPointer<KdWebcamRecorderHelper> alive(this);
    checkWebcam();
    if (alive) { // a receiver of the response may have closed the dialog
        checkAudioInput();
    }
}

void KdWebcamRecorderHelper::checkWebcam()
{
    readValidWebCamDevices();
    if (hasDeviceExists(m_currentWebcam, m_webcams)) {
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::WebcamPresent);
        return;
    }
    m_resolutions.clear();
    m_frameRates.clear();
    Q_EMIT sigRecorderResponeType(KdWebcamResponse::WebcamGone);
}

void KdWebcamRecorderHelper::checkAudioInput()
{
    readValidAudioDevices();
    Q_EMIT sigRecorderResponeType(hasDeviceExists(m_currentAudioInput, m_audioInputs)
                                      ? KdWebcamResponse::AudioInputPresent
                                      : KdWebcamResponse::AudioInputGone);
}

/** A record of type 0 is no device, so it cannot be missed. */
bool KdWebcamRecorderHelper::hasDeviceExists(const _KdCaptureDevInf& device,
                                             const QList<_KdCaptureDevInf>& list)
{
    return device.devType == kdtNone ||
           std::any_of(list.begin(), list.end(), [&device](const _KdCaptureDevInf& listed) {
               return listed.id == device.id && listed.name == device.name;
           });
}

void KdWebcamRecorderHelper::onCaptureDeviceCallback(int devStatus, int deviceIdx)
{
    KdRecorderCallbacks::postDevice(
        this, {kSourceFile, "KdWebcamRecorderHelper::onCaptureDeviceCallback"}, devStatus,
        deviceIdx);
}

void KdWebcamRecorderHelper::onTimeCallback(long long msec)
{
    KdRecorderCallbacks::postTime(this, msec);
}

void KdWebcamRecorderHelper::onVolumeCallback(int volume)
{
    KdRecorderCallbacks::postVolume(this, volume);
}

void KdWebcamRecorderHelper::onFrameChangedCallback(int width, int height, uint8_t* pARGB32Bits)
{
    // Not posted: the pixels are the engine's and go when this call returns.
    slotFrameChangedCallback(width, height, pARGB32Bits, previewId());
}

QString KdWebcamRecorderHelper::previewId() const
{
    const std::lock_guard<std::mutex> lock(m_previewIdMutex);
    return m_sPreviewId;
}

void KdWebcamRecorderHelper::slotTimeCallback(qint64 msec)
{
    Q_EMIT sigRecordedTime(msec);
}

void KdWebcamRecorderHelper::slotVolumeCallback(int volume)
{
    Q_EMIT sigRecorderVolume(volume);
}

void KdWebcamRecorderHelper::slotCaptureDeviceCallback(int devStatus, int deviceIdx)
{
    Q_UNUSED(deviceIdx)
    if (devStatus == fcdWebcamOccupied) {
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::WebcamOccupied);
        return;
    }
    const bool isRemoval = devStatus == fcdWebcamRemoved || devStatus == fcdAudioInputRemoved;
    if (m_bRecordingActive && isRemoval && reportLossInTake()) {
        return;
    }
    if (devStatus == fcdWebcamListChanged || devStatus == fcdWebcamRemoved) {
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::WebcamListChanged);
    } else if (devStatus == fcdAudioInputAdded || devStatus == fcdAudioInputRemoved) {
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::AudioInputListChanged);
    }
}

/** @return whether one of the devices that the take records from is gone. */
bool KdWebcamRecorderHelper::reportLossInTake()
{
    readValidWebCamDevices();
    readValidAudioDevices();
    if (!hasDeviceExists(m_currentWebcam, m_webcams)) {
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::WebcamGoneInTake);
        return true;
    }
    if (!hasDeviceExists(m_currentAudioInput, m_audioInputs)) {
        Q_EMIT sigRecorderResponeType(KdWebcamResponse::AudioInputGoneInTake);
        return true;
    }
    return false;
}

void KdWebcamRecorderHelper::slotFrameChangedCallback(int width, int height, void* pARGB32Bits,
                                                      const QString& id)
{
    if (id == previewId()) {
        Q_EMIT sigWebCamFrameChanged(width, height, static_cast<uint8_t*>(pARGB32Bits));
    }
}

/** Every operation goes through here: the recorder is touched on the helper's own thread alone. */
IKdWebcamRecorder* KdWebcamRecorderHelper::recorder() const
{
    Q_ASSERT(QThread::currentThread() == thread());
    return m_pRecorder;
}

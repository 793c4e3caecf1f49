// Devices that come and go while the panel is open.

#include <KdRecord/KdWebcamRecordPanel.h>

#include <KdCore/KdBaseLog.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdDeviceBox.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecordPanelUi.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdToolButton.h>

#include <QTimer>

using namespace KdVBLMODEL;

namespace {

void logInfo(const char* function, const char* message, int line = __builtin_LINE())
{
    KdBaseLog::write(KdBaseLog::Info, {"Src/KdRecord/KdWebcamRecordPanel", function, line}, "%s",
                     message);
}

} // namespace

// What the recorder reports

void KdWebcamRecordPanel::slotRecorderResponeType(int response)
{
    m_pUi->meter->setVolume(0.0);
    switch (response) {
    case KdWebcamResponse::WebcamOccupied:
        m_notices.tellWebcamOccupied();
        break;
    case KdWebcamResponse::WebcamSwitched:
        webcamSwitched();
        break;
    case KdWebcamResponse::WebcamGone:
        noteLoss(m_lostWebcam, m_pRecorder->getCurrentWebCamDeviceInfo().name,
                 "WebcamDevice DeviceLostTimer Started");
        break;
    case KdWebcamResponse::AudioInputGone:
        noteLoss(m_lostAudio, m_pRecorder->getCurrentAudioDeviceInfo().name,
                 "AudioDeviceLost DeviceLostTimer Started");
        break;
    case KdWebcamResponse::WebcamListChanged:
    case KdWebcamResponse::AudioInputListChanged:
        noteDeviceChange();
        break;
    case KdWebcamResponse::WebcamPresent:
        webcamDeviceChanged();
        break;
    case KdWebcamResponse::AudioInputPresent:
        audioDeviceChanged();
        break;
    case KdWebcamResponse::ResolutionSwitched:
        resolutionSwitched();
        break;
    case KdWebcamResponse::WebcamGoneInTake:
    case KdWebcamResponse::AudioInputGoneInTake:
        lostInTake();
        break;
    default:
        break;
    }
}

void KdWebcamRecordPanel::webcamSwitched()
{
    reloadFormats();
    m_pUi->display->startRenderDelay();
    showDeviceTips();
}

void KdWebcamRecordPanel::resolutionSwitched()
{
    m_pUi->display->startRenderDelay();
    logInfo("KdWebcamRecordPanel::slotRecorderResponeType", "switch resoution preview");
    reloadFrameRates(m_pRecorder->getCurrentFrameRate());
}

void KdWebcamRecordPanel::webcamDeviceChanged()
{
    logInfo("KdWebcamRecordPanel::slotRecorderResponeType", "Camera device changed");
    const _KdCaptureDevInf former = m_pRecorder->getCurrentWebCamDeviceInfo();
    if (former.devType == kdtNone) {
        InitUI();
        return;
    }
    const QString text = m_pCameras->currentText();
    if (loadWebcamDeviceItems() && m_pCameras->chooseAgain(former, text)) {
        slotOnVideoDeviceChanged(m_pCameras->currentRow());
    }
}

void KdWebcamRecordPanel::audioDeviceChanged()
{
    logInfo("KdWebcamRecordPanel::slotRecorderResponeType", "Audio device changed");
    const _KdCaptureDevInf former = m_pRecorder->getCurrentAudioDeviceInfo();
    if (former.devType == kdtNone) {
        InitUI();
        return;
    }
    const QString text = m_pMicrophones->currentText();
    if (loadAudioDeviceItems() && m_pMicrophones->chooseAgain(former, text)) {
        slotOnAudioDeviceChanged(m_pMicrophones->currentRow());
    }
}

// Devices that come

void KdWebcamRecordPanel::noteDeviceChange()
{
    if (m_pUi->startStop->isChecked() || m_pDeviceChangeTimer->isActive()) {
        m_bDeviceChangePending = true;
    } else {
        startDeviceChangeTimer();
    }
}

void KdWebcamRecordPanel::startDeviceChangeTimer()
{
    logInfo("KdWebcamRecordPanel::startDeviceChangeTimer", "DeviceChangeTimer Started");
    m_pDeviceChangeTimer->start();
}

void KdWebcamRecordPanel::takeUpDeviceChange()
{
    if (m_bDeviceChangePending && !m_pDeviceChangeTimer->isActive()) {
        startDeviceChangeTimer();
        m_bDeviceChangePending = false;
    }
}

void KdWebcamRecordPanel::lookForDeviceChange()
{
    m_bDeviceChangePending = false;
    if (sendOrder(KdWebcamOrder::CheckDevices)) {
        leaveAbortedCountdown();
    }
}

// The device whose loss ended the countdown is there again, and no one else would end the start.
void KdWebcamRecordPanel::leaveAbortedCountdown()
{
    const bool isLossReported = m_pDeviceLostTimer->isActive() || m_notices.isAsking();
    const bool isOver = !m_pUi->countdown->isActive() && !isTakeRunning();
    if (m_pUi->startStop->isChecked() && isOver && !isLossReported) {
        m_pUi->startStop->setChecked(false);
        takeUpDeviceChange();
        showIdle();
    }
}

// Devices that go

void KdWebcamRecordPanel::lostInTake()
{
    abortCountdown();
    m_pUi->display->stopRender();
    if (!m_pDeviceChangeTimer->isActive()) {
        startDeviceChangeTimer();
    }
}

void KdWebcamRecordPanel::noteLoss(std::optional<QString>& lost, const QString& name,
                                   const char* message)
{
    lost = name;
    if (!m_pDeviceLostTimer->isActive()) {
        logInfo("KdWebcamRecordPanel::slotRecorderResponeType", message);
        m_pDeviceLostTimer->start();
    }
}

void KdWebcamRecordPanel::slotDeviceLostTimer()
{
    if (!m_lostWebcam && !m_lostAudio) {
        // Armed while the loss was reported already.
        return;
    }
    if (m_notices.isAsking()) {
        // One message at a time; this one waits for its turn.
        m_pDeviceLostTimer->start();
        return;
    }
    m_pDeviceLostTimer->stop();
    m_pUi->display->stopRender();
    if (abortCountdown()) {
        // No take may begin behind the message.
        m_pUi->startStop->setChecked(false);
        takeUpDeviceChange();
        showIdle();
    }
    const auto webcam = m_lostWebcam;
    const auto audio = m_lostAudio;
    const Presence here(this);
    sendOrder(KdWebcamOrder::StopEverything);
    if (!here) {
        return;
    }
    m_notices.tellDevicesLost(webcam, audio);
    if (!here) {
        return;
    }
    // What goes while the message is open has a report of its own.
    m_lostWebcam = webcam ? std::nullopt : m_lostWebcam;
    m_lostAudio = audio ? std::nullopt : m_lostAudio;
    leaveLostDevices();
}

void KdWebcamRecordPanel::leaveLostDevices()
{
    logInfo("KdWebcamRecordPanel::slotDeviceLostTimer", "Camera device lost");
    const Presence here(this);
    InitUI();
    if (here && m_pUi->startStop->isChecked()) {
        leaveTake();
    }
    if (!here) {
        return;
    }
    update();
    enableStart();
    if (!m_pCameras->hasDevice()) {
        m_pRecorder->clearCurrentDeviceInfo(true);
    }
    if (!m_pMicrophones->hasDevice()) {
        // Else each later look at the devices would find it gone once more.
        m_pRecorder->clearCurrentDeviceInfo(false);
    }
}

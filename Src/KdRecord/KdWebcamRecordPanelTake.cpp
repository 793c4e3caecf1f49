// The panel's way through a take: countdown, recording, pause, re-recording, end.

#include <KdRecord/KdWebcamRecordPanel.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdBaseLog.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdCountdownBox.h>
#include <KdRecord/KdDeviceBox.h>
#include <KdRecord/KdOverlayPlace.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdRecord/KdTakePath.h>
#include <KdRecord/KdTakeTime.h>
#include <KdRecord/KdTakeWatch.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecordPanelUi.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdRecord/KdWebcamTakeParams.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <KdZentraCore/KdUtility.h>

#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QTimer>

#include <utility>

using namespace KdVBLMODEL;

namespace {

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Src/KdRecord/KdWebcamRecordPanel", function, line};
}

QString captureFolder()
{
    return KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->GetCaptureFileFolder();
}

void removeFile(const QString& path)
{
    if (!path.isEmpty()) {
        QFile::remove(path);
    }
}

} // namespace

bool KdWebcamRecordPanel::isTakeRunning() const
{
    return !m_strOutputFile.isEmpty();
}

// Start and stop

void KdWebcamRecordPanel::slotSpaceShortcutActivated()
{
    const QString camera = m_pRecorder->getCurrentWebCamDeviceInfo().name;
    KdBaseLog::write(KdBaseLog::Info, source("KdWebcamRecordPanel::slotSpaceShortcutActivated"),
                     "The record shortcut was pressed, the camera is %s",
                     camera.toUtf8().constData());
    if (m_pCameras->hasDevice() && !m_notices.isAsking()) {
        m_pUi->startStop->setChecked(!m_pUi->startStop->isChecked());
        slotOnStartStopClicked();
    }
}

void KdWebcamRecordPanel::slotOnStartStopClicked()
{
    KdBaseLog::write(KdBaseLog::Info, source("KdWebcamRecordPanel::slotOnStartStopClicked"),
                     "The record button was pressed");
    const bool isStart = m_pUi->startStop->isChecked();
    if (isStart && !m_pCameras->hasDevice()) {
        refuseWithoutDevice();
        return;
    }
    const Presence here(this);
    const bool isUsable = isStart && isFolderUsable();
    if (!here) {
        return;
    }
    if (isUsable) {
        launchCountdown();
    } else {
        leaveTake();
    }
}

void KdWebcamRecordPanel::refuseWithoutDevice()
{
    const QPointer<KdWebcamRecordPanel> self(this);
    m_notices.tellNoDevice();
    if (self) {
        m_pUi->startStop->setChecked(false);
        Q_EMIT sigStartRecordBtnClick();
    }
}

bool KdWebcamRecordPanel::isFolderUsable()
{
    const int isUsable = m_notices.runModal([this] {
        return m_folderCheck.mayRecordInto(captureFolder(), this, &KdUtility::gGetProductName) ? 1
                                                                                               : 0;
    });
    return isUsable;
}

void KdWebcamRecordPanel::launchCountdown()
{
    m_pCountdownPlace->show();
    m_pUi->countdown->SetCount(KdCountdownBox::seconds(*m_pUi->seconds));
    m_pUi->countdown->Start();
    m_pRecorder->setCountCtrl();
    m_pRecorder->setOnlyWebcam(true);
    m_pUi->display->setRecording(true);
    storeOptions();
    showStartState();
    Q_EMIT sigStartRecordBtnClick();
}

/** @return whether one ran. */
bool KdWebcamRecordPanel::abortCountdown()
{
    const bool isActive = m_pUi->countdown->isActive();
    if (isActive) {
        m_pUi->countdown->Abort();
        m_pUi->countdown->hide();
        m_pUi->announcer->tellCountdownStopped();
    }
    return isActive;
}

void KdWebcamRecordPanel::storeOptions()
{
    auto* const config = KdConfigEngine::instance();
    const QString group = QStringLiteral("WebCamFuncConfig");
    config->setValue(1, group, QStringLiteral("WebCamFuncShape"),
                     static_cast<int>(m_pRecorder->getRecordDisplayShape()));
    config->setValue(1, group, QStringLiteral("WebCamFuncBackground"),
                     static_cast<int>(m_pRecorder->getCurAIEffectType()));
    config->setValue(1, group, QStringLiteral("WebCamFuncFlip"), m_pRecorder->getRecordFlip());
}

void KdWebcamRecordPanel::leaveTake()
{
    m_pUi->startStop->setChecked(false);
    if (abortCountdown()) {
        takeUpDeviceChange();
    } else if (!endTake()) {
        return;
    }
    showIdle();
}

void KdWebcamRecordPanel::showIdle()
{
    m_pUi->countdown->hide();
    m_pUi->display->setRecording(false);
    m_pUi->setChoicesEnabled(true);
    m_pUi->setTakeButtonsVisible(false);
    m_notices.closeTakeNotices();
    m_pUi->time->setText(KdTakeTime::toText(0));
    m_pTakeWatch->stop();
    showStatus();
    showStartState();
}

void KdWebcamRecordPanel::showRecording()
{
    m_pUi->setChoicesEnabled(false);
    m_pUi->setTakeButtonsVisible(true);
    m_pTakeWatch->start();
    showStatus();
}

void KdWebcamRecordPanel::showStartState()
{
    KdRecordWidgets::showStartTip(m_pUi->startStop);
    enableStart();
    m_mainWindowLock.setLocked(m_pUi->startStop->isChecked());
}

// Recording

void KdWebcamRecordPanel::slotOnCountCtrlFinished()
{
    const QPointer<KdWebcamRecordPanel> self(this);
    m_pUi->countdown->hide();
    m_strOutputFile = freeTakePath();
    m_takeSource = currentSource();
    m_pRecorder->setWebcamRecordParams(
        KdWebcamTakeParams::compose(m_strOutputFile, microphoneOfTake(), m_takeSource.frameRate));
    if (startTake()) {
        showRecording();
    } else if (self && isTakeRunning()) {
        m_strOutputFile.clear();
        failStart();
    }
}

QString KdWebcamRecordPanel::freeTakePath() const
{
    return KdTakePath::composeFree(captureFolder(), QStringLiteral("/VID_%1.mp4"), m_localTime(),
                                   KdTakePath::isThere);
}

KdWebcamRecordPanel::Source KdWebcamRecordPanel::currentSource() const
{
    return {m_pRecorder->getCurrentResolution(), m_pRecorder->getCurrentFrameRate(),
            m_pCameras->currentText()};
}

/** @return whether the engine records; it tells so by its status alone. */
bool KdWebcamRecordPanel::startTake()
{
    const QString path = m_strOutputFile;
    if (!sendOrder(KdWebcamOrder::StartTake)) {
        return false;
    }
    if (!isTakeRunning()) {
        stopOrphan(path);
        return false;
    }
    if (status() == fcsNoStart) {
        return false;
    }
    m_pUi->pause->setChecked(false);
    KdRecordWidgets::showPauseTip(m_pUi->pause);
    rememberChoices();
    m_pUi->announcer->tellStarted();
    m_elapsed.restart();
    m_nDurationSec = 0;
    return true;
}

// A host that closes the panel when it is told of the start does so before the engine begins.
void KdWebcamRecordPanel::stopOrphan(const QString& path)
{
    if (status() != fcsNoStart) {
        sendOrder(KdWebcamOrder::StopTake);
        removeFile(path);
    }
}

void KdWebcamRecordPanel::rememberChoices()
{
    QList<QSize> sizes;
    QList<double> rates;
    m_pRecorder->getValidResolutions(sizes);
    m_pRecorder->getValidFrameRates(rates);
    const QSize size = sizes.value(m_pUi->resolution->currentIndex(), QSize(-1, -1));
    KRecordSettingData choices;
    choices.selectedCameraDeviceName = m_pCameras->currentName();
    choices.selectedAudioDeviceName = m_pMicrophones->currentName();
    choices.countdown = KdCountdownBox::seconds(*m_pUi->seconds);
    choices.recordPreview = m_pUi->preview->isChecked();
    choices.cameraWidth = size.width();
    choices.cameraHeight = size.height();
    choices.frameRate = rates.value(m_pUi->frameRate->currentIndex(), -1.0);
    KRecordSettingParam::instance()->setData(choices);
}

void KdWebcamRecordPanel::failStart()
{
    const Presence here(this);
    m_notices.tellStartFailed();
    if (here) {
        leaveTake();
    }
}

void KdWebcamRecordPanel::slotCaptureTime(qint64 miliseconds)
{
    // Reports are queued: some arrive when their take is over.
    if (isTakeRunning() && m_bTakesTime) {
        m_nDurationSec = KdTakeTime::toWholeSeconds(miliseconds);
        m_pUi->time->setText(KdTakeTime::toText(m_nDurationSec));
    }
}

void KdWebcamRecordPanel::slotPauseContinue()
{
    if (!isTakeRunning()) {
        return;
    }
    // The click has toggled the button already.
    const bool isPause = m_pUi->pause->isChecked();
    const Presence here(this);
    sendOrder(isPause ? KdWebcamOrder::PauseTake : KdWebcamOrder::ResumeTake);
    if (!here) {
        return;
    }
    KdRecordWidgets::showPauseTip(m_pUi->pause);
    m_pUi->pause->setProperty("WITH_SHORTCUT", false);
    if (!isPause) {
        m_pUi->announcer->tellResumed();
    }
    m_notices.showPaused(isPause);
}

// Re-recording

void KdWebcamRecordPanel::slotReRecord()
{
    if (!isTakeRunning()) {
        return;
    }
    const QPointer<KdWebcamRecordPanel> self(this);
    m_notices.askReRecord(m_pUi->reRecord, [self] {
        if (self && self->isTakeRunning()) {
            self->startOverTake();
        }
    });
}

void KdWebcamRecordPanel::startOverTake()
{
    if (!sendOrder(KdWebcamOrder::StopTake) || !isTakeRunning()) {
        return;
    }
    m_notices.closeTakeNotices();
    const QPointer<KdWebcamRecordPanel> self(this);
    if (startTake()) {
        dropTimeOfFormerTake();
    } else if (self && isTakeRunning()) {
        // The former take is finished, and still there: better that one than none.
        failStart();
    }
}

void KdWebcamRecordPanel::dropTimeOfFormerTake()
{
    // The former take's last reports are queued already, so they come before this one.
    m_bTakesTime = false;
    QMetaObject::invokeMethod(
        this, [this] { m_bTakesTime = true; }, Qt::QueuedConnection);
    m_pUi->time->setText(KdTakeTime::toText(0));
}

// The end of a take

/** @return whether the panel still exists, and was not aborted meanwhile. */
bool KdWebcamRecordPanel::endTake()
{
    const Presence here(this);
    sendOrder(KdWebcamOrder::StopTake);
    if (!here) {
        return false;
    }
    takeUpDeviceChange();
    return reportTake();
}

/** @return as above. */
bool KdWebcamRecordPanel::reportTake()
{
    const Source taken = isTakeRunning() ? m_takeSource : currentSource();
    if (isTakeRunning()) {
        m_pUi->announcer->tellStopped();
    }
    QString path = std::exchange(m_strOutputFile, QString());
    const int seconds = std::exchange(m_nDurationSec, 0);
    const bool isTooShort = m_elapsed.isTooShort();
    m_elapsed.invalidate();
    m_pTakeWatch->stop();

    const Presence here(this);
    if (isTooShort) {
        removeFile(std::exchange(path, QString()));
        m_notices.tellTooShort();
    } else if (!path.isEmpty() && !QFile::exists(path)) {
        m_notices.tellNotSaved(std::exchange(path, QString()));
    }
    if (here) {
        Q_EMIT sigCaptureFinished(path, taken.resolution, taken.frameRate, seconds, taken.camera);
    }
    return here;
}

void KdWebcamRecordPanel::dropTake()
{
    removeFile(std::exchange(m_strOutputFile, QString()));
    m_nDurationSec = 0;
    m_elapsed.invalidate();
}

void KdWebcamRecordPanel::slotOnOkButtonClicked()
{
    const QPointer<KdWebcamRecordPanel> self(this);
    if (QFile::exists(m_strOutputFile)) {
        leaveTake();
    }
    KdAppSettings::GetInstance()->Save();
    if (self) {
        Q_EMIT sigClose();
    }
}

void KdWebcamRecordPanel::AbordRecorder()
{
    ++m_nAborts;
    m_pDeviceChangeTimer->stop();
    m_pDeviceLostTimer->stop();
    m_bDeviceChangePending = false;
    m_lostWebcam.reset();
    m_lostAudio.reset();
    m_notices.forgetOccupied();
    const bool isTake = !abortCountdown() && (m_pUi->startStop->isChecked() || isTakeRunning());
    m_pUi->startStop->setChecked(false);
    if (isTake) {
        if (!sendOrder(KdWebcamOrder::StopTake)) {
            return;
        }
        dropTake();
    }
    showIdle();
    m_pUi->display->stopRender();
    sendOrder(KdWebcamOrder::StopPreview);
}

void KdWebcamRecordPanel::takeEndedByItself()
{
    // An open message is answered first, and a device that may be lost has a report of its own.
    const bool isLossAwaited = m_pDeviceChangeTimer->isActive() || m_pDeviceLostTimer->isActive();
    if (!isTakeRunning() || m_notices.isAsking() || isLossAwaited) {
        return;
    }
    const QString path = m_strOutputFile;
    // A camera that falls silent ends a take in the same way.
    const bool isDiskFull =
        status() == fcsEnded && m_folderCheck.isShortOfSpace(QFileInfo(path).path());
    const Presence here(this);
    leaveTake();
    // Without a file the stop has said so already.
    if (here && QFile::exists(path)) {
        m_notices.tellTakeEnded(isDiskFull);
    }
}

// While a take runs "not started" means that the engine has ended it, for want of a picture say.
_KdCaptureStatus KdWebcamRecordPanel::takeStatus() const
{
    return status() == fcsNoStart ? fcsEnded : status();
}

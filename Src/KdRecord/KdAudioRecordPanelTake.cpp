// The panel's way through a take: countdown, recording, pause, re-recording, end.

#include <KdRecord/KdAudioRecordPanel.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdBaseLog.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdAudioDeviceBoxes.h>
#include <KdRecord/KdAudioRecordHelper.h>
#include <KdRecord/KdAudioRecordPanelUi.h>
#include <KdRecord/KdAudioTakeParams.h>
#include <KdRecord/KdCountCtrl.h>
#include <KdRecord/KdCountdownBox.h>
#include <KdRecord/KdOverlayPlace.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdRecord/KdTakePath.h>
#include <KdRecord/KdTakeTime.h>
#include <KdRecord/KdTakeWatch.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToolButton.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Src/KdRecord/KdAudioRecordPanel", function, line};
}

QString voiceFolder()
{
    return KdAppSettings::GetInstance()
        ->GetSettings()
        ->GetFolderSettings()
        ->GetRecorderVoiceFolder();
}

} // namespace

bool KdAudioRecordPanel::isTakeRunning() const
{
    return m_pRecorderHelper && !m_strOutputFile.isEmpty();
}

// Start and stop

void KdAudioRecordPanel::startFromOutside()
{
    if (m_notices.isAsking()) {
        return;
    }
    if (!m_pUi->startStop->isChecked()) {
        m_pUi->startStop->setChecked(true);
        slotOnStartStopClicked();
    } else if (isTakeRunning() && m_pUi->pause->isChecked()) {
        // Starting anew would end the paused take without a word to the host.
        m_pUi->pause->click();
    }
}

void KdAudioRecordPanel::stopFromOutside()
{
    m_pUi->stop->setChecked(true);
    slotStopButtonClicked();
}

void KdAudioRecordPanel::slotSpaceShortcutActivated()
{
    if (!m_notices.isAsking() && (m_pDevices->hasDevice() || m_pUi->startStop->isChecked())) {
        toggleStart("KdAudioRecordPanel::slotSpaceShortcutActivated");
    }
}

void KdAudioRecordPanel::slotStopButtonClicked()
{
    if (!m_notices.isAsking()) {
        toggleStart("KdAudioRecordPanel::slotStopButtonClicked");
    }
}

void KdAudioRecordPanel::slotCountViewPressed(QPoint globalPos)
{
    const KdToolButton* const start = m_pUi->startStop;
    const QRect place(start->mapToGlobal(QPoint(0, 0)), start->size());
    if (!m_notices.isAsking() && place.contains(globalPos)) {
        toggleStart("KdAudioRecordPanel::slotCountViewPressed");
    }
}

void KdAudioRecordPanel::toggleStart(const char* function)
{
    m_pUi->startStop->setChecked(!m_pUi->startStop->isChecked());
    KdBaseLog::write(KdBaseLog::Info, source(function), "The record button is checked: %d",
                     m_pUi->startStop->isChecked());
    slotOnStartStopClicked();
}

void KdAudioRecordPanel::slotOnStartStopClicked()
{
    KdBaseLog::write(KdBaseLog::Info, source("KdAudioRecordPanel::slotOnStartStopClicked"),
                     "The record button was pressed");
    m_pCountdownPlace->place();
    const QPointer<KdAudioRecordPanel> self(this);
    const bool isStart = m_pUi->startStop->isChecked();
    if (isStart && !m_pDevices->hasDevice()) {
        refuseWithoutDevice();
    } else if (isStart && isFolderUsable()) {
        launchCountdown();
    } else if (self) {
        leaveTake();
    }
    // Who was told of the end may have begun a take already, which shows its own buttons.
    if (self && m_pRecorderHelper && !isTakeRunning()) {
        showStartState();
    }
}

void KdAudioRecordPanel::refuseWithoutDevice()
{
    const QPointer<KdAudioRecordPanel> self(this);
    m_notices.tellNoDevice();
    if (self) {
        m_pUi->startStop->setChecked(false);
        Q_EMIT sigStartRecordBtnClick();
    }
}

bool KdAudioRecordPanel::isFolderUsable()
{
    if (!m_pRecorderHelper) {
        return false;
    }
    const QPointer<KdAudioRecordPanel> self(this);
    const int isUsable = m_notices.runModal(
        [this] { return m_folderCheck.mayRecordInto(voiceFolder(), this) ? 1 : 0; });
    return isUsable && self && m_pRecorderHelper;
}

void KdAudioRecordPanel::launchCountdown()
{
    m_pUi->time->setText(KdTakeTime::toText(0));
    m_pCountdownPlace->show();
    m_pUi->stop->setChecked(false);
    m_pUi->setStopVisible(true);
    m_pUi->countdown->SetCount(KdCountdownBox::seconds(*m_pUi->seconds));
    m_pUi->countdown->Start();
    Q_EMIT sigStartRecordBtnClick();
}

void KdAudioRecordPanel::leaveTake()
{
    m_pUi->startStop->setChecked(false);
    if (m_pUi->countdown->isActive()) {
        m_pUi->countdown->Abort();
        m_pUi->announcer->tellCountdownStopped();
    } else {
        const QPointer<KdAudioRecordPanel> self(this);
        StopRecord(false);
        if (!self) {
            KdBaseLog::write(KdBaseLog::Info, source("KdAudioRecordPanel::slotOnStartStopClicked"),
                             "stopAudioRecord has been delete widget");
            return;
        }
        if (m_pUi->countdown->isActive() || isTakeRunning()) {
            return;
        }
    }
    m_pUi->time->setText(KdTakeTime::toText(0));
    if (!m_strOutputFile.isEmpty() && !QFile::exists(m_strOutputFile)) {
        m_notices.showAdded(m_pUi->startStop);
    }
    hideCountdown();
}

void KdAudioRecordPanel::showStartState()
{
    const bool isChecked = m_pUi->startStop->isChecked();
    KdRecordWidgets::showStartTip(m_pUi->startStop);
    SetEnable(!isChecked);
    showTakeButtons(false);
    enableStart();
    KdBaseLog::write(KdBaseLog::Info, source("KdAudioRecordPanel::slotOnStartStopClicked"), "%d",
                     isChecked);
}

void KdAudioRecordPanel::SetEnable(bool enable)
{
    KdBaseLog::write(KdBaseLog::Info, source("KdAudioRecordPanel::SetEnable"),
                     "The settings are enabled: %d", enable);
    m_pUi->setSettingsEnabled(enable);
    m_pUi->setTimeEnabled(!enable);
    m_mainWindowLock.setLocked(!enable);
}

void KdAudioRecordPanel::showTakeButtons(bool visible)
{
    m_pUi->setTakeButtonsVisible(visible);
    if (!visible) {
        m_pUi->meter->setVolume(0.0);
        m_notices.closeTakeNotices();
    }
}

// Countdown

void KdAudioRecordPanel::hideCountdown()
{
    m_pUi->countdown->hide();
    m_pUi->setStopVisible(false);
}

void KdAudioRecordPanel::slotCountViewFinished()
{
    hideCountdown();
    const QPointer<KdAudioRecordPanel> self(this);
    const bool isRecording = StartRecord(false);
    if (!self) {
        return;
    }
    SetEnable(!isRecording);
    showTakeButtons(isRecording);
    if (!isRecording) {
        KdBaseLog::write(KdBaseLog::Info, source("KdAudioRecordPanel::slotCountViewFinished"),
                         "No recording began");
        m_strOutputFile.clear();
        m_pUi->startStop->setChecked(false);
        KdRecordWidgets::showStartTip(m_pUi->startStop);
        enableStart();
    }
}

// Recording

bool KdAudioRecordPanel::StartRecord(bool bReStart)
{
    if (!m_pRecorderHelper) {
        return false;
    }
    m_pUi->pause->setChecked(false);
    KdRecordWidgets::showPauseTip(m_pUi->pause);
    m_notices.showPaused(false);
    m_strOutputFile = freeTakePath();
    m_pRecorderHelper->setAudioRecordParams(takeParams());
    if (!m_pRecorderHelper->start()) {
        failStart();
        return false;
    }
    m_elapsed.restart();
    m_pTakeWatch->start();
    m_pUi->announcer->tellStarted();
    const int formerSeconds = std::exchange(m_nDurationSec, 0);
    m_formerSeconds.reset();
    m_strTakeDevice = m_pDevices->currentName();
    rememberChoices();
    if (bReStart) {
        dropTimeOfFormerTake(formerSeconds);
    }
    const QPointer<KdAudioRecordPanel> self(this);
    Q_EMIT sigStartCapture(bReStart);
    return self && isTakeRunning();
}

QString KdAudioRecordPanel::freeTakePath() const
{
    const auto isTaken = [this](const QString& path) {
        return path == m_strOutputFile || KdTakePath::isThere(path);
    };
    return KdTakePath::composeFree(voiceFolder(), QStringLiteral("/REC_%1.m4a"), m_localTime(),
                                   isTaken);
}

KdVBLMODEL::_KdAudioRecordParams KdAudioRecordPanel::takeParams() const
{
    const KdAudioTakeParams::Input input{m_pDevices->currentRow(), m_strOutputFile,
                                         m_pRecorderHelper->getBitsPerSample(),
                                         m_pRecorderHelper->getAudioVolume()};
    return KdAudioTakeParams::compose(
        input, *KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings());
}

void KdAudioRecordPanel::rememberChoices()
{
    KRecordSettingData choices;
    choices.selectedAudioDeviceName = m_strTakeDevice;
    choices.countdown = KdCountdownBox::seconds(*m_pUi->seconds);
    // The store always takes this one.
    choices.recordPreview = KRecordSettingParam::instance()->data().recordPreview;
    KRecordSettingParam::instance()->setData(choices);
}

void KdAudioRecordPanel::failStart()
{
    // Whoever closes the panel from here on must not be told of a take.
    m_strOutputFile.clear();
    m_elapsed.invalidate();
    const QPointer<KdAudioRecordPanel> self(this);
    Q_EMIT sigStartCaptureFailed();
    if (!self || !m_pRecorderHelper) {
        return;
    }
    m_pRecorderHelper->stop();
    m_pRecorderHelper->resume();
    m_notices.tellStartFailed();
}

void KdAudioRecordPanel::slotCaptureTime(qint64 miliseconds)
{
    // Reports are queued: some arrive when their take is over.
    const int seconds = KdTakeTime::toWholeSeconds(miliseconds);
    if (!isTakeRunning() || !m_bTakesTime || isTimeOfFormerTake(seconds)) {
        return;
    }
    m_nDurationSec = seconds;
    m_pUi->time->setText(KdTakeTime::toText(m_nDurationSec));
    Q_EMIT sigCaptureDoing(KdTakeTime::toFrames(miliseconds, m_projectFps));
}

void KdAudioRecordPanel::slotCaptureVolume(int volume)
{
    // Between takes too: whoever sees the level beforehand need not find out afterwards.
    m_pUi->meter->setVolume(volume);
}

void KdAudioRecordPanel::slotPauseContinue()
{
    if (!isTakeRunning()) {
        return;
    }
    // The click has toggled the button already.
    const bool isPause = m_pUi->pause->isChecked();
    const QPointer<KdAudioRecordPanel> self(this);
    if (isPause) {
        Q_EMIT sigPause();
    } else {
        Q_EMIT sigResume();
    }
    if (!self || !m_pRecorderHelper) {
        return;
    }
    if (isPause) {
        m_pRecorderHelper->pause();
    } else {
        m_pRecorderHelper->resume();
        m_pUi->announcer->tellResumed();
    }
    KdRecordWidgets::showPauseTip(m_pUi->pause);
    m_pUi->pause->setProperty("WITH_SHORTCUT", false);
    m_notices.showPaused(isPause);
}

// Re-recording

void KdAudioRecordPanel::slotReRecord()
{
    if (!isTakeRunning()) {
        return;
    }
    const QPointer<KdAudioRecordPanel> self(this);
    m_notices.askReRecord(m_pUi->reRecord, [self] {
        if (self && self->isTakeRunning()) {
            self->startOverTake();
        }
    });
}

void KdAudioRecordPanel::startOverTake()
{
    const QString former = m_strOutputFile;
    const QPointer<KdAudioRecordPanel> self(this);
    const bool isRecording = StartRecord(true);
    QFile::remove(former);
    if (self && !isRecording) {
        giveUpTake();
    }
}

void KdAudioRecordPanel::dropTimeOfFormerTake(int formerSeconds)
{
    // The former take's last reports are queued already, so they come before this one; all but the
    // one that a thread of the engine may be about to queue.
    m_formerSeconds = std::max(1, formerSeconds);
    m_bTakesTime = false;
    QMetaObject::invokeMethod(
        this, [this] { m_bTakesTime = true; }, Qt::QueuedConnection);
    m_pUi->time->setText(KdTakeTime::toText(0));
}

bool KdAudioRecordPanel::isTimeOfFormerTake(int seconds) const
{
    return m_formerSeconds && seconds >= *m_formerSeconds && m_elapsed.isTooShort();
}

void KdAudioRecordPanel::giveUpTake()
{
    // The slot that was told of the start may have stopped the take or closed the panel already.
    if (!m_pRecorderHelper || !m_pUi->startStop->isChecked()) {
        return;
    }
    m_pUi->startStop->setChecked(false);
    m_pUi->time->setText(KdTakeTime::toText(0));
    showStartState();
    reportTake(false);
}

// The end of a take

void KdAudioRecordPanel::StopRecord(bool fromUi)
{
    if (!m_pRecorderHelper) {
        return;
    }
    const QPointer<KdAudioRecordPanel> self(this);
    const bool isFinished = endRecording(fromUi);
    if (self && m_pRecorderHelper) {
        reportTake(isFinished);
    }
}

bool KdAudioRecordPanel::endRecording(bool fromUi)
{
    if (!fromUi) {
        return m_pRecorderHelper->stop();
    }
    const bool isFinished = endWhatRuns();
    Q_EMIT sigEndCapture();
    return isFinished;
}

bool KdAudioRecordPanel::endWhatRuns()
{
    if (m_pUi->countdown->isActive()) {
        m_pUi->countdown->Abort();
        hideCountdown();
        return true;
    }
    return !m_pUi->startStop->isChecked() || m_pRecorderHelper->stop();
}

void KdAudioRecordPanel::reportTake(bool isFinished)
{
    const int channels = m_pRecorderHelper->getChannels();
    const int bits = m_pRecorderHelper->getBitsPerSample();
    const int seconds = std::exchange(m_nDurationSec, 0);
    const bool isTooShort = m_elapsed.isTooShort();
    m_elapsed.invalidate();
    m_pTakeWatch->stop();
    if (isTakeRunning()) {
        m_pUi->announcer->tellStopped();
    }
    m_strLastFile = std::exchange(m_strOutputFile, QString());
    // The list may show another device by now, when this one was unplugged.
    const QString device = m_strLastFile.isEmpty() ? m_pDevices->currentName() : m_strTakeDevice;

    const QPointer<KdAudioRecordPanel> self(this);
    if (isTooShort) {
        QFile::remove(std::exchange(m_strLastFile, QString()));
        m_notices.tellTooShort();
    } else if (!m_strLastFile.isEmpty() && !(isFinished && QFile::exists(m_strLastFile))) {
        m_notices.tellNotSaved(std::exchange(m_strLastFile, QString()));
    }
    if (self) {
        Q_EMIT sigCaptureFinished(m_strLastFile, channels, bits, seconds, device);
    }
}

void KdAudioRecordPanel::takeEndedByItself()
{
    // An open message is answered first; the watch asks again.
    if (!isTakeRunning() || m_notices.isAsking()) {
        return;
    }
    // A file that cannot be written for another reason ends a take in the same way.
    const bool isDiskFull = m_folderCheck.isShortOfSpace(QFileInfo(m_strOutputFile).path());
    const QPointer<KdAudioRecordPanel> self(this);
    slotStopButtonClicked();
    // Without a file the stop has said so already.
    if (self && m_pRecorderHelper && !m_strLastFile.isEmpty()) {
        m_notices.tellTakeEnded(isDiskFull);
    }
}

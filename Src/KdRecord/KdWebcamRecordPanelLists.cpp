// The panel's lists of devices and formats, and what the user chooses from them.

#include <KdRecord/KdWebcamRecordPanel.h>

#include <KdCore/KdBaseLog.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdDeviceBox.h>
#include <KdRecord/KdDeviceChoice.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamFormatChoice.h>
#include <KdRecord/KdWebcamRecordPanelUi.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdText.h>
#include <KdWidgets/KdToolButton.h>

#include <QPointer>
#include <QSignalBlocker>

using namespace KdVBLMODEL;

namespace {

void logInfo(const char* function, const char* message, int line = __builtin_LINE())
{
    KdBaseLog::write(KdBaseLog::Info, {"Src/KdRecord/KdWebcamRecordPanel", function, line}, "%s",
                     message);
}

void logCount(const char* function, const char* format, int count, int line = __builtin_LINE())
{
    KdBaseLog::write(KdBaseLog::Info, {"Src/KdRecord/KdWebcamRecordPanel", function, line}, format,
                     count);
}

/** Fills a list of formats without a signal of its. */
void fillFormats(KdComboBox* box, const QStringList& texts, int row)
{
    const QSignalBlocker blocker(box);
    box->clear();
    box->addItems(texts);
    if (row >= 0) {
        box->setCurrentIndex(row);
    }
}

} // namespace

// Lists

void KdWebcamRecordPanel::InitUI()
{
    logInfo("KdWebcamRecordPanel::InitUI", "InitUI BEGIN");
    m_pUi->display->stopRender();
    const Presence here(this);
    sendOrder(KdWebcamOrder::StopPreview);
    if (!here) {
        return;
    }
    loadWebcamDeviceItems();
    if (!here) {
        return;
    }
    enableStart();
    reloadFormats();
    loadAudioDeviceItems();
    if (here) {
        showDeviceTips();
        logInfo("KdWebcamRecordPanel::InitUI", "InitUI END");
    }
}

bool KdWebcamRecordPanel::loadWebcamDeviceItems()
{
    const char* const function = "KdWebcamRecordPanel::loadWebcamDeviceItems";
    const QList<_KdCaptureDevInf> devices = m_pRecorder->getWebcamDevices();
    const QStringList names = KdDeviceBox::names(devices);
    logCount(function, "Camera devices count: %d", names.size());
    const QString stored = KRecordSettingParam::instance()->data().selectedCameraDeviceName;
    const bool hadDevice = m_pCameras->hasDevice();
    m_pCameras->fillWith(devices, KdDeviceChoice::rowToSelect(names, QString(), stored));
    showStatus();
    if (hadDevice && names.isEmpty()) {
        m_pUi->announcer->tellNoDevice();
    }
    if (!m_pCameras->hasDevice()) {
        return false;
    }
    logInfo(function, "Switch camera BEGIN");
    const Presence here(this);
    Q_EMIT sigSetCurrentWebCamDevice(m_pCameras->currentRow());
    if (!here) {
        return false;
    }
    m_pUi->display->startRenderDelay();
    logInfo(function, "Switch camera END");
    return true;
}

bool KdWebcamRecordPanel::loadAudioDeviceItems()
{
    const QList<_KdCaptureDevInf> devices = m_pRecorder->getAudioDevices();
    const QStringList names = KdDeviceBox::names(devices);
    logCount("KdWebcamRecordPanel::loadAudioDeviceItems", "Audio devices count: %d", names.size());
    const QString stored = KRecordSettingParam::instance()->data().selectedAudioDeviceName;
    m_pMicrophones->fillWith(devices, KdDeviceChoice::rowToSelect(names, QString(), stored));
    if (!m_pMicrophones->hasDevice()) {
        return false;
    }
    const Presence here(this);
    Q_EMIT sigSetCurrentAudioDevice(m_pMicrophones->currentRow());
    return here;
}

void KdWebcamRecordPanel::reloadFormats()
{
    if (!m_pCameras->hasDevice()) {
        fillFormats(m_pUi->resolution, {}, -1);
        fillFormats(m_pUi->frameRate, {}, -1);
        return;
    }
    reloadResolutions();
    const double stored = KRecordSettingParam::instance()->data().frameRate;
    reloadFrameRates(KdWebcamFormatChoice::chosenRate(stored, m_pRecorder->getCurrentFrameRate()));
    applyChosenRate();
}

void KdWebcamRecordPanel::reloadResolutions()
{
    QList<QSize> sizes;
    m_pRecorder->getValidResolutions(sizes);
    const KRecordSettingData stored = KRecordSettingParam::instance()->data();
    const QSize size = KdWebcamFormatChoice::chosenSize({stored.cameraWidth, stored.cameraHeight},
                                                        sizes, m_pRecorder->getCurrentResolution());
    if (!size.isEmpty()) {
        m_pRecorder->slotSetCurrentResolution(size);
    }
    QStringList texts;
    for (const QSize& offered : qAsConst(sizes)) {
        texts.append(KdWebcamFormatChoice::sizeText(offered));
    }
    fillFormats(m_pUi->resolution, texts, sizes.indexOf(size));
}

void KdWebcamRecordPanel::reloadFrameRates(double rate)
{
    QList<double> rates;
    m_pRecorder->getValidFrameRates(rates);
    QStringList texts;
    for (const double offered : qAsConst(rates)) {
        texts.append(KdWebcamFormatChoice::rateText(offered));
    }
    fillFormats(m_pUi->frameRate, texts, KdWebcamFormatChoice::rateRow(rates, rate));
    for (int row = 0; row < rates.size(); ++row) {
        m_pUi->frameRate->setItemData(row, rates.at(row));
    }
}

void KdWebcamRecordPanel::retranslateFrameRates()
{
    for (int row = 0; row < m_pUi->frameRate->count(); ++row) {
        const double rate = m_pUi->frameRate->itemData(row).toDouble();
        m_pUi->frameRate->setItemText(row, KdWebcamFormatChoice::rateText(rate));
    }
}

// The recorder starts a size at its first rate, while the list shows the user's choice.
void KdWebcamRecordPanel::applyChosenRate()
{
    QList<double> rates;
    m_pRecorder->getValidFrameRates(rates);
    const double shown = rates.value(m_pUi->frameRate->currentIndex());
    if (shown > 0.0 && !qFuzzyCompare(shown, m_pRecorder->getCurrentFrameRate())) {
        m_pRecorder->slotSetCurrentFrameRate(shown);
    }
}

void KdWebcamRecordPanel::showDeviceTips()
{
    m_pUi->camera->setToolTip(KdText::toolTip(m_pCameras->currentText()));
    m_pUi->microphone->setToolTip(KdText::toolTip(m_pMicrophones->currentText()));
}

void KdWebcamRecordPanel::enableStart()
{
    // A take can be stopped whatever has become of the camera.
    m_pUi->startStop->setEnabled(m_pCameras->hasDevice() || m_pUi->startStop->isChecked());
}

void KdWebcamRecordPanel::showStatus()
{
    const bool hasCamera = m_pCameras->hasDevice();
    const bool isRecording = isTakeRunning();
    m_pUi->setHintVisible(!hasCamera);
    m_pUi->showStatus(!hasCamera    ? tr("No Device")
                      : isRecording ? tr("Recording")
                                    : tr("Live Record"),
                      hasCamera && isRecording);
}

// The user's choices

void KdWebcamRecordPanel::slotOnVideoDeviceChanged(int index)
{
    m_pUi->display->stopRender();
    const Presence here(this);
    sendOrder(KdWebcamOrder::StopPreview);
    if (!here || !m_pCameras->hasDevice()) {
        return;
    }
    const int device = m_pCameras->indexIn(m_pRecorder->getWebcamDevices(), index);
    if (device < 0) {
        // It has gone since the list was filled.
        noteDeviceChange();
    } else {
        Q_EMIT sigSetCurrentWebCamDevice(device);
        if (!here) {
            return;
        }
        giveOptions();
    }
    keepFormerCamera();
}

void KdWebcamRecordPanel::giveOptions()
{
    m_pRecorder->setRecordFlip(m_pUi->display->isFlipped());
    m_pRecorder->setRecordDisplayShape(m_pUi->display->shape());
    m_pRecorder->setAIEffectType(m_pUi->display->backgroundMode());
}

// A camera that the engine refuses leaves the former one current: show that one, and its picture.
void KdWebcamRecordPanel::keepFormerCamera()
{
    const _KdCaptureDevInf current = m_pRecorder->getCurrentWebCamDeviceInfo();
    if (!m_pCameras->choose(m_pCameras->rowOf(current))) {
        return;
    }
    showDeviceTips();
    const int device = KdDeviceBox::indexOf(m_pRecorder->getWebcamDevices(), current);
    if (device < 0) {
        return;
    }
    const Presence here(this);
    Q_EMIT sigSetCurrentWebCamDevice(device);
    if (here) {
        giveOptions();
    }
}

void KdWebcamRecordPanel::slotOnAudioDeviceChanged(int index)
{
    if (m_pMicrophones->hasDevice()) {
        const Presence here(this);
        const int device = m_pMicrophones->indexIn(m_pRecorder->getAudioDevices(), index);
        if (device < 0) {
            noteDeviceChange();
        } else {
            Q_EMIT sigSetCurrentAudioDevice(device);
        }
        if (!here) {
            return;
        }
        m_pMicrophones->choose(m_pMicrophones->rowOf(m_pRecorder->getCurrentAudioDeviceInfo()));
    }
    showDeviceTips();
}

// The recorder may have read its devices anew since the list was filled, and counts by its own.
int KdWebcamRecordPanel::microphoneOfTake() const
{
    if (!m_pMicrophones->hasDevice()) {
        return -1;
    }
    const int index = KdDeviceBox::indexOf(m_pRecorder->getAudioDevices(),
                                           m_pRecorder->getCurrentAudioDeviceInfo());
    return index >= 0 ? index : m_pMicrophones->currentRow();
}

void KdWebcamRecordPanel::slotOnResoutionChanged(int index)
{
    QList<QSize> sizes;
    m_pRecorder->getValidResolutions(sizes);
    if (index < 0 || index >= sizes.size()) {
        return;
    }
    m_pUi->display->stopRender();
    logInfo("KdWebcamRecordPanel::slotOnResoutionChanged", "switch resoution");
    const QPointer<KdWebcamRecordPanel> self(this);
    Q_EMIT sigSetCurrentResolution(sizes.at(index));
    if (self) {
        logInfo("KdWebcamRecordPanel::slotOnResoutionChanged", "switch resoution updateUI");
    }
}

void KdWebcamRecordPanel::slotOnFrameRateChanged(int index)
{
    QList<double> rates;
    m_pRecorder->getValidFrameRates(rates);
    if (index >= 0 && index < rates.size()) {
        Q_EMIT sigSetCurrentFrameRate(rates.at(index));
    }
}

void KdWebcamRecordPanel::slotWebcamFrameChanged(int width, int height, uint8_t* bits)
{
    if (KdWebCamDisplayLabel* const display = m_pDisplay) {
        display->WebcamFrameChanged(width, height, bits);
    }
}

void KdWebcamRecordPanel::slotOnVoiceVulomeChanged(int volume)
{
    constexpr double kGain = 3.0;
    m_pUi->meter->setVolume(m_lostAudio ? 0.0 : volume * kGain);
}

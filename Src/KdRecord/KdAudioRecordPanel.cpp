#include <KdRecord/KdAudioRecordPanel.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdBaseLog.h>
#include <KdRecord/KAdvanceBtn.h>
#include <KdRecord/KAdvanceSettings.h>
#include <KdRecord/KAudioAdvanceMapping.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KRecordVideoAdvancedExposeEvent.h>
#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdAudioDeviceBoxes.h>
#include <KdRecord/KdAudioRecordHelper.h>
#include <KdRecord/KdAudioRecordPanelUi.h>
#include <KdRecord/KdCountCtrl.h>
#include <KdRecord/KdOverlayPlace.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdRecord/KdShortcutWatch.h>
#include <KdRecord/KdTakeTime.h>
#include <KdRecord/KdTakeWatch.h>
#include <KdVBLModel/KdProject.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdOpenFileLineEdit.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdText.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <QCloseEvent>
#include <QFile>
#include <QTimer>

#include <utility>

namespace {

constexpr char kSourceFile[] = "Src/KdRecord/KdAudioRecordPanel";
constexpr int kDeviceRebuildMs = 100;
constexpr QSize kAdvanceSettingsSize(480, 473);

float projectFramesPerSecond()
{
    qint64 numerator = 0;
    qint64 denominator = 0;
    KdVBLMODEL::toFrameRate(IKdProjectManager::getInstance()->frameRate(), numerator, denominator);
    return KdTakeTime::framesPerSecond(numerator, denominator);
}

KSettings* appSettings()
{
    return KdAppSettings::GetInstance()->GetSettings();
}

} // namespace

KdAudioRecordPanel::KdAudioRecordPanel(QWidget* parent)
    : KdWidget(parent)
    , m_projectFps(projectFramesPerSecond())
    , m_pRecorderHelper(new KdAudioRecorderHelper(this))
    , m_pUi(std::make_unique<KdAudioRecordPanelUi>(this))
    , m_pDevices(std::make_unique<KdAudioDeviceBoxes>(m_pUi->device, m_pUi->input))
    , m_notices(this)
    , m_pShortcut(new KdShortcutWatch(this))
    , m_pCountdownPlace(new KdOverlayPlace(m_pUi->countdown, m_pUi->startStop))
    , m_pTakeWatch(new KdTakeWatch([this] { return status(); }, this))
    , m_localTime([] { return QDateTime::currentDateTime(); })
{
    m_pUi->mute->setChecked(appSettings()->GetGeneralSettings()->isAudioRecordingCheckMult());
    m_pUi->seconds->setValue(KRecordSettingParam::instance()->data().countdown);
    m_pUi->time->setText(KdTakeTime::toText(0));
    m_pUi->setTimeEnabled(false);
    InitUI(false);
    TranslateText();
    connectTakeControls();
    connectSettings();
    connectRecorder();
    m_pShortcut->start();
}

KdAudioRecordPanel::~KdAudioRecordPanel() = default;

void KdAudioRecordPanel::connectTakeControls()
{
    using Panel = KdAudioRecordPanel;
    connect(m_pUi->startStop, &QToolButton::clicked, this, &Panel::slotOnStartStopClicked);
    connect(m_pUi->stop, &QToolButton::clicked, this, &Panel::slotStopButtonClicked);
    connect(m_pUi->reRecord, &QToolButton::clicked, this, &Panel::slotReRecord);
    connect(m_pUi->pause, &QToolButton::clicked, this, &Panel::slotPauseContinue);
    connect(m_pUi->countdown, &KdCountCtrl::sigFinish, this, &Panel::slotCountViewFinished);
    connect(m_pUi->countdown, &KdCountCtrl::sigPressed, this, &Panel::slotCountViewPressed);
}

void KdAudioRecordPanel::connectSettings()
{
    using Panel = KdAudioRecordPanel;
    connect(m_pUi->device, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &Panel::slotOnAudioDeviceChanged);
    connect(m_pUi->refresh, &QToolButton::clicked, this, &Panel::slotRefreshDevices);
    connect(m_pUi->advance, &QAbstractButton::clicked, this, &Panel::slotOnAdvanceButtonClicked);
    connect(m_pUi->folder, &KdOpenFileLineEdit::textChanged, this, &Panel::slotOnSavePathChanged);
    connect(m_pUi->seconds, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &Panel::slotCountdownChanged);
    connect(m_pUi->mute, &QCheckBox::clicked, this, [this](bool checked) {
        appSettings()->GetGeneralSettings()->setIsAudioRecordingCheckMult(checked);
        Q_EMIT sigMute(checked);
    });
    connect(m_pUi->ok, &QPushButton::clicked, this, &Panel::slotOnOkButtonClicked);
}

void KdAudioRecordPanel::connectRecorder()
{
    using Panel = KdAudioRecordPanel;
    using Helper = KdAudioRecorderHelper;
    connect(m_pRecorderHelper, &Helper::sigRecordedTime, this, &Panel::slotCaptureTime);
    connect(m_pRecorderHelper, &Helper::sigRecorderVolume, this, &Panel::slotCaptureVolume);
    connect(m_pRecorderHelper, &Helper::sigDeviceStatus, this, &Panel::slotDeviceStatusChanged);
    connect(m_pShortcut, &KdShortcutWatch::sigPressed, this, &Panel::slotSpaceShortcutActivated);
    connect(m_pTakeWatch, &KdTakeWatch::sigTakeEnded, this, &Panel::takeEndedByItself);
}

KdVBLMODEL::_KdCaptureStatus KdAudioRecordPanel::status() const
{
    return m_pRecorderHelper ? m_pRecorderHelper->curStatus() : KdVBLMODEL::fcsNoStart;
}

bool KdAudioRecordPanel::isMuted() const
{
    return m_pUi->mute->isChecked();
}

void KdAudioRecordPanel::setTakeClock(const KdMinimumTake::Clock& clock)
{
    m_elapsed = KdMinimumTake(clock);
}

void KdAudioRecordPanel::setLocalTime(std::function<QDateTime()> localTime)
{
    m_localTime = std::move(localTime);
}

void KdAudioRecordPanel::setFolderCheck(const KdOutputFolderCheck& check)
{
    m_folderCheck = check;
}

// Texts

void KdAudioRecordPanel::RetranslateUi()
{
    TranslateText();
}

void KdAudioRecordPanel::TranslateText()
{
    m_pUi->retranslate();
    m_pUi->folder->setText(appSettings()->GetFolderSettings()->GetRecorderVoiceFolder());
    KdRecordWidgets::showStartTip(m_pUi->startStop);
    KdRecordWidgets::showStopTip(m_pUi->stop);
    KdRecordWidgets::showPauseTip(m_pUi->pause);
    m_pUi->pause->setProperty("WITH_SHORTCUT", true);
    m_pDevices->retranslate();
}

// Devices

void KdAudioRecordPanel::InitUI(bool closePopup)
{
    if (!m_pRecorderHelper) {
        return;
    }
    QList<KdVBLMODEL::_KdCaptureDevInf> devices;
    m_pRecorderHelper->getValidAudioDevices(devices);
    if (closePopup) {
        m_pDevices->closeList();
    }
    const QString stored = KRecordSettingParam::instance()->data().selectedAudioDeviceName;
    const bool hadDevice = m_pDevices->hasDevice();
    const int row = m_pDevices->fill(devices, stored);
    if (hadDevice && devices.isEmpty()) {
        m_pUi->announcer->tellNoDevice();
    }
    if (row >= 0) {
        m_pRecorderHelper->setCurrentDevice(row);
    } else {
        m_pUi->meter->setVolume(0.0);
    }
    enableStart();
}

void KdAudioRecordPanel::enableStart()
{
    // A take can be stopped whatever has become of the devices.
    m_pUi->startStop->setEnabled(m_pDevices->hasDevice() || m_pUi->startStop->isChecked());
}

void KdAudioRecordPanel::slotRefreshDevices()
{
    InitUI(false);
}

void KdAudioRecordPanel::slotOnAudioDeviceChanged(int index)
{
    if (!m_pRecorderHelper || index < 0) {
        return;
    }
    m_pRecorderHelper->setCurrentDevice(index);
    m_pDevices->retranslate();
    KdConfigEngine::instance()->setValue(1, QStringLiteral("AudioRecord"),
                                         QStringLiteral("AudioDevice"), m_pDevices->currentName());
}

void KdAudioRecordPanel::slotDeviceStatusChanged(KdVBLMODEL::KdCaptureDeviceStatus status,
                                                 int deviceIdx)
{
    if (!m_pRecorderHelper) {
        return;
    }
    const QPointer<KdAudioRecordPanel> self(this);
    const bool isActive = m_pRecorderHelper->curStatus() != KdVBLMODEL::fcsNoStart;
    // An engine that ended the take by itself says "not started"; the panel has not stopped it yet.
    if (status == KdVBLMODEL::fcdAudioInputRemoved && (isActive || isTakeRunning())) {
        handleDeviceLost(status, deviceIdx);
    }
    if (self) {
        QTimer::singleShot(kDeviceRebuildMs, this, [this] { InitUI(m_pDevices->isListOpen()); });
    }
}

void KdAudioRecordPanel::handleDeviceLost(int status, int deviceIdx)
{
    KdBaseLog::write(KdBaseLog::Info, {kSourceFile, "KdAudioRecordPanel::slotDeviceStatusChanged"},
                     "status: %d, deviceIdx: %d, record status: %d", status, deviceIdx,
                     static_cast<int>(m_pRecorderHelper->curStatus()));
    KdVBLMODEL::KdCaptureDevInfo lost;
    m_pRecorderHelper->getCurrentDeviceInfo(lost);
    // The list was perhaps rebuilt without the device, which made another one the current one.
    const QString name = isTakeRunning() ? m_strTakeDevice : lost.name;
    const QPointer<KdAudioRecordPanel> self(this);
    if (m_pUi->startStop->isChecked()) {
        slotStopButtonClicked();
    }
    if (self && m_pRecorderHelper) {
        m_notices.tellDeviceLost(name);
    }
}

// Settings

void KdAudioRecordPanel::slotOnSavePathChanged(const QString& strPath)
{
    appSettings()->GetFolderSettings()->SetRecoderVoiceFolder(strPath);
}

void KdAudioRecordPanel::slotCountdownChanged(double value)
{
    appSettings()->GetGeneralSettings()->SetRecordAudioCountdown(static_cast<int>(value));
}

void KdAudioRecordPanel::slotOnAdvanceButtonClicked()
{
    KRecordVideoAdvancedExposeEvent(KRecordAdvancedEvent::AudioRecorder).sendEvent();
    const QPointer<KdAudioRecordPanel> self(this);
    KAdvanceSettings* const dialog = advanceSettings();
    dialog->resetParaChanged();
    const int result = m_notices.runModal([dialog] { return dialog->exec(); });
    if (self && m_pAdvanceSettings && result == QDialog::Accepted) {
        KAudioAdvanceMapping::write(dialog->data(), *appSettings()->GetAudioAdvanceSettings());
    }
}

KAdvanceSettings* KdAudioRecordPanel::advanceSettings()
{
    if (!m_pAdvanceSettings) {
        m_pAdvanceSettings = new KAdvanceSettings(this);
        m_pAdvanceSettings->loadData(
            KAudioAdvanceMapping::read(*appSettings()->GetAudioAdvanceSettings()));
        connect(m_pAdvanceSettings, &KAdvanceSettings::sigParaChange, this, [] {
            KdBaseLog::write(KdBaseLog::Info, {kSourceFile, "KdAudioRecordPanel::advanceSettings"},
                             "The advanced settings were changed");
        });
        m_pAdvanceSettings->setFixedSize(kAdvanceSettingsSize);
    }
    return m_pAdvanceSettings;
}

// Window and keyboard

void KdAudioRecordPanel::slotOnOkButtonClicked()
{
    const QPointer<KdAudioRecordPanel> self(this);
    if (QFile::exists(m_strOutputFile)) {
        m_mainWindowLock.setLocked(false);
        StopRecord(false);
    }
    KdAppSettings::GetInstance()->Save();
    if (self) {
        Q_EMIT sigClose();
    }
}

void KdAudioRecordPanel::closeEvent(QCloseEvent* event)
{
    const QPointer<KdAudioRecordPanel> self(this);
    m_mainWindowLock.setLocked(false);
    KdAppSettings::GetInstance()->Save();
    StopRecord(true);
    if (!self) {
        return;
    }
    if (m_pRecorderHelper) {
        m_pRecorderHelper->removeEventObservers();
        delete std::exchange(m_pRecorderHelper, nullptr);
    }
    m_pShortcut->stop();
    m_notices.closeTakeNotices();
    KdWidget::closeEvent(event);
}

void KdAudioRecordPanel::showEvent(QShowEvent* event)
{
    const QPointer<KdAudioRecordPanel> self(this);
    Q_EMIT sigMute(m_pUi->mute->isChecked());
    if (!self) {
        return;
    }
    if (m_pUi->countdown->isActive()) {
        m_pUi->countdown->show();
    }
    KdWidget::showEvent(event);
}

void KdAudioRecordPanel::hideEvent(QHideEvent* event)
{
    m_pUi->countdown->hide();
    KdWidget::hideEvent(event);
}

void KdAudioRecordPanel::resizeEvent(QResizeEvent* event)
{
    KdWidget::resizeEvent(event);
    m_pCountdownPlace->place();
}

bool KdAudioRecordPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Move && watched == parentWidget()) {
        m_pCountdownPlace->place();
    }
    return m_pShortcut->takes(event);
}

void KdAudioRecordPanel::keyPressEvent(QKeyEvent* event)
{
    if (!m_pShortcut->pressedFocusedButton(event)) {
        KdWidget::keyPressEvent(event);
    }
}

#include <KdRecord/KdWebcamRecordPanel.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdDeviceBox.h>
#include <KdRecord/KdOverlayPlace.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdRecord/KdShortcutWatch.h>
#include <KdRecord/KdTakeWatch.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecordPanelUi.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdPushButton.h>

#include <QPointer>
#include <QTimer>

#include <utility>

using namespace KdVBLMODEL;

namespace {

constexpr int kDeviceChangeMs = 1200;
constexpr int kDeviceLostMs = 500;
constexpr int kRecordTimeMs = 1000;

} // namespace

KdWebcamRecordPanel::KdWebcamRecordPanel(QWidget* parent)
    : KdWidget(parent)
    , m_notices(this)
    , m_pShortcut(new KdShortcutWatch(this))
    , m_pTakeWatch(new KdTakeWatch([this] { return takeStatus(); }, this, kRecordTimeMs))
    , m_pDeviceChangeTimer(makeTimer(QStringLiteral("KCameraCapture_DeviceChangeTimer"),
                                     kDeviceChangeMs, &KdWebcamRecordPanel::lookForDeviceChange))
    , m_pDeviceLostTimer(makeTimer(QStringLiteral("KCameraCapture_DeviceLostTimer"), kDeviceLostMs,
                                   &KdWebcamRecordPanel::slotDeviceLostTimer))
    , m_localTime([] { return QDateTime::currentDateTime(); })
{
    makeRecorder();
    makeWidgets();
    TranslateText();
    showIdle();
    connectTakeControls();
    connectChoices();
    connectDisplay();
    m_pShortcut->start();
}

KdWebcamRecordPanel::~KdWebcamRecordPanel()
{
    // Not by signal: no one may be called from here.
    if (isTakeRunning() || status() != fcsNoStart) {
        m_pRecorder->slotWebcamRecorderOrderType(KdWebcamOrder::StopTake);
        dropTake();
    }
    m_pRecorder->slotWebcamRecorderOrderType(KdWebcamOrder::StopPreview);
    // Frames go to the display on engine threads. The adapter's destructor waits for them, so it
    // comes before the display's.
    delete std::exchange(m_pRecorder, nullptr);
}

void KdWebcamRecordPanel::makeRecorder()
{
    using Panel = KdWebcamRecordPanel;
    using Helper = KdWebcamRecorderHelper;
    m_pRecorder = new Helper(this);
    connect(m_pRecorder, &Helper::sigRecorderResponeType, this, &Panel::slotRecorderResponeType);
    connect(m_pRecorder, &Helper::sigWebCamFrameChanged, this, &Panel::slotWebcamFrameChanged,
            Qt::DirectConnection);
    connect(m_pRecorder, &Helper::sigRecordedTime, this, &Panel::slotCaptureTime);
    connect(m_pRecorder, &Helper::sigRecorderVolume, this, &Panel::slotOnVoiceVulomeChanged);
    connect(this, &Panel::sigWebcamRecorderOrderType, m_pRecorder,
            &Helper::slotWebcamRecorderOrderType);
    connect(this, &Panel::sigSetCurrentWebCamDevice, m_pRecorder,
            &Helper::slotSetCurrentWebCamDevice);
    connect(this, &Panel::sigSetCurrentAudioDevice, m_pRecorder,
            &Helper::slotSetCurrentAudioDevice);
    connect(this, &Panel::sigSetCurrentResolution, m_pRecorder, &Helper::slotSetCurrentResolution);
    connect(this, &Panel::sigSetCurrentFrameRate, m_pRecorder, &Helper::slotSetCurrentFrameRate);
    sendOrder(KdWebcamOrder::Init);
}

QTimer* KdWebcamRecordPanel::makeTimer(const QString& name, int milliseconds,
                                       void (KdWebcamRecordPanel::*fired)())
{
    auto* const timer = new QTimer(this);
    timer->setObjectName(name);
    timer->setSingleShot(true);
    timer->setInterval(milliseconds);
    connect(timer, &QTimer::timeout, this, fired);
    return timer;
}

void KdWebcamRecordPanel::makeWidgets()
{
    m_pUi = std::make_unique<KdWebcamRecordPanelUi>(this);
    m_pDisplay = m_pUi->display;
    m_pCameras = std::make_unique<KdDeviceBox>(m_pUi->camera);
    m_pMicrophones = std::make_unique<KdDeviceBox>(m_pUi->microphone);
    m_pCountdownPlace = new KdOverlayPlace(m_pUi->countdown, m_pUi->display);
    const KRecordSettingData stored = KRecordSettingParam::instance()->data();
    m_pUi->seconds->setValue(stored.countdown);
    m_pUi->preview->setChecked(stored.recordPreview);
}

void KdWebcamRecordPanel::connectTakeControls()
{
    using Panel = KdWebcamRecordPanel;
    connect(m_pUi->startStop, &QToolButton::clicked, this, &Panel::slotOnStartStopClicked);
    connect(m_pUi->reRecord, &QToolButton::clicked, this, &Panel::slotReRecord);
    connect(m_pUi->pause, &QToolButton::clicked, this, &Panel::slotPauseContinue);
    connect(m_pUi->countdown, &KdCountCtrl::sigFinish, this, &Panel::slotOnCountCtrlFinished);
    connect(m_pUi->ok, &QPushButton::clicked, this, &Panel::slotOnOkButtonClicked);
    connect(m_pShortcut, &KdShortcutWatch::sigPressed, this, &Panel::slotSpaceShortcutActivated);
    connect(m_pTakeWatch, &KdTakeWatch::sigTakeEnded, this, &Panel::takeEndedByItself);
}

void KdWebcamRecordPanel::connectChoices()
{
    using Panel = KdWebcamRecordPanel;
    const auto chosen = qOverload<int>(&QComboBox::currentIndexChanged);
    connect(m_pUi->camera, chosen, this, &Panel::slotOnVideoDeviceChanged);
    connect(m_pUi->microphone, chosen, this, &Panel::slotOnAudioDeviceChanged);
    connect(m_pUi->frameRate, chosen, this, &Panel::slotOnFrameRateChanged);
    connect(m_pUi->resolution, chosen, this, &Panel::slotOnResoutionChanged);
    connect(m_pUi->seconds, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &Panel::slotCountdownChanged);
    connect(m_pUi->preview, &QCheckBox::stateChanged, this, &Panel::slotStateChanged);
    m_pUi->seconds->installEventFilter(this);
}

void KdWebcamRecordPanel::connectDisplay()
{
    m_pUi->display->setActionHandleForFlipChange([this](bool flipped) {
        m_pUi->display->setFlipped(flipped);
        m_pRecorder->setRecordFlip(flipped);
        return true;
    });
    m_pUi->display->setActionHandleForShapeChange([this](KdVBLMODEL::_KdCaptureRecordShape shape) {
        m_pUi->display->setShape(shape);
        m_pRecorder->setRecordDisplayShape(shape);
        return true;
    });
    m_pUi->display->setActionHandleForBackgroundChange(
        [this](KdVBLMODEL::_KdCaptureRecordBackgroundMode mode) {
            m_pRecorder->setAIEffectType(mode);
            m_pUi->display->setBackgroundMode(mode);
            return true;
        });
    // The recorder learns what the user chose the last time.
    m_pUi->display->useUserSettings();
}

bool KdWebcamRecordPanel::sendOrder(int order)
{
    const QPointer<KdWebcamRecordPanel> self(this);
    Q_EMIT sigWebcamRecorderOrderType(order);
    return self;
}

bool KdWebcamRecordPanel::isRecordPreview() const
{
    return m_pUi->preview->isChecked();
}

void KdWebcamRecordPanel::placeCountdown()
{
    m_pCountdownPlace->place();
}

KdVBLMODEL::_KdCaptureStatus KdWebcamRecordPanel::status() const
{
    return m_pRecorder->curStatus();
}

KdVBLMODEL::_KdCaptureRecordShape KdWebcamRecordPanel::recordDisplayShape() const
{
    return m_pRecorder->getRecordDisplayShape();
}

KdVBLMODEL::_KdCaptureRecordBackgroundMode KdWebcamRecordPanel::aiEffectType() const
{
    return m_pRecorder->getCurAIEffectType();
}

bool KdWebcamRecordPanel::isRecordFlipped() const
{
    return m_pRecorder->getRecordFlip();
}

void KdWebcamRecordPanel::setTakeClock(const KdMinimumTake::Clock& clock)
{
    m_elapsed = KdMinimumTake(clock);
}

void KdWebcamRecordPanel::setLocalTime(std::function<QDateTime()> localTime)
{
    m_localTime = std::move(localTime);
}

void KdWebcamRecordPanel::setFolderCheck(const KdOutputFolderCheck& check)
{
    m_folderCheck = check;
}

// Texts

void KdWebcamRecordPanel::RetranslateUi()
{
    TranslateText();
}

void KdWebcamRecordPanel::TranslateText()
{
    m_pUi->retranslate();
    m_pCameras->retranslate();
    m_pMicrophones->retranslate();
    retranslateFrameRates();
    showDeviceTips();
    showStatus();
    showPreviewText();
    KdRecordWidgets::showStartTip(m_pUi->startStop);
    KdRecordWidgets::showPauseTip(m_pUi->pause);
}

void KdWebcamRecordPanel::showPreviewText()
{
    m_pUi->preview->setText(m_bOffersToOpenPreview ? tr("Open the Recording Preview Window")
                                                   : tr("Close the Recording Preview Window"));
}

void KdWebcamRecordPanel::slotStateChanged(int state)
{
    m_bOffersToOpenPreview = state != Qt::Unchecked;
    showPreviewText();
}

void KdWebcamRecordPanel::slotCountdownChanged(double value)
{
    KdAppSettings::GetInstance()->GetSettings()->GetGeneralSettings()->SetRecordVideoCountdown(
        static_cast<int>(value));
}

// Window and keyboard

void KdWebcamRecordPanel::showEvent(QShowEvent* event)
{
    if (m_pUi->countdown->isActive()) {
        m_pCountdownPlace->show();
    }
    KdWidget::showEvent(event);
}

void KdWebcamRecordPanel::hideEvent(QHideEvent* event)
{
    m_pUi->countdown->hide();
    KdWidget::hideEvent(event);
}

void KdWebcamRecordPanel::resizeEvent(QResizeEvent* event)
{
    KdWidget::resizeEvent(event);
    placeCountdown();
}

bool KdWebcamRecordPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pUi->seconds) {
        // Every other key is for the field.
        return m_pShortcut->takesShortcut(event);
    }
    return m_pShortcut->takes(event);
}

void KdWebcamRecordPanel::keyPressEvent(QKeyEvent* event)
{
    if (!m_pShortcut->pressedFocusedButton(event)) {
        KdWidget::keyPressEvent(event);
    }
}

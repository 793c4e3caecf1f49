#include <KdRecord/KdWebcamRecordPanelUi.h>

#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdControlKeys.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdCountdownBox.h>
#include <KdRecord/KdLivingLabel.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdLineWidget.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QVariant>

namespace {

using Widgets = KdRecordWidgets;

constexpr QSize kSmallestDisplay(320, 180);
constexpr QSize kStartSize(72, 72);
constexpr QSize kMeterSize(116, 8);
constexpr QSize kCountdownSize(152, 152);
constexpr QSize kLeftChoiceSize(200, 24);
constexpr QSize kRightChoiceSize(170, 24);
constexpr QSize kRightCaptionSize(150, 16);
constexpr QSize kSecondsSize(140, 24);
constexpr QSize kOkSize(62, 24);
constexpr int kStatusHeight = 40;
constexpr int kPreviewHeight = 24;
constexpr int kMargin = 20;

KdComboBox* makeChoice(QWidget* parent, const QString& name, const QSize& size)
{
    auto* const choice = new KdComboBox(parent);
    choice->setObjectName(name);
    choice->setFixedSize(size);
    choice->setFocusPolicy(Qt::NoFocus);
    return choice;
}

KdLabel* makeChoiceCaption(QWidget* parent, QWidget* buddy)
{
    auto* const caption = Widgets::makeCaption(parent, buddy);
    caption->setObjectName(QStringLiteral("KCameraCapture_LabelBack"));
    return caption;
}

KdLabel* makeRightCaption(QWidget* parent, QWidget* buddy)
{
    auto* const caption = makeChoiceCaption(parent, buddy);
    caption->setFixedSize(kRightCaptionSize);
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return caption;
}

} // namespace

KdWebcamRecordPanelUi::KdWebcamRecordPanelUi(QWidget* panel) : m_pPanel(panel)
{
    KdSkin::KdSkinManager::instance()->applyStyleSheet(
        panel, QStringLiteral("Record/KdWebcamRecordPanel"), 0);
    makePicture();
    makeTakeControls();
    makeChoices();
    makeCaptions();
    makeBottom();
    makeKeys();
    layOut();
}

void KdWebcamRecordPanelUi::makePicture()
{
    display = new KdWebCamDisplayLabel(m_pPanel);
    display->setObjectName(QStringLiteral("KCameraCapture_Display"));
    display->setMinimumSize(kSmallestDisplay);
    display->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_pHint = new KdLabel(m_pPanel);
    m_pHint->setObjectName(QStringLiteral("KCameraCapture_Hint"));
    m_pHint->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pHint->hide();

    countdown = new KdCountCtrlVideo(m_pPanel);
    countdown->setObjectName(QStringLiteral("KCameraCapture_Countdown"));
    countdown->setFixedSize(kCountdownSize);
    // Without a compositor what is left free around the disc would be black.
    countdown->setMask(QRegion(countdown->rect(), QRegion::Ellipse));
}

void KdWebcamRecordPanelUi::makeTakeControls()
{
    status = new KdLivingLabel(m_pPanel);
    status->setObjectName(QStringLiteral("KCameraCapture_Status"));
    status->setFixedHeight(kStatusHeight);
    startStop =
        Widgets::makeStyledButton(m_pPanel, QStringLiteral("KProDlg_KCameraCptBtn"), kStartSize);
    startStop->setCheckable(true);
    startStop->setFocusPolicy(Qt::NoFocus);
    reRecord =
        Widgets::makeReRecordButton(m_pPanel, QStringLiteral("KCameraCapture_ButtonReRecord"));
    pause = Widgets::makePauseButton(m_pPanel, QStringLiteral("KCameraCapture_ButtonPause"));
    time = Widgets::makeTimeLabel(m_pPanel, QStringLiteral("KCameraCapture_TimeLabel"));
    m_pTimeCaption = Widgets::makeCaption(m_pPanel);
    announcer = new KdAnnouncer(m_pPanel);
    meter = new KdAudioVolumeWidget(m_pPanel);
    meter->setObjectName(QStringLiteral("KCameraCapture_VolumeMeter"));
    meter->setFixedSize(kMeterSize);
}

void KdWebcamRecordPanelUi::makeChoices()
{
    camera = makeChoice(m_pPanel, QStringLiteral("KCameraCapture_VideoBox"), kLeftChoiceSize);
    microphone = makeChoice(m_pPanel, QStringLiteral("KCameraCapture_AudioBox"), kRightChoiceSize);
    resolution =
        makeChoice(m_pPanel, QStringLiteral("KCameraCapture_ResolutionBox"), kLeftChoiceSize);
    frameRate =
        makeChoice(m_pPanel, QStringLiteral("KCameraCapture_FrameRateBox"), kRightChoiceSize);
    seconds = KdCountdownBox::create(m_pPanel);
    seconds->setObjectName(QStringLiteral("KCameraCapture_CountdownBox"));
    seconds->setButtonSymbols(QAbstractSpinBox::NoButtons);
    seconds->setFocusPolicy(Qt::ClickFocus);
    seconds->setFixedSize(kSecondsSize);
}

void KdWebcamRecordPanelUi::makeCaptions()
{
    m_pCameraCaption = makeChoiceCaption(m_pPanel, camera);
    m_pMicrophoneCaption = makeRightCaption(m_pPanel, microphone);
    m_pResolutionCaption = makeChoiceCaption(m_pPanel, resolution);
    m_pFrameRateCaption = makeRightCaption(m_pPanel, frameRate);
    m_pSecondsCaption = Widgets::makeCaption(m_pPanel, seconds);
    m_pSecondsUnit = Widgets::makeCaption(m_pPanel);
}

void KdWebcamRecordPanelUi::makeBottom()
{
    preview = KdCheckBox::CreateSwitchCheckBox(m_pPanel);
    preview->setObjectName(QStringLiteral("KCameraCapture_PreviewBox"));
    preview->setFixedHeight(kPreviewHeight);
    ok = KdPushButton::CreatePrimaryButton(m_pPanel);
    ok->setObjectName(QStringLiteral("KCameraCapture_OkButton"));
    ok->setMinimumSize(kOkSize);
    ok->setFocusPolicy(Qt::NoFocus);
    // Enter in a field must not close the dialog.
    ok->setAutoDefault(false);
}

/** For what takes no focus by the Tab key. */
void KdWebcamRecordPanelUi::makeKeys()
{
    auto* const keys = new KdControlKeys(m_pPanel);
    keys->add(camera, QStringLiteral("Alt+V"));
    keys->add(microphone, QStringLiteral("Alt+A"));
    keys->add(resolution, QStringLiteral("Alt+R"));
    keys->add(frameRate, QStringLiteral("Alt+F"));
    keys->add(seconds, QStringLiteral("Alt+C"));
    keys->add(ok, QStringLiteral("Alt+O"));
}

void KdWebcamRecordPanelUi::layOut()
{
    auto* const column = new QVBoxLayout(m_pPanel);
    column->setContentsMargins(kMargin, kMargin, kMargin, 16);
    column->setSpacing(0);
    column->addLayout(pictureLayout(), 1);
    column->addSpacing(12);
    column->addLayout(takeRow());
    column->addSpacing(12);
    column->addWidget(new KdLineWidget(Qt::Horizontal, KdSkin::Stroke, m_pPanel));
    column->addSpacing(16);
    column->addLayout(choicesGrid());
    column->addSpacing(16);
    column->addLayout(bottomRow());
}

QLayout* KdWebcamRecordPanelUi::pictureLayout()
{
    auto* const cell = new QGridLayout;
    cell->addWidget(display, 0, 0);
    cell->addWidget(m_pHint, 0, 0, Qt::AlignCenter);
    return cell;
}

QLayout* KdWebcamRecordPanelUi::takeRow()
{
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(34);
    buttons->addWidget(reRecord);
    buttons->addWidget(startStop);
    buttons->addWidget(pause);

    // Columns of equal width on both sides keep the button in the middle.
    auto* const row = new QGridLayout;
    row->setHorizontalSpacing(16);
    row->addWidget(status, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);
    row->addLayout(buttons, 0, 1);
    row->addWidget(timeColumn(), 0, 2, Qt::AlignRight | Qt::AlignVCenter);
    row->setColumnStretch(0, 1);
    row->setColumnStretch(2, 1);
    row->setColumnMinimumWidth(0, 160);
    row->setColumnMinimumWidth(2, 160);
    return row;
}

QWidget* KdWebcamRecordPanelUi::timeColumn()
{
    auto* const block = new QWidget(m_pPanel);
    auto* const column = new QVBoxLayout(block);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pTimeCaption, 0, Qt::AlignHCenter);
    column->addWidget(time, 0, Qt::AlignHCenter);
    column->addSpacing(4);
    column->addWidget(meter, 0, Qt::AlignHCenter);
    return block;
}

QGridLayout* KdWebcamRecordPanelUi::choicesGrid()
{
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(12);
    grid->setColumnMinimumWidth(0, 96);
    grid->setColumnStretch(2, 1);
    grid->addWidget(m_pCameraCaption, 0, 0);
    grid->addWidget(camera, 0, 1);
    grid->addWidget(m_pMicrophoneCaption, 0, 3);
    grid->addWidget(microphone, 0, 4);
    grid->addWidget(m_pResolutionCaption, 1, 0);
    grid->addWidget(resolution, 1, 1);
    grid->addWidget(m_pFrameRateCaption, 1, 3);
    grid->addWidget(frameRate, 1, 4);
    grid->addWidget(m_pSecondsCaption, 2, 0);
    grid->addLayout(countdownRow(), 2, 1);
    return grid;
}

QLayout* KdWebcamRecordPanelUi::countdownRow()
{
    auto* const row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(seconds);
    row->addSpacing(8);
    row->addWidget(m_pSecondsUnit);
    row->addStretch();
    return row;
}

QLayout* KdWebcamRecordPanelUi::bottomRow()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(preview);
    row->addStretch();
    row->addWidget(ok);
    return row;
}

void KdWebcamRecordPanelUi::retranslate()
{
    m_pHint->setText(tr("Connect a webcam, and its picture appears here"));
    m_pTimeCaption->setText(tr("Record Time:"));
    time->setAccessibleDescription(tr("Record Time:"));
    meter->setAccessibleName(tr("Input level"));
    display->setAccessibleName(tr("Webcam picture"));
    Widgets::setTextAndName(m_pCameraCaption, camera, tr("Video Device:"));
    Widgets::setTextAndName(m_pMicrophoneCaption, microphone, tr("Audio:"));
    Widgets::setTextAndName(m_pResolutionCaption, resolution, tr("Resolution:"));
    Widgets::setTextAndName(m_pFrameRateCaption, frameRate, tr("Frame Rate:"));
    Widgets::setTextAndName(m_pSecondsCaption, seconds, tr("Count Down:"));
    m_pSecondsUnit->setText(tr("sec"));
    ok->setText(tr("OK"));
    Widgets::setTipAndName(reRecord, tr("Re-record"));
}

void KdWebcamRecordPanelUi::setChoicesEnabled(bool enable)
{
    const QList<QWidget*> choices{camera,
                                  microphone,
                                  resolution,
                                  frameRate,
                                  seconds,
                                  m_pCameraCaption,
                                  m_pMicrophoneCaption,
                                  m_pResolutionCaption,
                                  m_pFrameRateCaption,
                                  m_pSecondsCaption,
                                  m_pSecondsUnit};
    for (QWidget* const widget : choices) {
        widget->setEnabled(enable);
    }
}

void KdWebcamRecordPanelUi::setTakeButtonsVisible(bool visible)
{
    reRecord->setVisible(visible);
    pause->setVisible(visible);
}

void KdWebcamRecordPanelUi::showStatus(const QString& text, bool isRecording)
{
    status->setProperty("recording", isRecording);
    KdSkin::KdSkinManager::repolish(status);
    status->setText(text);
}

void KdWebcamRecordPanelUi::setHintVisible(bool visible)
{
    m_pHint->setVisible(visible);
}

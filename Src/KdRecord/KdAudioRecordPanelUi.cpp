#include <KdRecord/KdAudioRecordPanelUi.h>

#include <KdRecord/KAdvanceBtn.h>
#include <KdRecord/KdAnnouncer.h>
#include <KdRecord/KdCountCtrl.h>
#include <KdRecord/KdCountdownBox.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdWidgets/KdAudioVolumeWidget.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdLineWidget.h>
#include <KdWidgets/KdOpenFileLineEdit.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

using Widgets = KdRecordWidgets;

constexpr QSize kStartSize(72, 72);
constexpr QSize kCountdownSize(66, 66);
constexpr QSize kMeterSize(116, 8);
constexpr QSize kChoiceSize(204, 24);
constexpr QSize kRefreshSize(24, 24);
constexpr QSize kOkSize(62, 24);
constexpr int kCycleWidth = 4;

KdComboBox* makeChoice(QWidget* parent, const QString& name)
{
    auto* const choice = new KdComboBox(parent);
    choice->setObjectName(name);
    choice->setFixedSize(kChoiceSize);
    return choice;
}

} // namespace

KdAudioRecordPanelUi::KdAudioRecordPanelUi(QWidget* panel) : m_pPanel(panel)
{
    makeTakeControls();
    makeSettings();
    layOut();
    setTabOrder();
    startStop->setFocus();
}

void KdAudioRecordPanelUi::makeTakeControls()
{
    m_pStartPlace = new QWidget(m_pPanel);
    m_pStartPlace->setFixedSize(kStartSize);
    startStop = Widgets::makeStyledButton(
        m_pStartPlace, QStringLiteral("KAudioCapture_RecorderButton"), kStartSize);
    startStop->setCheckable(true);
    stop = Widgets::makeStyledButton(m_pStartPlace, QStringLiteral("KAudioCapture_pButtonStop"),
                                     kStartSize);
    stop->setCheckable(true);
    stop->hide();

    reRecord =
        Widgets::makeReRecordButton(m_pPanel, QStringLiteral("KAudioCapture_ButtonReRecord"));
    pause = Widgets::makePauseButton(m_pPanel, QStringLiteral("KAudioCapture_ButtonPause"));

    time = Widgets::makeTimeLabel(m_pPanel, QStringLiteral("KAudioCapture_TimeLabel"));
    m_pTimeCaption = Widgets::makeCaption(m_pPanel);
    announcer = new KdAnnouncer(m_pPanel);
    meter = new KdAudioVolumeWidget(m_pPanel);
    meter->setObjectName(QStringLiteral("KAudioCapture_VolumeMeter"));
    meter->setFixedSize(kMeterSize);

    countdown = new KdCountCtrl(m_pPanel);
    countdown->setObjectName(QStringLiteral("KAudioCapture_Countdown"));
    countdown->setFixedSize(kCountdownSize);
    countdown->SetCycleWidth(kCycleWidth);
    // Without a compositor what is left free around the disc would be black.
    countdown->setMask(QRegion(countdown->rect(), QRegion::Ellipse));
}

void KdAudioRecordPanelUi::makeSettings()
{
    device = makeChoice(m_pPanel, QStringLiteral("KAudioCapture_DeviceBox"));
    refresh = Widgets::makeStyledButton(m_pPanel, QStringLiteral("KAudioCapture_ButtonRefresh"),
                                        kRefreshSize);
    input = makeChoice(m_pPanel, QStringLiteral("KAudioCapture_InputBox"));
    advance = new KAdvanceBtn(m_pPanel);
    advance->setObjectName(QStringLiteral("KAudioCapture_ButtonAdvance"));

    folder = new KdOpenFileLineEdit(m_pPanel);
    folder->setObjectName(QStringLiteral("KAudioCapture_FolderEdit"));
    folder->setFixedSize(kChoiceSize);
    folder->setBrowseButtonVisible(true);

    seconds = KdCountdownBox::create(m_pPanel);
    seconds->setObjectName(QStringLiteral("KAudioCapture_CountdownBox"));
    seconds->setFixedSize(kChoiceSize);

    mute = new KdCheckBox(m_pPanel);
    mute->setObjectName(QStringLiteral("KAudioCapture_MuteBox"));
    ok = KdPushButton::CreatePrimaryButton(m_pPanel);
    ok->setObjectName(QStringLiteral("KPropertyPanel_Btn"));
    // Enter in a field must not close the dialog.
    ok->setAutoDefault(false);
    ok->setMinimumSize(kOkSize);

    m_pDeviceCaption = Widgets::makeCaption(m_pPanel, device);
    m_pInputCaption = Widgets::makeCaption(m_pPanel, input);
    m_pFolderCaption = Widgets::makeCaption(m_pPanel, folder);
    m_pSecondsCaption = Widgets::makeCaption(m_pPanel, seconds);
    m_pSecondsUnit = Widgets::makeCaption(m_pPanel);
    // In line with the text of the button above it.
    m_pSecondsUnit->setContentsMargins(6, 0, 0, 0);
}

void KdAudioRecordPanelUi::layOut()
{
    auto* const column = new QVBoxLayout(m_pPanel);
    column->setContentsMargins(0, 24, 0, 16);
    column->setSpacing(0);
    column->addLayout(takeButtonsRow());
    column->addSpacing(8);
    column->addLayout(timeColumn());
    column->addSpacing(16);
    column->addWidget(new KdLineWidget(Qt::Horizontal, KdSkin::Stroke, m_pPanel));
    column->addSpacing(16);
    column->addLayout(settingsGrid());
    column->addStretch();
    column->addLayout(bottomRow());
}

QLayout* KdAudioRecordPanelUi::takeButtonsRow()
{
    auto* const row = new QHBoxLayout;
    row->setSpacing(34);
    row->addStretch();
    row->addWidget(reRecord);
    row->addWidget(m_pStartPlace);
    row->addWidget(pause);
    row->addStretch();
    return row;
}

QLayout* KdAudioRecordPanelUi::timeColumn()
{
    auto* const column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(m_pTimeCaption, 0, Qt::AlignHCenter);
    column->addWidget(time, 0, Qt::AlignHCenter);
    column->addSpacing(4);
    column->addWidget(meter, 0, Qt::AlignHCenter);
    return column;
}

QGridLayout* KdAudioRecordPanelUi::settingsGrid()
{
    auto* const grid = new QGridLayout;
    grid->setContentsMargins(32, 0, 24, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(16);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(0, 96);
    int row = 0;
    const auto addRow = [grid, &row](QWidget* caption, QWidget* control, QWidget* beside) {
        grid->addWidget(caption, row, 0);
        grid->addWidget(control, row, 1);
        if (beside) {
            grid->addWidget(beside, row, 2, Qt::AlignLeft | Qt::AlignVCenter);
        }
        ++row;
    };
    addRow(m_pDeviceCaption, device, refresh);
    addRow(m_pInputCaption, input, advance);
    addRow(m_pFolderCaption, folder, nullptr);
    addRow(m_pSecondsCaption, seconds, m_pSecondsUnit);
    return grid;
}

QLayout* KdAudioRecordPanelUi::bottomRow()
{
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(32, 0, 32, 0);
    row->addWidget(mute);
    row->addStretch();
    row->addWidget(ok);
    return row;
}

void KdAudioRecordPanelUi::setTabOrder()
{
    const QList<QWidget*> readingOrder{reRecord,
                                       startStop,
                                       pause,
                                       stop,
                                       device,
                                       refresh,
                                       input,
                                       advance,
                                       folder->lineEdit(),
                                       folder->browseButton(),
                                       seconds,
                                       mute,
                                       ok};
    for (int i = 1; i < readingOrder.size(); ++i) {
        QWidget::setTabOrder(readingOrder.at(i - 1), readingOrder.at(i));
    }
}

void KdAudioRecordPanelUi::retranslate()
{
    m_pTimeCaption->setText(tr("Record Time"));
    time->setAccessibleDescription(tr("Record Time"));
    meter->setAccessibleName(tr("Input level"));
    Widgets::setTextAndName(m_pDeviceCaption, device, tr("Audio Device"));
    Widgets::setTextAndName(m_pInputCaption, input, tr("Input"));
    Widgets::setTextAndName(m_pFolderCaption, folder->lineEdit(), tr("Save to"));
    Widgets::setTextAndName(m_pSecondsCaption, seconds, tr("Count Down"));
    m_pSecondsUnit->setText(tr("sec"));
    mute->setText(tr("Mute Project"));
    ok->setText(tr("OK"));
    advance->setText(tr("Advanced"));
    Widgets::setTipAndName(refresh, tr("Refresh Device"));
    Widgets::setTipAndName(reRecord, tr("Re-record"));
}

void KdAudioRecordPanelUi::setSettingsEnabled(bool enable)
{
    const QList<QWidget*> settings{device,
                                   refresh,
                                   input,
                                   advance,
                                   folder,
                                   seconds,
                                   mute,
                                   ok,
                                   m_pDeviceCaption,
                                   m_pInputCaption,
                                   m_pFolderCaption,
                                   m_pSecondsCaption,
                                   m_pSecondsUnit};
    for (QWidget* const widget : settings) {
        widget->setEnabled(enable);
    }
}

void KdAudioRecordPanelUi::setTimeEnabled(bool enable)
{
    time->setEnabled(enable);
    m_pTimeCaption->setEnabled(enable);
}

void KdAudioRecordPanelUi::setStopVisible(bool visible)
{
    const bool hasFocus = startStop->hasFocus() || stop->hasFocus();
    // What lies below must not have a focus that nobody sees.
    startStop->setFocusPolicy(visible ? Qt::NoFocus : Qt::TabFocus);
    stop->setVisible(visible);
    if (hasFocus) {
        (visible ? stop : startStop)->setFocus();
    }
}

void KdAudioRecordPanelUi::setTakeButtonsVisible(bool visible)
{
    reRecord->setVisible(visible);
    pause->setVisible(visible);
}

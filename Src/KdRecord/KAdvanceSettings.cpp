#include "KAdvanceSettings.h"

#include "KAudioSettings.h"
#include "KRecordVideoAdvancedClickEvent.h"

#include <KdWidgets/KdLineWidget.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdTitleBar.h>

#include <QBoxLayout>

namespace {

constexpr int PageHeight = 359;
// Lower than usual: the owner's size for the dialog leaves the buttons no room to the lower edge
// otherwise.
constexpr int TitleBarHeight = 32;

void reportClick(const QString& name)
{
    KRecordVideoAdvancedClickEvent(KRecordAdvancedEvent::AudioRecorder, name).sendEvent();
}

} // namespace

KAdvanceSettings::KAdvanceSettings(QWidget* parent) : KdFramelessDialog(parent, true, true, 1)
{
    setObjectName(QStringLiteral("KAdvanceSettings"));
    initUI();
    KAdvanceSettings::RetranslateUi();
    connectSignals();
}

KAdvanceSettings::~KAdvanceSettings() = default;

void KAdvanceSettings::initUI()
{
    setButtonBarVisible(false);
    titleBar()->setFixedHeight(TitleBarHeight);
    m_pContent = new QWidget(this);
    m_pAudio = new KAudioSettings(m_pContent, true);
    m_pAudio->setFixedHeight(PageHeight);
    initButtons();

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_pCancel);
    buttons->addSpacing(12);
    buttons->addWidget(m_pApply);
    buttons->setSpacing(0);

    auto* const layout = new QVBoxLayout(m_pContent);
    layout->setContentsMargins(32, 12, 32, 0);
    layout->setSpacing(0);
    layout->addWidget(new KdLineWidget(Qt::Horizontal, KdSkin::Stroke, m_pContent));
    layout->addSpacing(16);
    layout->addWidget(m_pAudio);
    layout->addSpacing(16);
    layout->addLayout(buttons);
    layout->addStretch();
    setContentWidget(m_pContent);
}

void KAdvanceSettings::initButtons()
{
    m_pCancel = KdPushButton::CreatePrimaryButton(m_pContent, QString(), KdPushButton::Size24);
    m_pCancel->setObjectName(QStringLiteral("KAdvanceSettings_Cancel"));
    m_pApply = KdPushButton::CreateSecondaryButton(m_pContent, QString(), KdPushButton::Size24);
    m_pApply->setObjectName(QStringLiteral("KAdvanceSettings_Apply"));
    // Return presses the button that has the focus; without autoDefault it would always press the
    // default one.
    m_pCancel->setAutoDefault(true);
    m_pApply->setAutoDefault(true);
    m_pCancel->setDefault(true);
}

void KAdvanceSettings::connectSignals()
{
    connect(m_pApply, &KdPushButton::clicked, this, [this] {
        reportClick(QStringLiteral("apply"));
        slotApply();
    });
    connect(m_pCancel, &KdPushButton::clicked, this, &KAdvanceSettings::slotCancel);
    connect(m_pAudio, &KAudioSettings::sigParaChange, this, &KAdvanceSettings::slotAudioParaChange);
    connect(m_pAudio, &KAudioSettings::sigBtnClick, this, reportClick);
}

void KAdvanceSettings::RetranslateUi()
{
    SetTitleName(tr("Advanced"));
    m_pApply->setText(tr("Apply"));
    m_pCancel->setText(tr("Cancel"));
}

void KAdvanceSettings::loadData(const _AudioAdvanceData& data)
{
    m_pAudio->loadData(data);
}

_AudioAdvanceData KAdvanceSettings::data() const
{
    return m_pAudio->data();
}

void KAdvanceSettings::slotAudioParaChange()
{
    m_bParaChanged = true;
}

void KAdvanceSettings::slotApply()
{
    accept();
}

void KAdvanceSettings::slotCancel()
{
    reject();
}

#include "KAudioRecordPreviewWidget.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdWidgets/KdCheckBox.h>
#include <KdWidgets/KdLabel.h>

#include <QBoxLayout>

KAudioRecordPreviewWidget::KAudioRecordPreviewWidget(QWidget* parent) : KdWidget(parent)
{
    initUI();
    KAudioRecordPreviewWidget::RetranslateUi();
    connect(m_pSwitch, &KdCheckBox::clicked, this, &KAudioRecordPreviewWidget::storeCheck);
}

KAudioRecordPreviewWidget::~KAudioRecordPreviewWidget() = default;

void KAudioRecordPreviewWidget::initUI()
{
    m_pLabel = new KdLabel(this);
    m_pLabel->setFixedHeight(24);
    m_pLabel->setCaption(true);
    m_pSwitch = KdCheckBox::CreateSwitchCheckBox(this);
    m_pSwitch->setFixedHeight(24);

    m_pLayout = new QHBoxLayout(this);
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
    m_pLayout->addWidget(m_pLabel, 0, Qt::AlignVCenter);
    m_pLayout->addSpacing(16);
    m_pLayout->addWidget(m_pSwitch);
    m_pLayout->addStretch();
}

bool KAudioRecordPreviewWidget::getRecordPreviewCheck() const
{
    return m_pSwitch->isChecked();
}

void KAudioRecordPreviewWidget::setRecordPreviewCheck(bool checked)
{
    m_pSwitch->setChecked(checked);
    stateChanged();
}

void KAudioRecordPreviewWidget::storeCheck(bool checked)
{
    KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings()->SetRecordPreview(
        checked);
    stateChanged();
}

void KAudioRecordPreviewWidget::stateChanged()
{
    m_pSwitch->setText(m_pSwitch->isChecked() ? tr("Open the Recording Preview Window")
                                              : tr("Close the Recording Preview Window"));
}

void KAudioRecordPreviewWidget::RetranslateUi()
{
    m_pLabel->setText(tr("Recording\u00a0preview"));
    m_pSwitch->setAccessibleName(m_pLabel->text());
    stateChanged();
}

#include <Studio/StudioSettingsDialog.h>

#include <KdWidgets/KdPushButton.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 440;

} // namespace

StudioSettingsDialog::StudioSettingsDialog(QWidget* parent)
    : KdFramelessDialog(parent)
    , m_pCancel(KdPushButton::CreateSecondaryButton(this, QString(), KdPushButton::Size32))
    , m_pApply(KdPushButton::CreatePrimaryButton(this, QString(), KdPushButton::Size32))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setButtonBarVisible(false);
    m_pCancel->setObjectName(QStringLiteral("Studio_CancelSettings"));
    m_pApply->setObjectName(QStringLiteral("Studio_ApplySettings"));
    m_pApply->setDefault(true);
    connect(m_pCancel, &QPushButton::clicked, this, &QWidget::close);
    connect(m_pApply, &QPushButton::clicked, this, [this] {
        keep();
        close();
    });
}

void StudioSettingsDialog::showPage(QWidget* page)
{
    auto* const body = new QWidget(this);
    body->setFixedWidth(kWidth);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(m_pCancel);
    buttons->addWidget(m_pApply);
    auto* const column = new QVBoxLayout(body);
    column->setContentsMargins(16, 12, 16, 16);
    column->setSpacing(16);
    column->addWidget(page);
    column->addLayout(buttons);
    setContentWidget(body);
}

void StudioSettingsDialog::RetranslateUi()
{
    SetTitleName(title());
    m_pCancel->setText(tr("Cancel"));
    m_pApply->setText(tr("Apply"));
}

#include <Studio/StudioSettingsDialog.h>

#include <KdWidgets/KdPushButton.h>
#include <Studio/StudioScrollPage.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 440;
constexpr int kMargin = 16;

} // namespace

StudioSettingsDialog::StudioSettingsDialog(QWidget* parent) : KdFramelessDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setButtonBarVisible(false);
}

void StudioSettingsDialog::showPage(QWidget* page)
{
    page->setContentsMargins(kMargin, 0, kMargin, 0);
    auto* const body = new QWidget(this);
    auto* const column = new QVBoxLayout(body);
    column->setContentsMargins(0, 12, 0, kMargin);
    column->setSpacing(kMargin);
    column->addWidget(new StudioScrollPage(page, kWidth, body), 1);
    // Outside of what scrolls: they stay where they are however low the screen is.
    column->addLayout(makeButtons());
    setContentWidget(body);
}

/** After the page, so that the Tab key reaches them after it. */
QHBoxLayout* StudioSettingsDialog::makeButtons()
{
    m_pCancel = KdPushButton::CreateSecondaryButton(this, QString(), KdPushButton::Size32);
    m_pApply = KdPushButton::CreatePrimaryButton(this, QString(), KdPushButton::Size32);
    m_pCancel->setObjectName(QStringLiteral("Studio_CancelSettings"));
    m_pApply->setObjectName(QStringLiteral("Studio_ApplySettings"));
    m_pApply->setDefault(true);
    connect(m_pCancel, &QPushButton::clicked, this, &QWidget::close);
    connect(m_pApply, &QPushButton::clicked, this, [this] {
        keep();
        close();
    });
    auto* const buttons = new QHBoxLayout;
    buttons->setContentsMargins(kMargin, 0, kMargin, 0);
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(m_pCancel);
    buttons->addWidget(m_pApply);
    return buttons;
}

void StudioSettingsDialog::RetranslateUi()
{
    SetTitleName(title());
    m_pCancel->setText(tr("Cancel"));
    m_pApply->setText(tr("Apply"));
}

#include <KdWidgets/KdPopovers.h>

#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdSkinManager.h>

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QVBoxLayout>

#include <utility>

KdPopovers::KdPopovers(QWidget* anchor, const ConfirmTexts& texts,
                       std::function<void(bool)> answered)
    : QWidget(anchor, Qt::Popup | Qt::FramelessWindowHint), m_answered(std::move(answered))
{
    setObjectName(QStringLiteral("KdPopovers"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* label = new QLabel(texts.text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    auto* cancel = KdPushButton::CreatePrimaryButton(this, texts.cancel);
    cancel->setObjectName(QStringLiteral("KdPopovers_Cancel"));
    auto* confirm = KdPushButton::CreateSecondaryButton(this, texts.confirm);
    confirm->setObjectName(QStringLiteral("KdPopovers_Confirm"));
    auto* column = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    column->addWidget(label);
    column->addLayout(row);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(confirm);
    cancel->setFocus();
    connect(cancel, &QPushButton::clicked, this, [this] { answer(false); });
    connect(confirm, &QPushButton::clicked, this, [this] { answer(true); });
}

KdPopovers* KdPopovers::showConfirm(QWidget* anchor, const ConfirmTexts& texts,
                                    std::function<void(bool confirmed)> answered)
{
    auto* popover = new KdPopovers(anchor, texts, std::move(answered));
    popover->setFixedWidth(280);
    popover->adjustSize();
    if (anchor) {
        popover->move(anchor->mapToGlobal(QPoint(0, anchor->height() + 8)));
    }
    popover->show();
    return popover;
}

void KdPopovers::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    if (const auto answered = std::exchange(m_answered, nullptr)) {
        answered(false);
    }
}

void KdPopovers::paintEvent(QPaintEvent* /*event*/)
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    QPainter painter(this);
    painter.setPen(skin->color(KdSkin::Stroke));
    painter.setBrush(skin->color(KdSkin::Surface));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void KdPopovers::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        answer(false);
        return;
    }
    QWidget::keyPressEvent(event);
}

void KdPopovers::answer(bool confirmed)
{
    const auto answered = std::exchange(m_answered, nullptr);
    close();
    if (answered) {
        answered(confirmed);
    }
}

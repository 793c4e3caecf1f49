#include <KdWidgets/KdPushButton.h>

#include <KdWidgets/KdSkinManager.h>

#include <QKeyEvent>
#include <QPainter>
#include <QVariant>

namespace {

const QString kPrimary = QStringLiteral("primary");
const QString kSecondary = QStringLiteral("secondary");

KdPushButton* createButton(QWidget* parent, const QString& text, int height, const QString& kind)
{
    auto* button = new KdPushButton(parent);
    button->setProperty("kind", kind);
    // The sheet rules over the height that is set below as soon as it is applied.
    button->setProperty("high", height > KdPushButton::Size24);
    button->setText(text);
    button->setFixedHeight(height);
    return button;
}

} // namespace

KdPushButton::KdPushButton(QWidget* parent) : QPushButton(parent)
{
    KdSkin::KdSkinManager::instance();
    // Otherwise Return in a field would press the dialog's first button.
    setAutoDefault(false);
}

KdPushButton* KdPushButton::CreatePrimaryButton(QWidget* parent, const QString& text, SizeKind size)
{
    return createButton(parent, text, size, kPrimary);
}

KdPushButton* KdPushButton::CreateSecondaryButton(QWidget* parent, const QString& text,
                                                  SizeKind size)
{
    return createButton(parent, text, size, kSecondary);
}

void KdPushButton::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat()) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

void KdPushButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (!hasFocus() || property("kind") != kPrimary) {
        return;
    }
    // A ring in the colour of the filled button is only seen when a line sets it off; a sheet has
    // one border.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(KdSkin::KdSkinManager::instance()->color(KdSkin::OnAccent), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), 4, 4);
}

#include <KdWidgets/KdPushButton.h>

#include <QVariant>

namespace {
KdPushButton* createButton(QWidget* parent, const QString& text, int height, const QString& kind)
{
    auto* button = new KdPushButton(parent);
    button->setText(text);
    button->setProperty("kind", kind);
    button->setFixedHeight(height);
    return button;
}
} // namespace

KdPushButton::KdPushButton(QWidget* parent) : QPushButton(parent)
{
    setAutoDefault(false);
}

KdPushButton* KdPushButton::CreatePrimaryButton(QWidget* parent, const QString& text, SizeKind size)
{
    return createButton(parent, text, size, QStringLiteral("primary"));
}

KdPushButton* KdPushButton::CreateSecondaryButton(QWidget* parent, const QString& text,
                                                  SizeKind size)
{
    return createButton(parent, text, size, QStringLiteral("secondary"));
}

#include <KdWidgets/KdWidget.h>

#include <KdWidgets/KdSkinManager.h>

#include <QEvent>

KdWidget::KdWidget(QWidget* parent) : QWidget(parent)
{
    KdSkin::KdSkinManager::instance();
}

KdWidget::~KdWidget() = default;

void KdWidget::RetranslateUi() {}

void KdWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        RetranslateUi();
    }
    QWidget::changeEvent(event);
}

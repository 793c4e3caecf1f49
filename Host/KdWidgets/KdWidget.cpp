#include <KdWidgets/KdWidget.h>

#include <QEvent>

KdWidget::KdWidget(QWidget* parent) : QWidget(parent) {}

KdWidget::~KdWidget() = default;

void KdWidget::RetranslateUi() {}

void KdWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        RetranslateUi();
    }
    QWidget::changeEvent(event);
}

#include <KdWidgets/KdDialog.h>

#include <KdWidgets/KdSkinManager.h>

#include <QEvent>

KdDialog::KdDialog(QWidget* parent, Qt::WindowFlags flags) : QDialog(parent, flags)
{
    KdSkin::KdSkinManager::instance();
}

KdDialog::~KdDialog() = default;

void KdDialog::RetranslateUi() {}

void KdDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        RetranslateUi();
    }
    QDialog::changeEvent(event);
}

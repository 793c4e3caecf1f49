#include <KdWidgets/KdDoubleSpinBox.h>

#include <KdWidgets/KdSkinManager.h>

#include <QLineEdit>

KdDoubleSpinBox::KdDoubleSpinBox(QWidget* parent) : QDoubleSpinBox(parent)
{
    KdSkin::KdSkinManager::instance();
}

QString KdDoubleSpinBox::editText() const
{
    QString text = lineEdit()->text();
    if (!prefix().isEmpty() && text.startsWith(prefix())) {
        text.remove(0, prefix().size());
    }
    if (!suffix().isEmpty() && text.endsWith(suffix())) {
        text.chop(suffix().size());
    }
    return text.trimmed();
}

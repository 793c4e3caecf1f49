#include <KdWidgets/KdCheckBox.h>

#include <QVariant>

KdCheckBox::KdCheckBox(QWidget* parent) : QCheckBox(parent) {}

KdCheckBox::KdCheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {}

KdCheckBox* KdCheckBox::CreateSwitchCheckBox(QWidget* parent)
{
    auto* box = new KdCheckBox(parent);
    box->setProperty("switch", true);
    return box;
}

#include <KdWidgets/KdCheckBox.h>

#include <KdWidgets/KdSkinManager.h>

#include <QVariant>

KdCheckBox::KdCheckBox(QWidget* parent) : KdCheckBox(QString(), parent) {}

KdCheckBox::KdCheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent)
{
    KdSkin::KdSkinManager::instance();
}

KdCheckBox* KdCheckBox::CreateSwitchCheckBox(QWidget* parent)
{
    auto* box = new KdCheckBox(parent);
    box->setProperty("switch", true);
    return box;
}

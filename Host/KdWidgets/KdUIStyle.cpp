#include <KdWidgets/KdUIStyle.h>

#include <KdWidgets/KdSkinManager.h>

#include <QVariant>
#include <QWidget>

void KdUIStyle::SetBGColorType(QWidget* widget, int type)
{
    widget->setAttribute(Qt::WA_StyledBackground);
    widget->setProperty("bgColorType", type);
    KdSkin::KdSkinManager::repolish(widget);
}

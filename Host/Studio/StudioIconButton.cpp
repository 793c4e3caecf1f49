#include <Studio/StudioIconButton.h>

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPaint.h>

StudioIconButton::StudioIconButton(const QString& objectName, const QString& iconName,
                                   QWidget* parent)
    : KdToolButton(parent), m_iconName(iconName)
{
    setObjectName(objectName);
    setFixedSize(32, 32);
    setIconSize({16, 16});
    setFocusPolicy(Qt::StrongFocus);
    refresh();
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioIconButton::refresh);
}

void StudioIconButton::setIconName(const QString& name)
{
    m_iconName = name;
    refresh();
}

void StudioIconButton::setMeaning(const QString& text)
{
    setToolTip(text);
    setAccessibleName(text);
}

void StudioIconButton::refresh()
{
    setIcon(StudioPaint::icon(m_iconName));
}

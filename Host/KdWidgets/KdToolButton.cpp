#include <KdWidgets/KdToolButton.h>

#include <KdWidgets/KdSkinManager.h>

#include <QIcon>
#include <QStyleOptionToolButton>
#include <QStylePainter>

KdToolButton::KdToolButton(QWidget* parent) : QToolButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
}

KdToolButton* KdToolButton::CreateToolButton(QWidget* parent, const QString& objectName,
                                             const QString& styleKey)
{
    auto* button = new KdToolButton(parent);
    button->setObjectName(objectName);
    if (!styleKey.isEmpty()) {
        KdSkin::KdSkinManager::instance()->applyStyleSheet(button, styleKey, 0);
    }
    return button;
}

void KdToolButton::setIconFiles(const IconFiles& unchecked, const IconFiles& checked)
{
    m_unchecked = unchecked;
    m_checked = checked;
    setIcon(QIcon(currentFile()));
    update();
}

KdToolButton::IconFiles KdToolButton::svgIconSet(const QString& set)
{
    const QString path = QStringLiteral(":/SVGResourceFile/") + set + QStringLiteral("_%1.svg");
    return {path.arg(QStringLiteral("normal")), path.arg(QStringLiteral("hover")),
            path.arg(QStringLiteral("pressed")), path.arg(QStringLiteral("disabled"))};
}

const KdToolButton::IconFiles& KdToolButton::currentFiles() const
{
    return isChecked() && !m_checked.normal.isEmpty() ? m_checked : m_unchecked;
}

QString KdToolButton::currentFile() const
{
    const IconFiles& files = currentFiles();
    if (!isEnabled()) {
        return files.disabled;
    }
    if (isDown()) {
        return files.pressed;
    }
    return underMouse() ? files.hover : files.normal;
}

bool KdToolButton::event(QEvent* event)
{
    return QToolButton::event(event);
}

void KdToolButton::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const QString file = currentFile();
    if (!file.isEmpty()) {
        option.icon = QIcon(file);
        option.iconSize = iconSize();
    }
    QStylePainter(this).drawComplexControl(QStyle::CC_ToolButton, option);
}

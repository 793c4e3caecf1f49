#include <KdWidgets/KdToolButton.h>

#include <KdWidgets/KdIcon.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdText.h>

#include <QHelpEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

constexpr int kGap = 4;
constexpr int kRing = 2;

bool isReturn(const QKeyEvent* event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

/** Text and icon, the icon ahead in reading direction, in the middle of area. */
void drawTextBesideIcon(QStylePainter* painter, const QStyleOptionToolButton& option,
                        const QPixmap& icon, const QRect& area)
{
    const QSize iconSize = icon.size() / icon.devicePixelRatio();
    const int room = area.width() - iconSize.width() - kGap;
    const QString text =
        option.fontMetrics.elidedText(option.text, Qt::ElideRight, room, Qt::TextShowMnemonic);
    const int textWidth = option.fontMetrics.size(Qt::TextShowMnemonic, text).width();
    const QSize content(iconSize.width() + kGap + textWidth, area.height());
    const QRect both =
        QStyle::alignedRect(option.direction, Qt::AlignHCenter | Qt::AlignVCenter, content, area);
    const auto place = [&option, &both](Qt::Alignment side, const QSize& size) {
        return QStyle::alignedRect(option.direction, side | Qt::AlignVCenter, size, both);
    };
    painter->drawPixmap(place(Qt::AlignLeft, iconSize), icon);
    const QRect textArea = place(Qt::AlignRight, QSize(textWidth, both.height()));
    painter->drawItemText(textArea, Qt::AlignCenter | Qt::TextShowMnemonic, option.palette,
                          option.state.testFlag(QStyle::State_Enabled), text, QPalette::ButtonText);
}

} // namespace

KdToolButton::KdToolButton(QWidget* parent) : QToolButton(parent)
{
    KdSkin::KdSkinManager::instance();
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
    const QSize natural = KdIcon::naturalSize(unchecked.normal);
    if (!natural.isEmpty()) {
        setIconSize(natural);
    }
    // The icon itself is drawn in paintEvent(); this one makes the size hint and the accessible
    // image right.
    setIcon(QIcon(unchecked.normal));
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

QPixmap KdToolButton::currentPixmap() const
{
    const QPixmap pixmap = KdIcon::pixmap(currentFile(), iconSize(), devicePixelRatioF());
    if (!pixmap.isNull()) {
        return pixmap;
    }
    const QPixmap normal = KdIcon::pixmap(currentFiles().normal, iconSize(), devicePixelRatioF());
    if (isEnabled() || normal.isNull()) {
        return normal;
    }
    QStyleOptionToolButton option;
    initStyleOption(&option);
    return style()->generatedIconPixmap(QIcon::Disabled, normal, &option);
}

QString KdToolButton::tip() const
{
    return property("WITH_SHORTCUT").toBool() ? KdText::toolTipWithShortcut(toolTip())
                                              : KdText::toolTip(toolTip());
}

void KdToolButton::adoptToolTip()
{
    if (accessibleName() == m_sAdoptedName && text().isEmpty()) {
        m_sAdoptedName = toolTip();
        setAccessibleName(m_sAdoptedName);
    }
}

bool KdToolButton::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        KdText::showToolTip(static_cast<QHelpEvent*>(event), this, tip());
        return true;
    }
    if (event->type() == QEvent::ToolTipChange) {
        adoptToolTip();
    }
    return QToolButton::event(event);
}

void KdToolButton::keyPressEvent(QKeyEvent* event)
{
    if (isReturn(event) && !event->isAutoRepeat()) {
        click();
        return;
    }
    QToolButton::keyPressEvent(event);
}

void KdToolButton::paintEvent(QPaintEvent* event)
{
    if (m_unchecked.normal.isEmpty()) {
        QToolButton::paintEvent(event);
        return;
    }
    QStyleOptionToolButton option;
    initStyleOption(&option);
    QStylePainter painter(this);
    QStyleOptionToolButton panel = option;
    panel.icon = QIcon();
    panel.text.clear();
    const bool iconOnly = option.toolButtonStyle == Qt::ToolButtonIconOnly || option.text.isEmpty();
    if (iconOnly) {
        // The images tell these states themselves; of the panel only the focus ring is left.
        panel.state &= ~(QStyle::State_MouseOver | QStyle::State_Sunken | QStyle::State_On);
    }
    painter.drawComplexControl(QStyle::CC_ToolButton, panel);
    const QPixmap icon = currentPixmap();
    if (iconOnly) {
        painter.drawItemPixmap(rect(), Qt::AlignCenter, icon);
        return;
    }
    drawTextBesideIcon(&painter, option, icon, rect().adjusted(kRing, 0, -kRing, 0));
}

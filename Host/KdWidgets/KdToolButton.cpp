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

KdToolButton::IconFiles filesOf(const QString& list)
{
    const QStringList files = list.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const auto file = [&files](int state) {
        const QString name = files.value(state);
        return name == QLatin1String("-") ? QString() : name;
    };
    return {file(0), file(1), file(2), file(3)};
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
    m_icon = {unchecked, checked};
    const QSize natural = KdIcon::naturalSize(unchecked.normal);
    if (!natural.isEmpty()) {
        setIconSize(natural);
    }
    // The icon itself is drawn in paintEvent(); this one makes the size hint and the accessible
    // image right.
    setIcon(KdIcon::icon(unchecked.normal));
}

KdToolButton::IconFiles KdToolButton::svgIconSet(const QString& set)
{
    const QString path = QStringLiteral(":/SVGResourceFile/") + set + QStringLiteral("_%1.svg");
    return {path.arg(QStringLiteral("normal")), path.arg(QStringLiteral("hover")),
            path.arg(QStringLiteral("pressed")), path.arg(QStringLiteral("disabled"))};
}

void KdToolButton::setImages(const QString& files)
{
    m_sImages = files;
    m_sheetIcon.unchecked = filesOf(files);
    update();
}

void KdToolButton::setCheckedImages(const QString& files)
{
    m_sCheckedImages = files;
    m_sheetIcon.checked = filesOf(files);
    update();
}

const KdToolButton::IconFiles& KdToolButton::currentFiles(const Icon& icon) const
{
    return isChecked() && !icon.checked.normal.isEmpty() ? icon.checked : icon.unchecked;
}

QString KdToolButton::currentFile(const IconFiles& files) const
{
    if (!isEnabled()) {
        return files.disabled;
    }
    if (isDown() && !files.pressed.isEmpty()) {
        return files.pressed;
    }
    return underMouse() ? files.hover : files.normal;
}

QPixmap KdToolButton::currentPixmap(const Icon& icon) const
{
    const IconFiles& files = currentFiles(icon);
    const QPixmap pixmap = KdIcon::pixmap(currentFile(files), iconSize(), devicePixelRatioF());
    if (!pixmap.isNull()) {
        return pixmap;
    }
    const QPixmap normal = KdIcon::pixmap(files.normal, iconSize(), devicePixelRatioF());
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
    if (m_icon.unchecked.normal.isEmpty()) {
        QToolButton::paintEvent(event);
        QStylePainter(this).drawItemPixmap(rect(), Qt::AlignCenter, currentPixmap(m_sheetIcon));
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
    const QPixmap icon = currentPixmap(m_icon);
    if (iconOnly) {
        painter.drawItemPixmap(rect(), Qt::AlignCenter, icon);
        return;
    }
    drawTextBesideIcon(&painter, option, icon, rect().adjusted(kRing, 0, -kRing, 0));
}

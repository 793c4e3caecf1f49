#include "KAdvanceBtn.h"

#include "KdScreenPixmap.h"

#include <KdWidgets/KdSkinManager.h>

#include <QPainter>

namespace {

constexpr int Padding = 6;
constexpr int Gap = 2;
constexpr int ChevronSide = 16;
constexpr int Height = 24;
constexpr int Radius = 6;
constexpr int RingWidth = 2;
constexpr double DisabledOpacity = 0.4;
constexpr const char* ChevronFiles[] = {"normal", "hover", "pressed", "disable"};

QColor skinColor(KdSkin::SkinColor number)
{
    return KdSkin::KdSkinManager::instance()->color(number);
}

} // namespace

KAdvanceBtn::KAdvanceBtn(QWidget* parent) : KdToolButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

KAdvanceBtn::~KAdvanceBtn() = default;

QSize KAdvanceBtn::sizeHint() const
{
    ensurePolished();
    const int text = fontMetrics().horizontalAdvance(this->text());
    return {Padding + text + Gap + ChevronSide + Padding, Height};
}

QSize KAdvanceBtn::minimumSizeHint() const
{
    return sizeHint();
}

KAdvanceBtn::State KAdvanceBtn::state() const
{
    if (!isEnabled()) {
        return Disabled;
    }
    if (isDown()) {
        return Pressed;
    }
    return underMouse() ? Hover : Normal;
}

void KAdvanceBtn::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const State now = state();
    paintGround(painter, now);
    paintText(painter, now);
    paintChevron(painter, now);
    if (hasFocus()) {
        paintFocusRing(painter);
    }
}

void KAdvanceBtn::paintGround(QPainter& painter, State state) const
{
    if (state != Hover && state != Pressed) {
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(skinColor(state == Hover ? KdSkin::Field : KdSkin::Stroke));
    painter.drawRoundedRect(rect(), Radius, Radius);
}

void KAdvanceBtn::paintText(QPainter& painter, State state) const
{
    const QRect area = rect().adjusted(Padding, 0, -(Padding + ChevronSide + Gap), 0);
    painter.setPen(skinColor(KdSkin::Text));
    painter.setOpacity(state == Disabled ? DisabledOpacity : 1.0);
    // The width is rounded, so a text that has just enough room must not be measured again.
    const bool fits = fontMetrics().horizontalAdvance(text()) <= area.width();
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fits ? text()
                          : fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
    painter.setOpacity(1.0);
}

void KAdvanceBtn::paintChevron(QPainter& painter, State state) const
{
    const QString file =
        QStringLiteral(":/Resource/MediaLibraryView/icon16_green_chevron_right-%1.png")
            .arg(QLatin1String(ChevronFiles[state]));
    const QRect box(width() - Padding - ChevronSide, (height() - ChevronSide) / 2, ChevronSide,
                    ChevronSide);
    painter.drawPixmap(box, KdScreenPixmap::load(file, painter));
}

void KAdvanceBtn::paintFocusRing(QPainter& painter) const
{
    const double inset = RingWidth / 2.0;
    painter.setPen(QPen(skinColor(KdSkin::Accent), RingWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), Radius - inset,
                            Radius - inset);
}

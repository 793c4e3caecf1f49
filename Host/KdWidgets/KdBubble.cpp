#include <KdWidgets/KdBubble.h>

#include <KdWidgets/KdWindowShape.h>

#include <QPainter>
#include <QPolygonF>
#include <QWidget>

#include <algorithm>

namespace {

constexpr int kRadius = 6;

bool fits(int top, int height, const QRect& area)
{
    return top >= area.top() && top + height <= area.top() + area.height();
}

/** The arrow stays on the straight part of its edge. */
int arrowWithin(int x, int width)
{
    const int ends = kRadius + KdBubble::kArrow;
    return width < 2 * ends ? width / 2 : std::clamp(x, ends, width - ends);
}

} // namespace

KdBubble KdBubble::placed(const QSize& size, const QPoint& target, bool arrowDown, int arrowInset,
                          const QRect& area)
{
    const auto topFor = [&](bool down) { return down ? target.y() - size.height() : target.y(); };
    KdBubble bubble;
    bubble.arrowDown = arrowDown;
    if (!fits(topFor(arrowDown), size.height(), area) &&
        fits(topFor(!arrowDown), size.height(), area)) {
        bubble.arrowDown = !arrowDown;
    }
    const int inset = arrowWithin(arrowInset < 0 ? size.width() / 2 : arrowInset, size.width());
    const int rightmost = area.left() + area.width() - size.width();
    const int left = std::max(area.left(), std::min(target.x() - inset, rightmost));
    bubble.arrowX = arrowWithin(target.x() - left, size.width());
    // At the very edge of the screen the whole card moves on, so that the arrow keeps its place.
    bubble.geometry = QRect(QPoint(target.x() - bubble.arrowX, topFor(bubble.arrowDown)), size);
    return bubble;
}

QPoint KdBubble::point() const
{
    return geometry.topLeft() + QPoint(arrowX, arrowDown ? geometry.height() : 0);
}

QPainterPath KdBubble::outline() const
{
    const QRectF whole(0.5, 0.5, geometry.width() - 1, geometry.height() - 1);
    const QRectF card = whole.adjusted(0, arrowDown ? 0 : kArrow, 0, arrowDown ? -kArrow : 0);
    const qreal base = arrowDown ? card.bottom() : card.top();
    const qreal tip = arrowDown ? whole.bottom() : whole.top();
    QPainterPath path;
    path.addRoundedRect(card, kRadius, kRadius);
    QPainterPath arrow;
    arrow.addPolygon(QPolygonF({QPointF(arrowX - kArrow, base), QPointF(arrowX, tip),
                                QPointF(arrowX + kArrow, base), QPointF(arrowX - kArrow, base)}));
    return path.united(arrow);
}

void KdBubble::applyTo(QWidget* widget) const
{
    widget->setGeometry(geometry);
    KdWindowShape::cut(widget, outline());
    widget->update();
}

void KdBubble::paint(QWidget* widget, KdSkin::SkinColor border) const
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    QPainter painter(widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(skin->color(border));
    painter.setBrush(skin->color(KdSkin::Surface));
    painter.drawPath(outline());
}

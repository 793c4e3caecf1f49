#pragma once

#include <KdWidgets/KdSkinManager.h>

#include <QPainterPath>
#include <QPoint>
#include <QRect>

class QWidget;

/** A rounded card with an arrow on its upper or lower edge that points at a place on the screen. A
 * value. */
struct KDWIDGETS_EXPORT KdBubble
{
    /** Height of the arrow in pixels, part of the card's own height. */
    static constexpr int kArrow = 8;

    QRect geometry;         ///< where the card lies on the screen, arrow included
    bool arrowDown = false; ///< whether the arrow is on the lower edge
    int arrowX = 0;         ///< of the arrow's point, from the left edge of the card

    /**
     * Puts a card so that its arrow's point lies at target and the card in area. Where both cannot
     * be had the point stays at target.
     * @param size of the card, arrow included.
     * @param target where the arrow points, in coordinates of the screen.
     * @param arrowDown whether the arrow should be on the lower edge; it is on the other one when
     * there is room on that side only.
     * @param arrowInset of the arrow from the left edge; negative: in the middle.
     * @param area what to stay in, as a rule the available part of a screen.
     * @return the place of the card.
     */
    static KdBubble placed(const QSize& size, const QPoint& target, bool arrowDown, int arrowInset,
                           const QRect& area);

    /** @return the global position of the arrow's point. */
    QPoint point() const;
    /** @return the card's edge in coordinates of the card, for a border line one pixel wide. */
    QPainterPath outline() const;
    /**
     * Cuts a window to the card's shape and moves it there.
     * @param widget a top-level widget.
     */
    void applyTo(QWidget* widget) const;
    /**
     * Paints the card in the colours of the skin.
     * @param widget that applyTo() was given; from inside its paint event.
     * @param border colour of the border line.
     */
    void paint(QWidget* widget, KdSkin::SkinColor border = KdSkin::Stroke) const;
};

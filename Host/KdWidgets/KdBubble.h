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
    /** Height of the arrow, part of the card's own height. */
    static constexpr int kArrow = 8;

    /** Where the card lies on the screen, arrow included. */
    QRect geometry;
    bool arrowDown = false;
    /** From the left edge of the card. */
    int arrowX = 0;

    /**
     * Puts a card so that its arrow's point lies at target and the card in area; its arrow changes
     * to the other edge when there is room on that side only.
     * @param size of the card, arrow included
     * @param arrowInset of the arrow from the left edge; negative: from the middle
     */
    static KdBubble placed(const QSize& size, const QPoint& target, bool arrowDown, int arrowInset,
                           const QRect& area);

    /** The global position of the arrow's point. */
    QPoint point() const;
    /** In coordinates of the card, for a border line one pixel wide. */
    QPainterPath outline() const;
    /** Cuts widget to the card's shape and moves it there. */
    void applyTo(QWidget* widget) const;
    /** Paints the card in the colours of the skin. */
    void paint(QWidget* widget, KdSkin::SkinColor border = KdSkin::Stroke) const;
};

#include "KdWindowShape.h"

#include <QBitmap>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

void KdWindowShape::prepare(QWidget* window)
{
    window->setAttribute(Qt::WA_TranslucentBackground, windowsAreBlended());
}

void KdWindowShape::cut(QWidget* window, const QPainterPath& outline)
{
    if (window->testAttribute(Qt::WA_TranslucentBackground)) {
        return;
    }
    QBitmap mask(window->size());
    mask.clear();
    QPainter painter(&mask);
    painter.setPen(Qt::color1);
    painter.setBrush(Qt::color1);
    painter.drawPath(outline);
    painter.end();
    window->setMask(mask);
}

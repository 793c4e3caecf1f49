#include "KdWindowShape.h"

#include <QBitmap>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#ifdef KDWIDGETS_X11
#include <QX11Info>
#endif

namespace {

bool windowsAreBlended()
{
#ifdef KDWIDGETS_X11
    return !QX11Info::isPlatformX11() || QX11Info::isCompositingManagerRunning();
#else
    return true;
#endif
}

} // namespace

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

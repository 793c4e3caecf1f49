#include "KdWindowWatch.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

bool KdWindowWatch::isLeaving(const QObject* window, const QEvent* event)
{
    switch (event->type()) {
    case QEvent::Hide:
    case QEvent::Close:
    case QEvent::Move:
        return true;
    case QEvent::WindowStateChange: {
        const auto* widget = qobject_cast<const QWidget*>(window);
        return widget && widget->isMinimized();
    }
    default:
        return false;
    }
}

bool KdWindowWatch::isMoving(const QEvent* event)
{
    return event->type() == QEvent::Move || event->type() == QEvent::Resize;
}

QRect KdWindowWatch::availableArea(const QPoint& globalPos)
{
    const QScreen* nearest = QGuiApplication::screenAt(globalPos);
    if (!nearest) {
        nearest = QGuiApplication::primaryScreen();
    }
    return nearest ? nearest->availableGeometry() : QRect();
}

#pragma once

#include <QPoint>
#include <QRect>

class QEvent;
class QObject;

/** What the small windows that go with a larger one must know about it. */
namespace KdWindowWatch {

/** @return whether the event tells that window is no longer where it was: hidden, closed, moved or
 * minimised. */
bool isLeaving(const QObject* window, const QEvent* event);
/** @return whether the event tells that window was moved or got another size. */
bool isMoving(const QEvent* event);
/** @return the usable area of the screen at a global position, of the primary one when there is
 * none. */
QRect availableArea(const QPoint& globalPos);

} // namespace KdWindowWatch

#pragma once

#include <QPoint>
#include <QPointer>
#include <QVector>
#include <QWidget>

namespace KdTest {

/** The mouse rests on a place of a widget while this lives. Only the look follows: nothing opens.
 */
class MouseRest
{
public:
    MouseRest(QWidget& widget, const QPoint& place);
    ~MouseRest();

private:
    Q_DISABLE_COPY(MouseRest)

    QPointer<QWidget> m_widget;
    QPoint m_place;
};

/** @return the places in a widget that look different under the mouse, one by one: every tab, row
 * or entry of a menu that can be seen, or else the middle of a control; none in anything else. */
QVector<QPoint> placesForMouse(const QWidget& widget);

} // namespace KdTest

#include "MouseRest.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QHoverEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QTabBar>

namespace KdTest {

namespace {

constexpr QPoint kNowhere(-1, -1);

void send(QWidget* widget, QEvent::Type type, const QPoint& from, const QPoint& to)
{
    QHoverEvent event(type, to, from);
    QCoreApplication::sendEvent(widget, &event);
}

/** Push buttons know of the mouse by its moves alone. */
void move(QWidget* widget, const QPoint& to)
{
    QMouseEvent event(QEvent::MouseMove, to, widget->mapToGlobal(to), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

QVector<QPoint> tabs(const QTabBar& bar)
{
    QVector<QPoint> places;
    for (int tab = 0; tab < bar.count(); ++tab) {
        places.append(bar.tabRect(tab).center());
    }
    return places;
}

QVector<QPoint> entries(const QMenu& menu)
{
    QVector<QPoint> places;
    const QList<QAction*> actions = menu.actions();
    for (QAction* action : actions) {
        if (action->isEnabled() && !action->isSeparator()) {
            places.append(menu.actionGeometry(action).center());
        }
    }
    return places;
}

/** @param viewport of a view, or anything else */
QVector<QPoint> rows(const QWidget& viewport)
{
    const auto* const view = qobject_cast<const QAbstractItemView*>(viewport.parentWidget());
    QVector<QPoint> places;
    if (!view || view->viewport() != &viewport || !view->model()) {
        return places;
    }
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        const QRect area = view->visualRect(view->model()->index(row, 0)) & viewport.rect();
        if (!area.isEmpty()) {
            places.append(area.center());
        }
    }
    return places;
}

} // namespace

MouseRest::MouseRest(QWidget& widget, const QPoint& place) : m_widget(&widget), m_place(place)
{
    widget.setAttribute(Qt::WA_UnderMouse);
    if (auto* const menu = qobject_cast<QMenu*>(&widget)) {
        menu->setActiveAction(menu->actionAt(place));
        return;
    }
    send(&widget, QEvent::HoverEnter, kNowhere, place);
    send(&widget, QEvent::HoverMove, kNowhere, place);
    if (qobject_cast<QPushButton*>(&widget)) {
        move(&widget, place);
    }
}

MouseRest::~MouseRest()
{
    if (!m_widget) {
        return;
    }
    m_widget->setAttribute(Qt::WA_UnderMouse, false);
    if (auto* const menu = qobject_cast<QMenu*>(m_widget.data())) {
        menu->setActiveAction(nullptr);
        return;
    }
    send(m_widget, QEvent::HoverLeave, m_place, kNowhere);
    if (qobject_cast<QPushButton*>(m_widget.data())) {
        move(m_widget, kNowhere);
    }
}

QVector<QPoint> placesForMouse(const QWidget& widget)
{
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
        return tabs(*bar);
    }
    if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
        return entries(*menu);
    }
    const bool isControl =
        qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
        qobject_cast<const QAbstractSpinBox*>(&widget) || qobject_cast<const QLineEdit*>(&widget);
    return isControl ? QVector<QPoint>{widget.rect().center()} : rows(widget);
}

} // namespace KdTest

#include "KdInputBlocker.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QShortcut>
#include <QWidget>

#include <algorithm>

namespace {

/**
 * QEvent::ShortcutOverride is missing on purpose: it only asks, and who watches the window for the
 * record shortcut must be able to end a take from here.
 */
bool isInput(const QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::NativeGesture:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    case QEvent::Close:
        return event->spontaneous();
    default:
        return false;
    }
}

} // namespace

KdInputBlocker* KdInputBlocker::instance()
{
    // Never destroyed: windows that static objects own may still come here.
    static KdInputBlocker* const blocker = new KdInputBlocker;
    return blocker;
}

void KdInputBlocker::block(QWidget* window)
{
    m_windows.removeAll(QPointer<QWidget>());
    if (m_windows.contains(window)) {
        return;
    }
    if (m_windows.isEmpty()) {
        QCoreApplication::instance()->installEventFilter(this);
    }
    m_windows.append(window);
}

void KdInputBlocker::release(QWidget* window)
{
    m_windows.removeAll(window);
    m_windows.removeAll(QPointer<QWidget>());
    if (m_windows.isEmpty()) {
        QCoreApplication::instance()->removeEventFilter(this);
    }
}

bool KdInputBlocker::isBlocked(const QWidget* widget) const
{
    const QWidget* current = widget;
    while (current) {
        const auto holds = [current](const QWidget* window) {
            return window && (window == current || window->isAncestorOf(current));
        };
        if (std::any_of(m_windows.cbegin(), m_windows.cend(), holds)) {
            return true;
        }
        const QWidget* const window = current->window();
        const bool isMenu = window->windowType() == Qt::Popup;
        current = isMenu ? window->parentWidget() : nullptr;
    }
    return false;
}

bool KdInputBlocker::belongsToBlockedWindow(const QObject* object) const
{
    if (const auto* const shortcut = qobject_cast<const QShortcut*>(object)) {
        return isBlocked(shortcut->parentWidget());
    }
    if (const auto* const action = qobject_cast<const QAction*>(object)) {
        const QList<QWidget*> widgets = action->associatedWidgets();
        return std::any_of(widgets.cbegin(), widgets.cend(),
                           [this](const QWidget* widget) { return isBlocked(widget); });
    }
    return object->isWidgetType() && isBlocked(static_cast<const QWidget*>(object));
}

bool KdInputBlocker::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Shortcut) {
        return belongsToBlockedWindow(watched);
    }
    if (!isInput(event) || !watched->isWidgetType() ||
        !isBlocked(static_cast<const QWidget*>(watched))) {
        return false;
    }
    event->ignore();
    return true;
}

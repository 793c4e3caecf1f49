#include <Studio/StudioMouse.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

namespace StudioMouse {

namespace {

void send(QWidget* control, QEvent::Type type, Qt::MouseButtons buttons)
{
    const QPoint local = control->rect().center();
    QMouseEvent event(
        type, local, control->mapTo(control->window(), local), control->mapToGlobal(local),
        type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(control, &event);
}

/** Also true for what the control consists of: a press there reaches it. */
bool isReachedAtItsMiddle(const QWidget* control)
{
    const QWidget* const window = control->window();
    const QWidget* hit = window->childAt(control->mapTo(window, control->rect().center()));
    return control == window || hit == control || (hit && control->isAncestorOf(hit));
}

} // namespace

QString obstacle(const QWidget* control)
{
    const QString name = control->objectName();
    if (!control->isVisible()) {
        return QStringLiteral("The control %1 is hidden.").arg(name);
    }
    if (!control->isEnabled()) {
        return QStringLiteral("The control %1 is disabled.").arg(name);
    }
    const QWidget* const modal = QApplication::activeModalWidget();
    if (modal && modal != control->window() && !modal->isAncestorOf(control)) {
        return QStringLiteral("The control %1 is behind a message that must be answered first.")
            .arg(name);
    }
    if (!isReachedAtItsMiddle(control)) {
        return QStringLiteral("The control %1 is behind another one.").arg(name);
    }
    return {};
}

void click(QWidget* control)
{
    const QPointer<QWidget> guard(control);
    send(control, QEvent::MouseMove, Qt::NoButton);
    send(control, QEvent::MouseButtonPress, Qt::LeftButton);
    if (guard) {
        send(control, QEvent::MouseButtonRelease, Qt::NoButton);
    }
}

} // namespace StudioMouse

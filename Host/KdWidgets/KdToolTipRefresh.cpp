#include "KdToolTipRefresh.h"

#include <QApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

void KdToolTipRefresh::install()
{
    if (!qApp->findChild<KdToolTipRefresh*>()) {
        qApp->installEventFilter(new KdToolTipRefresh(qApp));
    }
}

bool KdToolTipRefresh::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qApp && event->type() == QEvent::LanguageChange && QToolTip::isVisible()) {
        // Comes when the widgets have been told as well and have their new texts.
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::LowEventPriority);
    }
    return false;
}

void KdToolTipRefresh::customEvent(QEvent* /*event*/)
{
    const QPoint place = QCursor::pos();
    QWidget* const widget = QApplication::widgetAt(place);
    if (!widget || !QToolTip::isVisible()) {
        return;
    }
    QHelpEvent again(QEvent::ToolTip, widget->mapFromGlobal(place), place);
    QApplication::sendEvent(widget, &again);
}

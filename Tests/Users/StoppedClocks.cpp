#include "StoppedClocks.h"

#include <QCoreApplication>
#include <QEvent>

StoppedClocks::StoppedClocks()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool StoppedClocks::eventFilter(QObject* watched, QEvent* event)
{
    return event->type() == QEvent::Timer &&
           (watched->inherits("KdToast") ||
            watched->objectName() == QLatin1String("KdCountCtrl_Timer"));
}

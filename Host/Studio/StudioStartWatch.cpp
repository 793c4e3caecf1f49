#include <Studio/StudioStartWatch.h>

#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>

#include <QThread>

StudioStartWatch::StudioStartWatch(QObject* parent) : QObject(parent)
{
    KdCustomEventManager::instance()->addReceiver(this);
}

StudioStartWatch::~StudioStartWatch()
{
    KdCustomEventManager::instance()->removeReceiver(this);
}

void StudioStartWatch::onCustomEvent(const KdCustomEvent& event)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (dynamic_cast<const NotifyBeginPileInsetionEvent*>(&event)) {
        Q_EMIT startBegins();
    } else if (dynamic_cast<const NotifyEndPileInsetionEvent*>(&event)) {
        Q_EMIT startEnded();
    }
}

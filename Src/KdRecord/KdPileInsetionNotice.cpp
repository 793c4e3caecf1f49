#include "KdPileInsetionNotice.h"

#include <KdCore/KdCustomEventManager.h>
#include <KdRecord/NotifyBeginPileInsetionEvent.h>
#include <KdRecord/NotifyEndPileInsetionEvent.h>

#include <QCoreApplication>
#include <QThread>

namespace {

bool isMainThread()
{
    const QCoreApplication* const application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

void sendToAll(const KdCustomEvent& event)
{
    KdCustomEventManager::instance()->sendEvent(event, KdCustomEventManager::ReceiverFilter());
}

} // namespace

KdPileInsetionNotice::KdPileInsetionNotice(const char* label) : m_label(label)
{
    if (isMainThread()) {
        sendToAll(NotifyBeginPileInsetionEvent(m_label));
    }
}

KdPileInsetionNotice::~KdPileInsetionNotice()
{
    if (isMainThread()) {
        sendToAll(NotifyEndPileInsetionEvent(m_label));
    }
}

#include "KdGeneralEvent.h"

KdGeneralEvent::KdGeneralEvent(const QString& name) : KdTrackEvent(name) {}

KdGeneralEvent::~KdGeneralEvent() = default;

void KdGeneralEvent::add(const QString& key, const QVariant& value)
{
    setProperty(key, value);
}

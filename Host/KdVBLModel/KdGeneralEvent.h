#pragma once

#include <KdVBLModel/KdTrackEvent.h>

/** A usage report without a class of its own: made on the stack, filled, sent, gone. GUI thread. */
class KDVBLMODEL_EXPORT KdGeneralEvent : public KdTrackEvent
{
public:
    explicit KdGeneralEvent(const QString& name);
    ~KdGeneralEvent() override;

    /** A key that was added before gets the new value and keeps its place. */
    void add(const QString& key, const QVariant& value);
};

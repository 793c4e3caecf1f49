#pragma once

#include <KdVBLModel/KdTrackEvent.h>

/** A usage report without a class of its own: made on the stack, filled, sent, gone. GUI thread. */
class KDVBLMODEL_EXPORT KdGeneralEvent : public KdTrackEvent
{
public:
    /** @param name of the report. */
    explicit KdGeneralEvent(const QString& name);
    /** Sends nothing: sendEvent() does. */
    ~KdGeneralEvent() override;

    /**
     * @param key a key that was added before gets the new value and keeps its place.
     * @param value what the report says of it; becomes JSON, so a type that JSON does not have is
     * written as text or null.
     */
    void add(const QString& key, const QVariant& value);
};

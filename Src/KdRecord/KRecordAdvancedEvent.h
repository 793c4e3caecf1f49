#pragma once

#include <KdRecord/KdRecordExport.h>

#include <KdVBLModel/KdTrackEvent.h>

/**
 * A usage report about the advanced settings. Made on the stack, sent with sendEvent(), gone at
 * once. Its properties begin with "record_type", which a recorder type that is none of the two does
 * without.
 */
class KDRECORD_EXPORT KRecordAdvancedEvent : public KdTrackEvent
{
public:
    enum _KRecorderType : int
    {
        AudioRecorder = 0,
        VideoRecorder = 1
    };

    KRecordAdvancedEvent(const QString& name, _KRecorderType type);
    ~KRecordAdvancedEvent() override;
};

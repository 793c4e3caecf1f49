#pragma once

#include <KdRecord/KdRecordExport.h>

#include <KdVBLModel/KdTrackEvent.h>

/**
 * A usage report about the advanced settings. Made on the stack, sent with sendEvent(), gone at
 * once. Its properties begin with "record_type", which a recorder type that is none of the two does
 * without. GUI thread.
 */
class KDRECORD_EXPORT KRecordAdvancedEvent : public KdTrackEvent
{
public:
    /** Whose settings they are; what the property "record_type" says. */
    enum _KRecorderType : int
    {
        AudioRecorder = 0, ///< "record_audio"
        VideoRecorder = 1  ///< "record_video"
    };

    /**
     * @param name of the report.
     * @param type whose settings they are.
     */
    KRecordAdvancedEvent(const QString& name, _KRecorderType type);
    /** Sends nothing: sendEvent() does. */
    ~KRecordAdvancedEvent() override;
};

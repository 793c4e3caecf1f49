#pragma once

#include <KdRecord/KRecordAdvancedEvent.h>

/** The advanced settings were shown. "video" in the name holds for audio too. GUI thread. */
class KDRECORD_EXPORT KRecordVideoAdvancedExposeEvent : public KRecordAdvancedEvent
{
public:
    /** @param type whose settings they are. */
    explicit KRecordVideoAdvancedExposeEvent(_KRecorderType type);
    ~KRecordVideoAdvancedExposeEvent() override;
};

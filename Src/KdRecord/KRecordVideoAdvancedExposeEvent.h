#pragma once

#include <KdRecord/KRecordAdvancedEvent.h>

/** The advanced settings were shown. "video" in the name holds for audio too. */
class KDRECORD_EXPORT KRecordVideoAdvancedExposeEvent : public KRecordAdvancedEvent
{
public:
    explicit KRecordVideoAdvancedExposeEvent(_KRecorderType type);
    ~KRecordVideoAdvancedExposeEvent() override;
};

#pragma once

#include <KdRecord/KRecordAdvancedEvent.h>

/**
 * A control of the advanced settings was clicked or opened. "video" in the name holds for audio
 * too. GUI thread.
 */
class KDRECORD_EXPORT KRecordVideoAdvancedClickEvent : public KRecordAdvancedEvent
{
public:
    /**
     * @param type whose settings they are.
     * @param buttonName which control, such as "apply"; becomes the property "button_name".
     */
    KRecordVideoAdvancedClickEvent(_KRecorderType type, const QString& buttonName);
    ~KRecordVideoAdvancedClickEvent() override;
};

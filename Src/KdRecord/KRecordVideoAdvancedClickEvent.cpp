#include "KRecordVideoAdvancedClickEvent.h"

KRecordVideoAdvancedClickEvent::KRecordVideoAdvancedClickEvent(_KRecorderType type,
                                                               const QString& buttonName)
    : KRecordAdvancedEvent(QStringLiteral("record_video_advanced_setting_click"), type)
{
    setProperty(QStringLiteral("button_name"), buttonName);
}

KRecordVideoAdvancedClickEvent::~KRecordVideoAdvancedClickEvent() = default;

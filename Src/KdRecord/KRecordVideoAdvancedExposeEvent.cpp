#include "KRecordVideoAdvancedExposeEvent.h"

KRecordVideoAdvancedExposeEvent::KRecordVideoAdvancedExposeEvent(_KRecorderType type)
    : KRecordAdvancedEvent(QStringLiteral("record_video_advanced_setting_expose"), type)
{
}

KRecordVideoAdvancedExposeEvent::~KRecordVideoAdvancedExposeEvent() = default;

#include "KRecordAdvancedEvent.h"

KRecordAdvancedEvent::KRecordAdvancedEvent(const QString& name, _KRecorderType type)
    : KdTrackEvent(name)
{
    if (type == AudioRecorder) {
        setProperty(QStringLiteral("record_type"), QStringLiteral("record_audio"));
    } else if (type == VideoRecorder) {
        setProperty(QStringLiteral("record_type"), QStringLiteral("record_video"));
    }
}

KRecordAdvancedEvent::~KRecordAdvancedEvent() = default;

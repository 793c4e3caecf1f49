#pragma once

#include <KdCore/KdCustomEvent.h>
#include <KdRecord/KdRecordExport.h>

/** The engine's start of a webcam take is about to be called. Sent on the application's main
 * thread alone. */
class KDRECORD_EXPORT NotifyBeginPileInsetionEvent : public KdCustomEvent
{
public:
    /** @param label a text that is never freed. */
    explicit NotifyBeginPileInsetionEvent(const char* label);
    ~NotifyBeginPileInsetionEvent() override;

    /** @return the operation, the same text for the beginning and the end. */
    const char* label() const { return m_label; }

private:
    const char* const m_label;
};

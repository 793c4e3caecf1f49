#pragma once

#include <KdCore/KdCustomEvent.h>
#include <KdRecord/KdRecordExport.h>

/** The engine's start of a webcam take has returned, whatever came of it. Sent on the application's
 * main thread alone. */
class KDRECORD_EXPORT NotifyEndPileInsetionEvent : public KdCustomEvent
{
public:
    /** @param label a text that is never freed. */
    explicit NotifyEndPileInsetionEvent(const char* label);
    ~NotifyEndPileInsetionEvent() override;

    /** @return the operation, the same text for the beginning and the end. */
    const char* label() const { return m_label; }

private:
    const char* const m_label;
};

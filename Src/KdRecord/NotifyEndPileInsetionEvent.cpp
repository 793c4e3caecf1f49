#include "NotifyEndPileInsetionEvent.h"

NotifyEndPileInsetionEvent::NotifyEndPileInsetionEvent(const char* label) : m_label(label) {}

NotifyEndPileInsetionEvent::~NotifyEndPileInsetionEvent() = default;

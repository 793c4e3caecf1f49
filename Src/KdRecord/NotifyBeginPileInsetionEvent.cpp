#include "NotifyBeginPileInsetionEvent.h"

NotifyBeginPileInsetionEvent::NotifyBeginPileInsetionEvent(const char* label) : m_label(label) {}

NotifyBeginPileInsetionEvent::~NotifyBeginPileInsetionEvent() = default;

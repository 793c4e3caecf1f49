#include "KdCustomEvent.h"

KdCustomEvent::~KdCustomEvent() = default;

#include <KdWidgets/KdToolTipInterface.h>

KdToolTipInterface::~KdToolTipInterface() = default;

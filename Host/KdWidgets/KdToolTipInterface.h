#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QString>

/** A widget that shows its whole text as a tool tip while it has no room for it. GUI thread. */
class KDWIDGETS_EXPORT KdToolTipInterface
{
public:
    /** For the widgets that derive from it. */
    KdToolTipInterface() = default;
    virtual ~KdToolTipInterface();

    /** @return the text that does not fit, empty while everything is visible. */
    virtual QString overflowText() const = 0;

private:
    KdToolTipInterface(const KdToolTipInterface&) = delete;
    KdToolTipInterface& operator=(const KdToolTipInterface&) = delete;
};

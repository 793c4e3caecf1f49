#pragma once

#include <KdWidgets/KdWidget.h>

/**
 * A ground with round corners for other widgets, in the colours of the skin or of its own style
 * sheet. GUI thread.
 */
class KDWIDGETS_EXPORT KdRoundRadiusWidget : public KdWidget
{
    Q_OBJECT

public:
    /** @param parent owns the widget; may be null. */
    explicit KdRoundRadiusWidget(QWidget* parent = nullptr);
    ~KdRoundRadiusWidget() override;
};

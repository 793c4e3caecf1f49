#pragma once

#include <KdWidgets/KdWidget.h>

/** A ground with round corners for other widgets, in the colours of the skin or of its own style
 * sheet. */
class KDWIDGETS_EXPORT KdRoundRadiusWidget : public KdWidget
{
    Q_OBJECT

public:
    explicit KdRoundRadiusWidget(QWidget* parent = nullptr);
    ~KdRoundRadiusWidget() override;
};

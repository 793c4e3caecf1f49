#pragma once

#include <KdWidgets/KdToolButton.h>

/** An icon button with corners of 6 pixels; with the property "round" a round one. */
class KDWIDGETS_EXPORT KdButton : public KdToolButton
{
    Q_OBJECT

public:
    /** @param parent owns the button; may be null. */
    explicit KdButton(QWidget* parent = nullptr);
};

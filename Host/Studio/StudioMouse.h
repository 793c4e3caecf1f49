#pragma once

#include <QString>

class QWidget;

/** Pressing controls the way a person does. GUI thread. */
namespace StudioMouse {

/**
 * @return what would keep a person from pressing the control with the mouse, a sentence; empty when
 * nothing does: hidden, disabled, behind another widget of its window, or behind a message that
 * must be answered first
 */
QString obstacle(const QWidget* control);

/** Presses and releases the left button in the control's middle. May run what the control does,
 * message boxes too. */
void click(QWidget* control);

} // namespace StudioMouse

#pragma once

#include <QStringList>

class QWidget;

namespace KdTest {

/**
 * @return the texts of visible labels, buttons, combo boxes, tabs and group boxes in a window that
 * have less room than they need, each with where it stands. A choice counts also while another one
 * is selected.
 */
QStringList clippedTexts(const QWidget& window);

/** @return the visible widgets of a window that reach beyond what is around them. */
QStringList cutControls(const QWidget& window);

} // namespace KdTest

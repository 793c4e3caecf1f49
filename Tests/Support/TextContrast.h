#pragma once

#include <QStringList>

class QWidget;

namespace KdTest {

// Measured on what is really painted, at a multiple of the screen's pixels, as the accessibility
// guidelines count. Inactive controls (not captions) are left out.

/** @return the texts in a window that stand out from their ground by less than a ratio, whoever
 * paints them: labels and buttons, rows, placeholders, a widget of its own. */
QStringList faintTexts(QWidget& window, double leastRatio);

/** @return the same of the buttons that show an icon and no text, and that nothing lies over. */
QStringList faintIcons(QWidget& window, double leastRatio);

/** @return the texts, and the icons of such buttons, that are faint while the mouse rests on their
 * control, tab, row or entry of a menu. */
QStringList faintUnderMouse(QWidget& window, double leastTextRatio, double leastIconRatio);

/** @return the texts of the tool tips in a window that are faint. */
QStringList faintTips(QWidget& window, double leastRatio);

/** @return the controls whose look with the keyboard's focus hardly differs from that without it:
 * fewer than so many pixels that stand out by leastRatio from what was there, or none at all. */
QStringList faintFocus(QWidget& window, double leastRatio);

} // namespace KdTest

#pragma once

#include <QStringList>

class QWidget;

namespace KdTest {

/**
 * Measured on what is really painted, at a multiple of the screen's pixels.
 * @return the visible texts of a window that stand out from their ground by less than a ratio, as
 * the accessibility guidelines count; inactive controls (not captions) are left out
 */
QStringList faintTexts(QWidget& window, double leastRatio);

/** @return the same of the buttons that show an icon and no text, and that nothing lies over. */
QStringList faintIcons(QWidget& window, double leastRatio);

/** @return the controls whose look with the keyboard's focus hardly differs from that without it:
 * fewer than so many pixels that stand out by leastRatio from what was there, or none at all. */
QStringList faintFocus(QWidget& window, double leastRatio);

} // namespace KdTest

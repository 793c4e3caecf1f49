#pragma once

class QPainterPath;
class QWidget;

/** The shape of small windows without corners. Where windows are blended together their edges are
 * soft. */
namespace KdWindowShape {

/** @return whether what lies below a window shows through it. */
bool windowsAreBlended();
/** Call before the window is first shown. */
void prepare(QWidget* window);
/** Call whenever the window's size changes. @param outline in coordinates of the window, which
 * paints it itself. */
void cut(QWidget* window, const QPainterPath& outline);

} // namespace KdWindowShape

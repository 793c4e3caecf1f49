#pragma once

class QPainterPath;
class QWidget;

/** The shape of small windows without corners. Where windows are blended together their edges are
 * soft. */
namespace KdWindowShape {

/** Call before the window is first shown. */
void prepare(QWidget* window);
/** Call whenever the window's size changes. @param outline in coordinates of the window, which
 * paints it itself. */
void cut(QWidget* window, const QPainterPath& outline);

} // namespace KdWindowShape

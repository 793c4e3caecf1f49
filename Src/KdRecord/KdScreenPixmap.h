#pragma once

#include <QPixmap>
#include <QString>

class QPainter;

/** Images that also lie in a file twice as large, named "@2x", for dense screens. */
namespace KdScreenPixmap {

/**
 * @param file ends in a suffix
 * @param devicePixelRatio pixels for each unit of the screen that it is for
 * @return the image that is crisp there, as large in units as the plain one; null when there is
 * none.
 */
QPixmap load(const QString& file, qreal devicePixelRatio);

/**
 * The same for what is being painted on now: a window may have moved to a denser screen.
 * @param painter active
 */
QPixmap load(const QString& file, const QPainter& painter);

} // namespace KdScreenPixmap

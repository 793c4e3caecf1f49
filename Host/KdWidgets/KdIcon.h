#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QString>

/** Icons from files, sharp on every screen. GUI thread. */
namespace KdIcon {

/**
 * @param file path or resource.
 * @return the size that the file was drawn for; empty when it cannot be read.
 */
KDWIDGETS_EXPORT QSize naturalSize(const QString& file);

/**
 * @param file path or resource.
 * @return what QIcon makes of it; the same one again for a resource.
 */
KDWIDGETS_EXPORT QIcon icon(const QString& file);

/**
 * An .svg is drawn at the wanted number of device pixels; for a .png its @2x sibling is taken
 * where that has more. Kept in Qt's cache of pixmaps.
 * @param file path or resource.
 * @param size in device-independent pixels; the icon keeps its proportions in the middle.
 * @param ratio device pixels for each of them, as of QWidget::devicePixelRatioF().
 * @return null when the file cannot be read, or size is empty.
 */
KDWIDGETS_EXPORT QPixmap pixmap(const QString& file, const QSize& size, qreal ratio);

/**
 * Painted as it is, an image for a denser screen loses lines of its pixels.
 * @param image with the ratio that it was made for; may be null.
 * @param ratio of the screen, as of QWidget::devicePixelRatioF().
 * @return image evenly reduced to the pixels that it takes there; itself where it has no more.
 */
KDWIDGETS_EXPORT QPixmap reduced(const QPixmap& image, qreal ratio);

} // namespace KdIcon

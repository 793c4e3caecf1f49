#pragma once

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPeaks.h>

#include <QColor>
#include <QFontMetrics>
#include <QIcon>
#include <QImage>
#include <QRectF>
#include <QString>

class QPainter;

/** What several of Studio's widgets paint alike, in the colours of the current skin. GUI thread. */
namespace StudioPaint {

/** A colour of the skin at an opacity of 0.0 to 1.0. @param number a KdSkin::SkinColor */
QColor skin(int number, double opacity = 1.0);

/** Bars around the middle of area: the peaks pale, the loudness full. */
void waveform(QPainter& painter, const QRectF& area, const StudioPeaks& peaks, const QColor& color);

/** A picture that fills area, cut where its shape differs, with round corners; null: nothing. */
void thumbnail(QPainter& painter, const QRectF& area, const QImage& picture, double radius,
               double opacity = 1.0);

/**
 * One of Studio's drawings, in the skin's colours as they are now; null for an unknown name.
 * @param skinColor a KdSkin::SkinColor
 */
QIcon icon(const QString& name, int skinColor = KdSkin::Text);
/** The same as one picture in one colour. @param size in device-independent pixels */
QPixmap pixmap(const QString& name, int size, const QColor& color, double devicePixelRatio);

/** @return room for two lines in any script: the lines of some are a little higher. */
int twoLines(const QFontMetrics& metrics);

} // namespace StudioPaint

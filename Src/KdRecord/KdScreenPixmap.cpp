#include "KdScreenPixmap.h"

#include <QPainter>

#include <cmath>

namespace KdScreenPixmap {

QPixmap load(const QString& file, qreal devicePixelRatio)
{
    if (devicePixelRatio > 1) {
        QString dense = file;
        dense.insert(dense.lastIndexOf(QLatin1Char('.')), QStringLiteral("@2x"));
        QPixmap pixmap(dense);
        if (!pixmap.isNull()) {
            pixmap.setDevicePixelRatio(2);
            return pixmap;
        }
    }
    return QPixmap(file);
}

QPixmap load(const QString& file, const QPainter& painter)
{
    const QTransform& toPixels = painter.deviceTransform();
    return load(file, std::hypot(toPixels.m11(), toPixels.m12()));
}

} // namespace KdScreenPixmap

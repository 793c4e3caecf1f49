#include "KdScreenPixmap.h"

#include <QFileInfo>

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

} // namespace KdScreenPixmap

#include <KdWidgets/KdIcon.h>

#include <QFile>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

bool isDrawing(const QString& file)
{
    return file.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
}

QString doubledFile(const QString& file)
{
    const int dot = file.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? file : file.left(dot) + QStringLiteral("@2x") + file.mid(dot);
}

QRectF centred(const QSizeF& content, const QSize& area)
{
    const QSizeF fitted = content.scaled(area, Qt::KeepAspectRatio);
    return {QPointF((area.width() - fitted.width()) / 2, (area.height() - fitted.height()) / 2),
            fitted};
}

bool drawDrawing(QPainter* painter, const QString& file, const QSize& area)
{
    QSvgRenderer renderer(file);
    if (!renderer.isValid()) {
        return false;
    }
    renderer.render(painter, centred(renderer.defaultSize(), area));
    return true;
}

bool drawImage(QPainter* painter, const QString& file, const QSize& area, const QSize& natural)
{
    const bool needsMore = area.width() > natural.width() || area.height() > natural.height();
    const bool hasMore = needsMore && QFile::exists(doubledFile(file));
    const QImage image(hasMore ? doubledFile(file) : file);
    if (image.isNull()) {
        return false;
    }
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(centred(image.size(), area), image, image.rect());
    return true;
}

} // namespace

// A drawing has to be read as a whole for that. What is inside the program stays as it is.
QSize KdIcon::naturalSize(const QString& file)
{
    static QHash<QString, QSize> known;
    const auto found = known.constFind(file);
    if (found != known.constEnd()) {
        return *found;
    }
    const QSize size = file.isEmpty() ? QSize() : QImageReader(file).size();
    if (file.startsWith(QLatin1String(":/"))) {
        known.insert(file, size);
    }
    return size;
}

QPixmap KdIcon::reduced(const QPixmap& image, qreal ratio)
{
    if (image.isNull() || image.devicePixelRatio() <= ratio) {
        return image;
    }
    const QSizeF pixels = QSizeF(image.size()) * ratio / image.devicePixelRatio();
    QPixmap small = image.scaled(pixels.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    small.setDevicePixelRatio(ratio);
    return small;
}

// An icon of a drawing reads it as a whole, too. Never destroyed: at the program's end the plug-in
// that draws them may be gone.
QIcon KdIcon::icon(const QString& file)
{
    static auto* const known = new QHash<QString, QIcon>;
    const auto found = known->constFind(file);
    if (found != known->constEnd()) {
        return *found;
    }
    QIcon icon(file);
    if (file.startsWith(QLatin1String(":/"))) {
        known->insert(file, icon);
    }
    return icon;
}

QPixmap KdIcon::pixmap(const QString& file, const QSize& size, qreal ratio)
{
    const QSize area = (QSizeF(size) * ratio).toSize();
    if (file.isEmpty() || area.isEmpty()) {
        return {};
    }
    const QString key =
        QStringLiteral("KdIcon %1 %2x%3").arg(file).arg(area.width()).arg(area.height());
    QPixmap icon;
    if (!QPixmapCache::find(key, &icon)) {
        icon = QPixmap(area);
        icon.fill(Qt::transparent);
        QPainter painter(&icon);
        const bool drawn = isDrawing(file) ? drawDrawing(&painter, file, area)
                                           : drawImage(&painter, file, area, naturalSize(file));
        painter.end();
        if (!drawn) {
            return {};
        }
        QPixmapCache::insert(key, icon);
    }
    icon.setDevicePixelRatio(ratio);
    return icon;
}

#include <Studio/StudioPaint.h>

#include <KdWidgets/KdSkinManager.h>

#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace StudioPaint {

namespace {

constexpr double kBarWidth = 2.0;
constexpr double kBarStep = 3.0;
constexpr double kDisabledOpacity = 0.4;
constexpr int kOtherScripts = 3;
/** Speech is quiet most of the time: bars in proportion to the samples would hardly be seen. */
constexpr double kLoudnessCurve = 0.6;

void drawBars(QPainter& painter, const QRectF& area, const StudioPeaks& columns,
              const QColor& color, float StudioPeak::*loudness)
{
    painter.setBrush(color);
    for (int i = 0; i < columns.size(); ++i) {
        const double level = std::pow(static_cast<double>(columns.at(i).*loudness), kLoudnessCurve);
        const double height = std::max(kBarWidth, level * area.height());
        const QRectF bar(area.left() + i * kBarStep, area.center().y() - height / 2.0, kBarWidth,
                         height);
        painter.drawRoundedRect(bar, kBarWidth / 2.0, kBarWidth / 2.0);
    }
}

QByteArray drawing(const QString& name, const QColor& color)
{
    QFile file(QStringLiteral(":/Studio/icons/%1.svg").arg(name));
    QByteArray svg = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return svg.replace("currentColor", color.name().toLatin1());
}

} // namespace

QColor skin(int number, double opacity)
{
    QColor color = KdSkin::KdSkinManager::instance()->color(static_cast<KdSkin::SkinColor>(number));
    color.setAlphaF(opacity);
    return color;
}

void waveform(QPainter& painter, const QRectF& area, const StudioPeaks& peaks, const QColor& color)
{
    const StudioPeaks columns =
        foldPeaks(peaks, static_cast<int>(std::floor((area.width() + 1.0) / kBarStep)));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor pale = color;
    pale.setAlphaF(color.alphaF() * 0.45);
    drawBars(painter, area, columns, pale, &StudioPeak::peak);
    drawBars(painter, area, columns, color, &StudioPeak::rms);
    painter.restore();
}

void thumbnail(QPainter& painter, const QRectF& area, const QImage& picture, double radius,
               double opacity)
{
    if (picture.isNull() || area.isEmpty()) {
        return;
    }
    const QSizeF covering =
        QSizeF(picture.size()).scaled(area.size(), Qt::KeepAspectRatioByExpanding);
    QRectF target(QPointF(), covering);
    target.moveCenter(area.center());
    QPainterPath round;
    round.addRoundedRect(area, radius, radius);
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setOpacity(painter.opacity() * opacity);
    painter.setClipPath(round, Qt::IntersectClip);
    painter.drawImage(target, picture);
    painter.restore();
}

QPixmap pixmap(const QString& name, int size, const QColor& color, double devicePixelRatio)
{
    QSvgRenderer renderer(drawing(name, color));
    if (!renderer.isValid()) {
        return {};
    }
    const int pixels = static_cast<int>(std::lround(size * devicePixelRatio));
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter);
    painter.end();
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}

QIcon icon(const QString& name, int skinColor)
{
    QIcon icon;
    for (const int size : {16, 24}) {
        for (const double ratio : {1.0, 1.5, 2.0}) {
            icon.addPixmap(pixmap(name, size, skin(skinColor), ratio), QIcon::Normal);
            icon.addPixmap(pixmap(name, size, skin(KdSkin::Text, kDisabledOpacity), ratio),
                           QIcon::Disabled);
        }
    }
    return icon;
}

int twoLines(const QFontMetrics& metrics)
{
    return 2 * (metrics.lineSpacing() + kOtherScripts);
}

} // namespace StudioPaint

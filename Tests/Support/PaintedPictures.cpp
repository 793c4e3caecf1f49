#include "PaintedPictures.h"

#include "ShownTexts.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace KdTest {

namespace {

/** Keeps the pictures of what is painted on it. */
class PictureEngine : public QPaintEngine
{
public:
    explicit PictureEngine(double ratio) : QPaintEngine(AllFeatures), m_ratio(ratio) {}

    const QVector<PaintedPicture>& pictures() const { return m_pictures; }

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    void drawTextItem(const QPointF& /*place*/, const QTextItem& /*text*/) override {}

    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override
    {
        add(target, pixmap.copy(source.toAlignedRect()).toImage());
    }

    void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags /*flags*/) override
    {
        add(target, image.copy(source.toAlignedRect()));
    }

    void drawTiledPixmap(const QRectF& target, const QPixmap& pixmap,
                         const QPointF& /*offset*/) override
    {
        add(QRectF(target.topLeft(), QSizeF(pixmap.size()) / pixmap.devicePixelRatio()),
            pixmap.toImage());
    }

private:
    void add(const QRectF& target, const QImage& picture)
    {
        const QTransform toScreen = painter()->deviceTransform();
        const QSizeF pixels(target.width() * std::hypot(toScreen.m11(), toScreen.m12()),
                            target.height() * std::hypot(toScreen.m21(), toScreen.m22()));
        const QRectF onScreen = toScreen.mapRect(target);
        m_pictures.append({QRectF(onScreen.topLeft() / m_ratio, onScreen.size() / m_ratio), pixels,
                           picture, painter()->testRenderHint(QPainter::SmoothPixmapTransform)});
    }

    double m_ratio;
    QVector<PaintedPicture> m_pictures;
};

/** A screen of a given density that a window can be painted on. */
class PictureScreen : public QPaintDevice
{
public:
    PictureScreen(const QWidget& window, double ratio)
        : m_window(window), m_ratio(ratio), m_engine(ratio)
    {
    }

    QPaintEngine* paintEngine() const override { return &m_engine; }
    const QVector<PaintedPicture>& pictures() const { return m_engine.pictures(); }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return int(std::ceil(m_window.width() * m_ratio));
        case PdmHeight:
            return int(std::ceil(m_window.height() * m_ratio));
        case PdmDevicePixelRatio:
            return int(m_ratio);
        case PdmDevicePixelRatioScaled:
            return int(m_ratio * devicePixelRatioFScale());
        case PdmDpiX:
            return m_window.logicalDpiX();
        case PdmDpiY:
            return m_window.logicalDpiY();
        case PdmDepth:
            return 32;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    const QWidget& m_window;
    double m_ratio;
    mutable PictureEngine m_engine;
};

/** From one pixel to the next a picture that is enlarged smoothly to twice its size changes by
 * little more than half of what a sharp one does. */
constexpr double kSharpEdge = 0.75;

int opacityAt(const QImage& mask, int x, int y)
{
    return mask.constScanLine(y)[x];
}

int opacityRange(const QImage& mask)
{
    int least = 255;
    int most = 0;
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            least = std::min(least, opacityAt(mask, x, y));
            most = std::max(most, opacityAt(mask, x, y));
        }
    }
    return std::max(0, most - least);
}

int steepestEdge(const QImage& mask)
{
    int steepest = 0;
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            for (const QPoint& step : {QPoint(1, 0), QPoint(0, 1), QPoint(1, 1), QPoint(-1, 1)}) {
                const QPoint next = QPoint(x, y) + step;
                if (mask.rect().contains(next)) {
                    const int change = opacityAt(mask, next.x(), next.y()) - opacityAt(mask, x, y);
                    steepest = std::max(steepest, std::abs(change));
                }
            }
        }
    }
    return steepest;
}

bool isOfDoubledPixels(const QImage& mask)
{
    const QImage half = mask.scaled(mask.size() / 2);
    return half.scaled(mask.size()) == mask;
}

QString problemOf(const PaintedPicture& picture)
{
    return QStringLiteral(" has %1 x %2 pixels for %3 x %4 of the screen%5")
        .arg(picture.picture.width())
        .arg(picture.picture.height())
        .arg(picture.pixels.width())
        .arg(picture.pixels.height())
        .arg(picture.isTorn()      ? QStringLiteral(", torn")
             : picture.isBlurred() ? QStringLiteral(", blurred")
                                   : QString());
}

} // namespace

bool PaintedPicture::isBlurred() const
{
    const QImage mask = picture.convertToFormat(QImage::Format_Alpha8);
    const int range = opacityRange(mask);
    return range > 0 && (steepestEdge(mask) < kSharpEdge * range || isOfDoubledPixels(mask));
}

bool PaintedPicture::isVisible() const
{
    return opacityRange(picture.convertToFormat(QImage::Format_Alpha8)) > 0 ||
           qAlpha(picture.pixel(0, 0)) > 0;
}

bool PaintedPicture::isEnlarged() const
{
    return pixels.width() - picture.width() >= 1 || pixels.height() - picture.height() >= 1;
}

bool PaintedPicture::isTorn() const
{
    return !isSmooth && (std::abs(pixels.width() - picture.width()) >= 1 ||
                         std::abs(pixels.height() - picture.height()) >= 1);
}

QVector<PaintedPicture> paintedPictures(QWidget& window, double ratio)
{
    PictureScreen screen(window, ratio);
    window.render(&screen);
    return screen.pictures();
}

QStringList coarsePictures(QWidget& window)
{
    QStringList found;
    const double ratio = window.devicePixelRatioF();
    const QVector<PaintedPicture> pictures = paintedPictures(window, ratio);
    for (const PaintedPicture& picture : pictures) {
        const bool isCoarse =
            picture.isEnlarged() || picture.isTorn() || (ratio >= 2 && picture.isBlurred());
        if (isCoarse && picture.isVisible()) {
            const QWidget* const painter = window.childAt(picture.place.center().toPoint());
            found.append(nameOf(painter ? *painter : window) + problemOf(picture));
        }
    }
    return found;
}

} // namespace KdTest

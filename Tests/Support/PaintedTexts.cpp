#include "PaintedTexts.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QTransform>
#include <QWidget>

namespace KdTest {

namespace {

/** Draws nothing, and keeps the texts. */
class TextEngine : public QPaintEngine
{
public:
    TextEngine() : QPaintEngine(AllFeatures) {}

    QVector<PaintedText> texts;

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPixmap(const QRectF& /*target*/, const QPixmap& /*pixmap*/,
                    const QRectF& /*source*/) override
    {
    }
    void drawImage(const QRectF& /*target*/, const QImage& /*image*/, const QRectF& /*source*/,
                   Qt::ImageConversionFlags /*flags*/) override
    {
    }
    void drawTiledPixmap(const QRectF& /*target*/, const QPixmap& /*pixmap*/,
                         const QPointF& /*start*/) override
    {
    }
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    void drawPolygon(const QPoint* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}

    void drawTextItem(const QPointF& baseline, const QTextItem& item) override
    {
        const QRectF area(baseline.x(), baseline.y() - item.ascent(), item.width(),
                          item.ascent() + item.descent());
        texts.append({item.text(), state->transform().mapRect(area).toAlignedRect()});
    }
};

/** As large and as dense as a widget. */
class TextDevice : public QPaintDevice
{
public:
    explicit TextDevice(const QWidget& widget) : m_widget(widget) {}

    QPaintEngine* paintEngine() const override { return &m_engine; }
    const QVector<PaintedText>& texts() const { return m_engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_widget.width();
        case PdmHeight:
            return m_widget.height();
        case PdmDpiX:
        case PdmPhysicalDpiX:
            return m_widget.logicalDpiX();
        case PdmDpiY:
        case PdmPhysicalDpiY:
            return m_widget.logicalDpiY();
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    const QWidget& m_widget;
    mutable TextEngine m_engine;
};

} // namespace

QVector<PaintedText> paintedTexts(QWidget& widget)
{
    TextDevice device(widget);
    widget.render(&device, QPoint(), QRegion(), QWidget::RenderFlags());
    return device.texts();
}

} // namespace KdTest

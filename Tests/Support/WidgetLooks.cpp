#include "WidgetLooks.h"

#include <QApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

QImage WidgetLooks::image(QWidget& widget)
{
    const QRect area(widget.mapTo(widget.window(), QPoint()), widget.size());
    return widget.window()->grab(area).toImage().convertToFormat(QImage::Format_RGB32);
}

QColor WidgetLooks::colorAt(QWidget& widget, const QPoint& place)
{
    const QImage shown = image(widget);
    return shown.pixelColor((QPointF(place) * shown.devicePixelRatioF()).toPoint());
}

bool WidgetLooks::hasColor(const QImage& image, const QColor& color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).rgb() == color.rgb()) {
                return true;
            }
        }
    }
    return false;
}

QString WidgetLooks::toolTip(QWidget& widget)
{
    QToolTip::hideText();
    const QPoint middle = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
    QApplication::sendEvent(&widget, &event);
    QString text = QToolTip::isVisible() ? QToolTip::text() : QString();
    QToolTip::hideText();
    return text;
}

double WidgetLooks::contrast(const QColor& one, const QColor& other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QRect WidgetLooks::screenOf(const QWidget& widget)
{
    const QScreen* screen = QGuiApplication::screenAt(widget.geometry().center());
    return (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
}

WidgetLooks::Brackets::Brackets()
{
    QCoreApplication::installTranslator(this);
}

WidgetLooks::Brackets::~Brackets()
{
    QCoreApplication::removeTranslator(this);
}

QString WidgetLooks::Brackets::translate(const char* /*context*/, const char* sourceText,
                                         const char* /*disambiguation*/, int /*n*/) const
{
    return QLatin1Char('[') + QString::fromUtf8(sourceText) + QLatin1Char(']');
}

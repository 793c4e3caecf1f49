#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QTranslator>
#include <QWidget>

/** What a user sees of a widget. */
namespace WidgetLooks {

/** @return the widget as it is painted now, with its ground. */
QImage image(QWidget& widget);
/** @return the colour at a place in the widget, in device-independent pixels. */
QColor colorAt(QWidget& widget, const QPoint& place);
/** @return whether any pixel has exactly this colour. */
bool hasColor(const QImage& image, const QColor& color);
/** @return the text of the tip that resting on the widget brings up, as HTML when it is; empty when
 * none comes. */
QString toolTip(QWidget& widget);
/** @return how far two opaque colours stand apart, 1 to 21, as the accessibility guidelines count.
 */
double contrast(const QColor& one, const QColor& other);
/** @return the usable area of the screen that holds the widget's middle. */
QRect screenOf(const QWidget& widget);

/** Translates every text into itself in brackets, while it lives. */
class Brackets : public QTranslator
{
public:
    Brackets();
    ~Brackets() override;
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }
};

} // namespace WidgetLooks

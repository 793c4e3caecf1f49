#include "TextContrast.h"

#include "MouseRest.h"
#include "PaintedTexts.h"
#include "ShownTexts.h"
#include "WidgetLooks.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCoreApplication>
#include <QHash>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QToolTip>
#include <QWidget>

#include <algorithm>

namespace KdTest {

namespace {

constexpr int kEnlargement = 3; ///< so that the strokes of small letters have a middle
constexpr int kFewestPixels = 6;

/** Something to be seen. */
struct Place
{
    QString what;
    QRect area; ///< in the window
    double leastRatio;
};

QImage enlarged(QWidget& window, const QRect& area)
{
    QImage image(area.size() * kEnlargement, QImage::Format_RGB32);
    image.setDevicePixelRatio(kEnlargement);
    image.fill(window.palette().color(QPalette::Window));
    window.render(&image, QPoint(), QRegion(area));
    return image;
}

QHash<QRgb, int> colorsOf(const QImage& image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    return counts;
}

/** How far what is drawn stands out from what most of the image is. */
double contrastIn(const QImage& image)
{
    const QHash<QRgb, int> counts = colorsOf(image);
    const auto ground = std::max_element(counts.cbegin(), counts.cend());
    double best = 1.0;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color) {
        if (color.value() >= kFewestPixels) {
            best = std::max(best, WidgetLooks::contrast(color.key(), ground.key()));
        }
    }
    return best;
}

QRect areaIn(const QWidget& window, const QWidget& widget, const QRect& part)
{
    return {widget.mapTo(&window, part.topLeft()), part.size()};
}

/** What can be seen of a widget, in the window; less where it is scrolled. */
QRect seenPart(const QWidget& window, const QWidget& widget)
{
    QRect seen = areaIn(window, widget, widget.rect());
    const QWidget* around = &widget;
    while (around != &window) {
        around = around->parentWidget();
        seen &= areaIn(window, *around, around->rect());
    }
    return seen;
}

/** Whether a child that is none of the widget's lies over a place. */
bool isCovered(const QWidget& window, const QWidget& widget, const QPoint& place)
{
    const QWidget* const above = window.childAt(place);
    return above && above != &widget && !widget.isAncestorOf(above) &&
           !above->isAncestorOf(&widget);
}

/** Whether another window of ours lies over the middle of a widget. */
bool isUnderWindow(const QWidget& widget)
{
    const QPoint middle = widget.mapToGlobal(widget.rect().center());
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.cbegin(), windows.cend(), [&](const QWidget* window) {
        return window != widget.window() && window->isVisible() && window->parentWidget() &&
               window->geometry().contains(middle);
    });
}

bool isInactive(const QWidget& widget, const QRect& area)
{
    if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
        const QAction* const entry = menu->actionAt(area.center());
        return entry && !entry->isEnabled();
    }
    return !widget.isEnabled() && !qobject_cast<const QLabel*>(&widget);
}

bool isReadable(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLetterOrNumber(); });
}

QVector<Place> textsOf(const QWidget& window, QWidget& widget, double leastRatio)
{
    const QRect seen = seenPart(window, widget);
    QVector<Place> places;
    const QVector<PaintedText> texts = paintedTexts(widget);
    for (const PaintedText& text : texts) {
        const QRect area = areaIn(window, widget, text.area) & seen;
        if (isReadable(text.text) && !isInactive(widget, text.area) && !area.isEmpty() &&
            !isCovered(window, widget, area.center())) {
            places.append({nameOf(widget) + QStringLiteral(": ") + text.text, area, leastRatio});
        }
    }
    return places;
}

QVector<Place> iconOf(const QWidget& window, const QWidget& widget, double leastRatio)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const QRect area = areaIn(window, widget, widget.rect());
    const bool isIcon = button && button->isEnabled() && button->text().isEmpty() &&
                        !isCovered(window, widget, area.center()) && !isUnderWindow(widget);
    return isIcon ? QVector<Place>{{nameOf(widget) + QStringLiteral(": icon"), area, leastRatio}}
                  : QVector<Place>();
}

QStringList faintOf(QWidget& window, const QRect& shown, const QVector<Place>& places)
{
    const QImage image = enlarged(window, shown);
    QStringList found;
    for (const Place& place : places) {
        const QRect area = place.area.translated(-shown.topLeft()) & QRect(QPoint(), shown.size());
        const double ratio = contrastIn(
            image.copy(QRect(area.topLeft() * kEnlargement, area.size() * kEnlargement)));
        if (ratio < place.leastRatio) {
            found.append(QStringLiteral("%1 (%2)").arg(place.what).arg(ratio, 0, 'f', 2));
        }
    }
    return found;
}

/** The window and all in it that can be seen. */
QList<QWidget*> shownWidgets(QWidget& window)
{
    QList<QWidget*> shown{&window};
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (widget->window() == &window && widget->isVisible()) {
            shown.append(widget);
        }
    }
    return shown;
}

QVector<Place> withChildren(const QWidget& window, QWidget& widget, double leastTextRatio,
                            double leastIconRatio)
{
    QVector<Place> places = iconOf(window, widget, leastIconRatio);
    places += textsOf(window, widget, leastTextRatio);
    const QList<QWidget*> children = widget.findChildren<QWidget*>();
    for (QWidget* child : children) {
        if (child->isVisible() && child->window() == &window) {
            places += textsOf(window, *child, leastTextRatio);
        }
    }
    return places;
}

QWidget* shownTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.cbegin(), windows.cend(), [](const QWidget* window) {
        return window->inherits("QTipLabel") && window->isVisible();
    });
    return tip == windows.cend() ? nullptr : *tip;
}

QStringList faintTip(QWidget& widget, const QPoint& place, double leastRatio)
{
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QCoreApplication::sendEvent(&widget, &event);
    QWidget* const tip = event.isAccepted() ? shownTip() : nullptr;
    if (!tip) {
        return {};
    }
    QStringList found = faintTexts(*tip, leastRatio);
    QToolTip::hideText();
    tip->hide(); // at once, so that it is not taken for the next one
    return found;
}

int differingPixels(const QImage& one, const QImage& other, double leastRatio)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb before = one.pixel(x, y);
            const QRgb after = other.pixel(x, y);
            if (before != after && WidgetLooks::contrast(before, after) >= leastRatio) {
                ++count;
            }
        }
    }
    return count;
}

bool takesFocus(const QWidget& widget, const QWidget& window)
{
    return widget.window() == &window && widget.isVisible() && widget.isEnabled() &&
           (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !widget.focusProxy();
}

} // namespace

QStringList faintTexts(QWidget& window, double leastRatio)
{
    QVector<Place> places;
    const QList<QWidget*> widgets = shownWidgets(window);
    for (QWidget* widget : widgets) {
        places += textsOf(window, *widget, leastRatio);
    }
    return faintOf(window, window.rect(), places);
}

QStringList faintIcons(QWidget& window, double leastRatio)
{
    QVector<Place> places;
    const QList<QWidget*> widgets = shownWidgets(window);
    for (const QWidget* widget : widgets) {
        places += iconOf(window, *widget, leastRatio);
    }
    return faintOf(window, window.rect(), places);
}

QStringList faintUnderMouse(QWidget& window, double leastTextRatio, double leastIconRatio)
{
    QStringList found;
    const QList<QWidget*> widgets = shownWidgets(window);
    for (QWidget* widget : widgets) {
        const QVector<QPoint> places =
            widget->isEnabled() ? placesForMouse(*widget) : QVector<QPoint>();
        for (const QPoint& place : places) {
            const MouseRest rest(*widget, place);
            found += faintOf(window, seenPart(window, *widget),
                             withChildren(window, *widget, leastTextRatio, leastIconRatio));
        }
    }
    return found;
}

QStringList faintTips(QWidget& window, double leastRatio)
{
    QStringList found;
    const QList<QWidget*> widgets = shownWidgets(window);
    for (QWidget* widget : widgets) {
        QVector<QPoint> places = placesForMouse(*widget);
        if (places.isEmpty()) {
            places.append(widget->rect().center());
        }
        for (const QPoint& place : qAsConst(places)) {
            found += faintTip(*widget, place, leastRatio);
        }
    }
    return found;
}

QStringList faintFocus(QWidget& window, double leastRatio)
{
    QStringList found;
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (!takesFocus(*widget, window)) {
            continue;
        }
        if (QWidget* focused = window.focusWidget()) {
            focused->clearFocus();
        }
        QCoreApplication::processEvents();
        const QRect place = seenPart(window, *widget);
        const QImage before = enlarged(window, place);
        widget->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        const int changed = differingPixels(before, enlarged(window, place), leastRatio);
        // A ring, or a line below the text.
        if (changed < widget->width() * kEnlargement / 2) {
            found.append(nameOf(*widget) + QStringLiteral(" (%1 pixels)").arg(changed));
        }
    }
    return found;
}

} // namespace KdTest

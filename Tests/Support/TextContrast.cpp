#include "TextContrast.h"

#include "ShownTexts.h"
#include "WidgetLooks.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QWidget>

#include <algorithm>

namespace KdTest {

namespace {

constexpr int kEnlargement = 3; ///< so that the strokes of small letters have a middle
constexpr int kFewestPixels = 6;

struct Place
{
    const QWidget* widget;
    QRect area; ///< in the widget
    QString text;
};

QImage enlarged(QWidget& window)
{
    QImage image(window.size() * kEnlargement, QImage::Format_RGB32);
    image.setDevicePixelRatio(kEnlargement);
    image.fill(window.palette().color(QPalette::Window));
    window.render(&image);
    return image;
}

QImage cut(const QImage& whole, const Place& place, const QWidget& window)
{
    const QRect area(place.widget->mapTo(&window, place.area.topLeft()), place.area.size());
    return whole.copy(QRect(area.topLeft() * kEnlargement, area.size() * kEnlargement));
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

QRect checkBoxText(const QCheckBox& box)
{
    QStyleOptionButton option;
    option.initFrom(&box);
    option.text = box.text();
    return box.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &box);
}

QRect comboText(const QComboBox& combo)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    return combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField,
                                         &combo);
}

QVector<Place> tabs(const QTabBar& bar)
{
    QVector<Place> places;
    for (int tab = 0; tab < bar.count(); ++tab) {
        places.append({&bar, bar.tabRect(tab).adjusted(0, 0, 0, -2), bar.tabText(tab)});
    }
    return places;
}

QVector<Place> textsOf(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return {{label, label->contentsRect(), label->text()}};
    }
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
        return tabs(*bar);
    }
    if (!widget.isEnabled()) {
        return {};
    }
    if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) {
        return {{box, checkBoxText(*box), box->text()}};
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return {{button, button->rect().adjusted(3, 3, -3, -3), button->text()}};
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
        return {{combo, comboText(*combo), combo->currentText()}};
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
        return {
            {edit, edit->rect().adjusted(6, 3, -24, -3), edit->text() + edit->placeholderText()}};
    }
    return {};
}

/** Whether another control, or another window of ours, lies over its middle. */
bool isCovered(const QWidget& widget)
{
    const QPoint middle = widget.mapToGlobal(widget.rect().center());
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool isUnderWindow =
        std::any_of(windows.cbegin(), windows.cend(), [&](const QWidget* window) {
            return window != widget.window() && window->isVisible() && window->parentWidget() &&
                   window->geometry().contains(middle);
        });
    const QWidget* const above = widget.window()->childAt(widget.window()->mapFromGlobal(middle));
    return isUnderWindow || (above && above != &widget && !widget.isAncestorOf(above));
}

QVector<Place> iconsOf(const QWidget& widget)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const bool isIcon =
        button && button->isEnabled() && button->text().isEmpty() && !isCovered(*button);
    return isIcon ? QVector<Place>{{button, button->rect(), QStringLiteral("icon")}}
                  : QVector<Place>();
}

QStringList faintPlaces(QWidget& window, double leastRatio,
                        QVector<Place> (*placesOf)(const QWidget&))
{
    const QImage whole = enlarged(window);
    QStringList found;
    QList<QWidget*> widgets = window.findChildren<QWidget*>();
    widgets.prepend(&window);
    for (const QWidget* widget : qAsConst(widgets)) {
        const QVector<Place> places = widget->isVisible() && widget->window() == &window
                                          ? placesOf(*widget)
                                          : QVector<Place>();
        for (const Place& place : places) {
            const double ratio = contrastIn(cut(whole, place, window));
            if (!place.text.trimmed().isEmpty() && ratio < leastRatio) {
                found.append(QStringLiteral("%1: %2 (%3)")
                                 .arg(nameOf(*widget), place.text)
                                 .arg(ratio, 0, 'f', 2));
            }
        }
    }
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
    return faintPlaces(window, leastRatio, textsOf);
}

QStringList faintIcons(QWidget& window, double leastRatio)
{
    return faintPlaces(window, leastRatio, iconsOf);
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
        const Place place{widget, widget->rect(), QString()};
        const QImage before = cut(enlarged(window), place, window);
        widget->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        const int changed =
            differingPixels(before, cut(enlarged(window), place, window), leastRatio);
        // A ring, or a line below the text.
        if (changed < widget->width() * kEnlargement / 2) {
            found.append(nameOf(*widget) + QStringLiteral(" (%1 pixels)").arg(changed));
        }
    }
    return found;
}

} // namespace KdTest

#include "ClippedTexts.h"

#include "ShownTexts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>

namespace KdTest {

namespace {

bool fits(const QLabel& label)
{
    if (label.wordWrap()) {
        return label.heightForWidth(label.width()) <= label.height();
    }
    const QSize needed = label.fontMetrics().size(0, label.text());
    const QSize room = label.contentsRect().size();
    return needed.width() <= room.width() && needed.height() <= room.height();
}

bool fits(const QAbstractButton& button)
{
    const QSize needed = button.sizeHint();
    return needed.width() <= button.width() && needed.height() <= button.height();
}

bool fits(const QComboBox& combo, const QString& text)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    const QRect field = combo.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                      QStyle::SC_ComboBoxEditField, &combo);
    const QFontMetrics metrics = combo.fontMetrics();
    return metrics.horizontalAdvance(text) <= field.width() && metrics.height() <= field.height();
}

QStringList unfitTabs(const QTabBar& bar)
{
    QStringList texts;
    for (int tab = 0; tab < bar.count(); ++tab) {
        const int needed = bar.fontMetrics().horizontalAdvance(bar.tabText(tab));
        if (needed > bar.tabRect(tab).width() || !bar.rect().contains(bar.tabRect(tab))) {
            texts.append(bar.tabText(tab));
        }
    }
    return texts;
}

/** Whether something around it leaves it no room; what scrolls is not cut. */
bool isCut(const QWidget& widget, const QWidget& window)
{
    const QWidget* around = &widget;
    while (around != &window) {
        around = around->parentWidget();
        if (around->parentWidget() && around->parentWidget()->inherits("QAbstractScrollArea")) {
            return false;
        }
        if (!around->rect().contains(QRect(widget.mapTo(around, QPoint()), widget.size()))) {
            return true;
        }
    }
    return false;
}

QStringList unfitTexts(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return fits(*label) ? QStringList() : QStringList(label->text());
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return button->text().isEmpty() || fits(*button) ? QStringList()
                                                         : QStringList(button->text());
    }
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
        return unfitTabs(*bar);
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        const int needed = group->fontMetrics().horizontalAdvance(group->title());
        return needed <= group->width() ? QStringList() : QStringList(group->title());
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
        const int needed = edit->fontMetrics().horizontalAdvance(edit->placeholderText());
        return needed <= edit->contentsRect().width() ? QStringList()
                                                      : QStringList(edit->placeholderText());
    }
    QStringList texts;
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
        for (int i = 0; i < combo->count(); ++i) {
            if (!fits(*combo, combo->itemText(i))) {
                texts.append(combo->itemText(i));
            }
        }
    }
    return texts;
}

} // namespace

QStringList clippedTexts(const QWidget& window)
{
    QStringList found;
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (widget->window() != &window || !widget->isVisibleTo(&window)) {
            continue;
        }
        const QStringList texts = unfitTexts(*widget);
        for (const QString& text : texts) {
            found.append(nameOf(*widget) + QStringLiteral(": ") + text);
        }
    }
    return found;
}

QStringList cutControls(const QWidget& window)
{
    QStringList found;
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (widget->window() == &window && widget->isVisibleTo(&window) && isCut(*widget, window)) {
            found.append(nameOf(*widget));
        }
    }
    return found;
}

} // namespace KdTest

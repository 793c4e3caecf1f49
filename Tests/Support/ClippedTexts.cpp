#include "ClippedTexts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionComboBox>

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

QStringList unfitTexts(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return fits(*label) ? QStringList() : QStringList(label->text());
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return button->text().isEmpty() || fits(*button) ? QStringList()
                                                         : QStringList(button->text());
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
        if (!widget->isVisibleTo(&window)) {
            continue;
        }
        const QStringList texts = unfitTexts(*widget);
        for (const QString& text : texts) {
            found.append(QStringLiteral("%1 %2: %3")
                             .arg(QString::fromLatin1(widget->metaObject()->className()),
                                  widget->objectName(), text));
        }
    }
    return found;
}

} // namespace KdTest

#include "PlainTwin.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace {

constexpr int kColumns = 4;

enum class Kind : char
{
    Label = 'l',
    Combo = 'c',
    Spin = 's',
    Edit = 'e',
    Check = 'k',
    Tool = 't',
    Push = 'p',
    Other = 'o'
};

Kind kindOf(const QWidget* widget)
{
    if (qobject_cast<const QLabel*>(widget)) {
        return Kind::Label;
    }
    if (qobject_cast<const QComboBox*>(widget)) {
        return Kind::Combo;
    }
    if (qobject_cast<const QAbstractSpinBox*>(widget)) {
        return Kind::Spin;
    }
    if (qobject_cast<const QLineEdit*>(widget)) {
        return Kind::Edit;
    }
    if (qobject_cast<const QCheckBox*>(widget)) {
        return Kind::Check;
    }
    if (qobject_cast<const QToolButton*>(widget)) {
        return Kind::Tool;
    }
    return qobject_cast<const QPushButton*>(widget) ? Kind::Push : Kind::Other;
}

QWidget* twinOf(Kind kind, QWidget* parent)
{
    switch (kind) {
    case Kind::Label:
        return new QLabel(QStringLiteral("Caption"), parent);
    case Kind::Combo:
        return new QComboBox(parent);
    case Kind::Spin:
        return new QDoubleSpinBox(parent);
    case Kind::Edit:
        return new QLineEdit(parent);
    case Kind::Check:
        return new QCheckBox(parent);
    case Kind::Tool:
        return new QToolButton(parent);
    case Kind::Push:
        return new QPushButton(parent);
    case Kind::Other:
        break;
    }
    return new QWidget(parent);
}

/** What a spin box or combo box is made of comes with its twin. */
bool isInner(const QWidget* widget)
{
    const QObject* const parent = widget->parent();
    return widget->isWindow() || qobject_cast<const QComboBox*>(parent) ||
           qobject_cast<const QAbstractSpinBox*>(parent) ||
           qobject_cast<const QLineEdit*>(parent) ||
           widget->inherits("QComboBoxPrivateContainer") || widget->inherits("QScrollBar") ||
           widget->inherits("QAbstractItemView");
}

} // namespace

PlainTwin::Pattern PlainTwin::of(const QWidget& dialog)
{
    Pattern pattern{{}, dialog.size()};
    const QList<QWidget*> all = dialog.findChildren<QWidget*>();
    for (const QWidget* widget : all) {
        if (!isInner(widget)) {
            pattern.kinds.append(static_cast<char>(kindOf(widget)));
        }
    }
    return pattern;
}

QDialog* PlainTwin::make(const Pattern& pattern)
{
    auto* const dialog = new QDialog;
    dialog->setFixedSize(pattern.size);
    auto* const layout = new QGridLayout(dialog);
    for (int i = 0; i < pattern.kinds.size(); ++i) {
        const auto kind = static_cast<Kind>(pattern.kinds.at(i));
        layout->addWidget(twinOf(kind, dialog), i / kColumns, i % kColumns);
    }
    return dialog;
}

#include "KeyboardWalk.h"

#include "ShownTexts.h"
#include "WidgetLooks.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QWidget>

namespace KdTest {

namespace {

constexpr int kMostControls = 100;

bool isControl(const QWidget& widget)
{
    if (qobject_cast<const QScrollBar*>(&widget)) {
        return false;
    }
    const bool isPart =
        widget.parentWidget() && (qobject_cast<const QAbstractSpinBox*>(widget.parentWidget()) ||
                                  qobject_cast<const QComboBox*>(widget.parentWidget()));
    const bool isKind =
        qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
        qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
        qobject_cast<const QAbstractSlider*>(&widget) ||
        qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QTabBar*>(&widget);
    // A frame around its control, as a tab widget is around its bar.
    const bool isFrame = widget.isAncestorOf(widget.focusProxy());
    return !isPart && !isFrame && (isKind || (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus);
}

QList<QWidget*> controls(const QWidget& window)
{
    QList<QWidget*> found;
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (widget->window() == &window && widget->isVisible() && isControl(*widget)) {
            found.append(widget);
        }
    }
    return found;
}

QRect placeIn(const QWidget& widget, const QWidget& window)
{
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

bool isInTitleBar(const QWidget& widget)
{
    return widget.parentWidget() && widget.parentWidget()->inherits("KdTitleBar");
}

bool isStepBack(const QRect& from, const QRect& to)
{
    const bool isSameLine = from.top() <= to.center().y() && to.center().y() <= from.bottom();
    const bool isSameLineToo = to.top() <= from.center().y() && from.center().y() <= to.bottom();
    if (isSameLine || isSameLineToo) {
        return to.left() < from.left() && !from.contains(to);
    }
    // A column beside it begins above.
    return to.bottom() <= from.top() && to.left() < from.right();
}

/** A key behind the tip's text, as in "Start (Space)". */
bool tipNamesKey(QWidget& widget)
{
    static const QRegularExpression key(QStringLiteral("\\([^()]+\\)\\s*$"));
    const QString tip = WidgetLooks::toolTip(widget);
    return QTextDocumentFragment::fromHtml(tip).toPlainText().contains(key);
}

bool isReached(const QWidget& control, const QList<QWidget*>& order)
{
    for (const QWidget* reached : order) {
        if (reached == &control || control.focusProxy() == reached ||
            control.isAncestorOf(reached)) {
            return true;
        }
    }
    return false;
}

} // namespace

QList<QWidget*> tabOrder(QWidget& window)
{
    QList<QWidget*> order;
    for (int i = 0; i < kMostControls; ++i) {
        QWidget* const before = QApplication::focusWidget();
        QTest::keyClick(before ? before : &window, Qt::Key_Tab);
        QWidget* const now = QApplication::focusWidget();
        if (!now || order.contains(now)) {
            break;
        }
        order.append(now);
    }
    return order;
}

QStringList stepsBack(const QList<QWidget*>& order, const QWidget& window)
{
    // The ring begins where the focus happened to be.
    int first = 0;
    for (int i = 1; i < order.size(); ++i) {
        if (isInTitleBar(*order.at(i - 1)) && !isInTitleBar(*order.at(i))) {
            first = i;
        }
    }
    QStringList found;
    for (int i = 1; i < order.size(); ++i) {
        const QWidget* const from = order.at((first + i - 1) % order.size());
        const QWidget* const to = order.at((first + i) % order.size());
        const bool entersTitleBar = isInTitleBar(*to) && !isInTitleBar(*from);
        if (!entersTitleBar && isStepBack(placeIn(*from, window), placeIn(*to, window))) {
            found.append(nameOf(*from) + QStringLiteral(" -> ") + nameOf(*to));
        }
    }
    return found;
}

QStringList outOfReach(QWidget& window)
{
    const QList<QWidget*> order = tabOrder(window);
    QStringList found;
    const QList<QWidget*> all = controls(window);
    for (QWidget* control : all) {
        if (control->isEnabled() && !isReached(*control, order) && !tipNamesKey(*control)) {
            found.append(nameOf(*control));
        }
    }
    return found;
}

QStringList withoutNameOrRole(const QWidget& window)
{
    QStringList found;
    const QList<QWidget*> all = controls(window);
    for (QWidget* control : all) {
        QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(control);
        const QAccessible::Role role = read ? read->role() : QAccessible::NoRole;
        const bool isVague =
            role == QAccessible::NoRole || role == QAccessible::Client || role == QAccessible::Pane;
        if (!read || read->text(QAccessible::Name).trimmed().isEmpty() || isVague) {
            found.append(QStringLiteral("%1 (role %2, name '%3')")
                             .arg(nameOf(*control))
                             .arg(role)
                             .arg(read ? read->text(QAccessible::Name) : QString()));
        }
    }
    return found;
}

} // namespace KdTest

#include "DialogDriver.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QVariant>
#include <QWindow>

namespace {

QString describe(const QObject& object)
{
    const QString name = object.objectName();
    return QString::fromLatin1(object.metaObject()->className()) +
           (name.isEmpty() ? QString() : QLatin1Char(' ') + name);
}

QStringList namedChildren(const QWidget& root)
{
    QStringList names;
    const auto children = root.findChildren<QWidget*>();
    for (const QWidget* child : children) {
        // Qt's own parts of a control are no help to whoever looks for the control.
        if (!child->objectName().isEmpty() &&
            !child->objectName().startsWith(QLatin1String("qt_"))) {
            names.append(describe(*child));
        }
    }
    names.sort();
    return names;
}

bool belongsTo(const QWidget* widget, const QWidget& ancestor)
{
    return widget && (widget == &ancestor || ancestor.isAncestorOf(widget));
}

// A check box does not react where it is merely empty.
QPoint pointToHit(const QWidget& widget)
{
    const auto* const box = qobject_cast<const QCheckBox*>(&widget);
    if (!box) {
        return widget.rect().center();
    }
    QStyleOptionButton option;
    option.initFrom(box);
    option.text = box->text();
    return box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box).center();
}

} // namespace

void DialogDriver::fail(const QString& text, const TestPlace& place)
{
    QTest::qFail(qUtf8Printable(text), place.file, place.line);
}

bool DialogDriver::waitUntil(const std::function<bool()>& condition, const QString& what, int ms,
                             const TestPlace& place)
{
    if (QTest::qWaitFor(condition, ms)) {
        return true;
    }
    fail(QStringLiteral("After ") + QString::number(ms) + QStringLiteral(" ms did not come: ") +
             what,
         place);
    return false;
}

QString DialogDriver::whyNoChild(const QWidget& root, const QString& name, const char* className)
{
    QObjectList found;
    if (root.objectName() == name) {
        found.append(const_cast<QWidget*>(&root));
    }
    for (QWidget* child : root.findChildren<QWidget*>(name)) {
        found.append(child);
    }
    for (const QObject* object : qAsConst(found)) {
        if (object->inherits(className)) {
            return {};
        }
    }
    const QString wanted = QString::fromLatin1(className) + QLatin1Char(' ') + name;
    const QStringList children = namedChildren(root);
    return describe(root) + QStringLiteral(" has no child ") + wanted +
           QStringLiteral(". It has: ") +
           (children.isEmpty() ? QStringLiteral("none with a name")
                               : children.join(QStringLiteral(", ")));
}

QString DialogDriver::whyNotClickable(const QWidget& widget)
{
    const QString name = describe(widget);
    if (!widget.isVisible()) {
        return name + QStringLiteral(" is hidden");
    }
    if (!widget.isEnabled()) {
        return name + QStringLiteral(" is disabled");
    }
    const QWidget* const window = widget.window();
    const QWidget* const popup = QApplication::activePopupWidget();
    if (popup && popup != window) {
        return name + QStringLiteral(" is behind the popup ") + describe(*popup);
    }
    const QWidget* const modal = QApplication::activeModalWidget();
    if (modal && modal != window && !belongsTo(window, *modal)) {
        return name + QStringLiteral(" is blocked by the modal ") + describe(*modal);
    }
    const QPoint point = widget.mapTo(window, pointToHit(widget));
    const QWidget* const there = window->childAt(point);
    if (&widget != window && !belongsTo(there, widget)) {
        return name + QStringLiteral(" is covered by ") +
               (there ? describe(*there) : QStringLiteral("nothing: it lies outside its window"));
    }
    return {};
}

void DialogDriver::click(QWidget& widget, const TestPlace& place)
{
    QWidget* const window = widget.window();
    if (widget.isVisible() && !QTest::qWaitForWindowExposed(window)) {
        fail(describe(*window) + QStringLiteral(" did not get on the screen"), place);
        return;
    }
    const QString problem = whyNotClickable(widget);
    if (!problem.isEmpty()) {
        fail(QStringLiteral("Cannot click: ") + problem, place);
        return;
    }
    const QPoint point = widget.mapTo(window, pointToHit(widget));
    // Through the window, so that a modal block or a grab counts as it does for a user.
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, point);
}

void DialogDriver::click(const QWidget& root, const QString& name, const TestPlace& place)
{
    if (auto* const widget = child<QWidget>(root, name, place)) {
        click(*widget, place);
    }
}

QString DialogDriver::windowText(const QWidget& window)
{
    const QWidget* text = window.findChild<QWidget*>(window.objectName() + QStringLiteral("_Text"));
    if (!text) {
        text = window.findChild<QLabel*>();
    }
    return text ? text->property("text").toString() : QString();
}

#pragma once

#include <QString>
#include <QWidget>

#include <functional>

/** Where a helper was called: its failure is reported there. */
struct TestPlace
{
    // Default arguments are evaluated at the call.
    TestPlace(const char* sourceFile = __builtin_FILE(), int sourceLine = __builtin_LINE())
        : file(sourceFile), line(sourceLine)
    {
    }
    const char* file;
    int line;
};

/**
 * Drives real dialogs as a user would, by object names. Each helper fails the running test with a
 * text that says what was in the way; the caller goes on with what the helper returned.
 */
namespace DialogDriver {

/** Fails the running test. */
void fail(const QString& text, const TestPlace& place = TestPlace());

/**
 * Runs the event loop until condition holds.
 * @param what completes "did not come: ..."
 * @return false after ms milliseconds without it, and the test has failed.
 */
bool waitUntil(const std::function<bool()>& condition, const QString& what, int ms = 5000,
               const TestPlace& place = TestPlace());

/** @return the text that says that root has no such child, with those it has; empty when it has. */
QString whyNoChild(const QWidget& root, const QString& name, const char* className = "QWidget");

/** @return root's descendant of that name, root included; null, and the test has failed, when there
 * is none. */
template <typename Widget = QWidget>
Widget* child(const QWidget& root, const QString& name, const TestPlace& place = TestPlace())
{
    const char* const className = Widget::staticMetaObject.className();
    const QString problem = whyNoChild(root, name, className);
    if (!problem.isEmpty()) {
        fail(problem, place);
        return nullptr;
    }
    if (auto* const itself = qobject_cast<Widget*>(const_cast<QWidget*>(&root));
        itself && root.objectName() == name) {
        return itself;
    }
    return root.findChild<Widget*>(name);
}

/** @return what keeps a user from clicking the widget: hidden, disabled, covered, blocked; empty
 * when nothing. */
QString whyNotClickable(const QWidget& widget);

/**
 * Presses and releases the left button on the widget, through its window. A check box is hit on its
 * mark. Waits until the window is on the screen.
 */
void click(QWidget& widget, const TestPlace& place = TestPlace());
/** The same on the child of that name. */
void click(const QWidget& root, const QString& name, const TestPlace& place = TestPlace());

/** @return the text of a message, popover or toast: of its "..._Text" child, else of its first
 * label. */
QString windowText(const QWidget& window);

} // namespace DialogDriver

#pragma once

#include <QList>
#include <QStringList>

class QWidget;

namespace KdTest {

/** Presses Tab until the focus comes round. @return the window's controls in that order; the window
 * is the active one */
QList<QWidget*> tabOrder(QWidget& window);

/** @return the steps of an order that go back: to a control above, or to the left in the same line.
 * The buttons of a title bar come last. */
QStringList stepsBack(const QList<QWidget*>& order, const QWidget& window);

/** @return the visible, enabled controls that a Tab never reaches and whose tool tip names no key.
 */
QStringList outOfReach(QWidget& window);

/** @return the controls without a name for assistive technology, or with a role that says nothing.
 */
QStringList withoutNameOrRole(const QWidget& window);

} // namespace KdTest

#pragma once

#include <QAccessible>
#include <QStringList>

#include <utility>

/** What assistive technology is told while this object lives; there is one at a time. GUI thread.
 */
class AccessibleEvents
{
public:
    AccessibleEvents();
    ~AccessibleEvents();

    /** @return what was to be spoken at once: the name of each object that raised an alert, with
     * its description when it has one, in order. */
    QStringList alerts() const { return m_alerts; }
    /** @return those since the last call. */
    QStringList takeAlerts() { return std::exchange(m_alerts, {}); }

private:
    Q_DISABLE_COPY(AccessibleEvents)

    static void handle(QAccessibleEvent* event);

    static AccessibleEvents* s_current;
    QAccessible::UpdateHandler m_former;
    QStringList m_alerts;
};

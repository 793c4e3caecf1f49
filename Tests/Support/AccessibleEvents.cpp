#include "AccessibleEvents.h"

#include <QCoreApplication>

// Only the platform can say that somebody listens, and Qt has no public way to be that somebody.
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

void setListening(bool isListening)
{
    if (auto* platform = QGuiApplicationPrivate::platformIntegration()->accessibility()) {
        platform->setActive(isListening);
    }
}

} // namespace

AccessibleEvents* AccessibleEvents::s_current = nullptr;

AccessibleEvents::AccessibleEvents()
{
    Q_ASSERT(!s_current);
    s_current = this;
    m_former = QAccessible::installUpdateHandler(handle);
    setListening(true);
}

AccessibleEvents::~AccessibleEvents()
{
    setListening(false);
    QAccessible::installUpdateHandler(m_former);
    s_current = nullptr;
}

void AccessibleEvents::handle(QAccessibleEvent* event)
{
    QAccessibleInterface* const read = event->accessibleInterface();
    if (event->type() != QAccessible::Alert || !read) {
        return;
    }
    const QString description = read->text(QAccessible::Description);
    s_current->m_alerts.append(
        read->text(QAccessible::Name) +
        (description.isEmpty() ? QString() : QStringLiteral(": ") + description));
}

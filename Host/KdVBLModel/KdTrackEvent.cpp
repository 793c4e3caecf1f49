#include "KdTrackEvent.h"

#include "KdTrackEventLog_p.h"

#include <algorithm>

KdTrackEvent::KdTrackEvent(const QString& name) : m_sName(name) {}

KdTrackEvent::~KdTrackEvent() = default;

void KdTrackEvent::sendEvent()
{
    KdTrackEventLog::append({QDateTime::currentDateTime(), m_sName, m_properties});
}

void KdTrackEvent::setProperty(const QString& key, const QVariant& value)
{
    const auto known =
        std::find_if(m_properties.begin(), m_properties.end(),
                     [&key](const Property& property) { return property.first == key; });
    if (known != m_properties.end()) {
        known->second = value;
        return;
    }
    m_properties.append({key, value});
}

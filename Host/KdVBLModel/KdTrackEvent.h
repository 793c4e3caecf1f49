#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>
#include <QVariant>
#include <QVector>

#include <utility>

/** One usage report: a name and properties in the order they were set. GUI thread. */
class KDVBLMODEL_EXPORT KdTrackEvent
{
public:
    /** A key and its value. */
    using Property = std::pair<QString, QVariant>;

    /** @param name of the report, as it stands in the log. */
    explicit KdTrackEvent(const QString& name);
    /** Sends nothing: sendEvent() does. */
    virtual ~KdTrackEvent();

    /**
     * Hands the event to the tracking log, which keeps it on this machine and sends it nowhere.
     * Each call is a report of its own.
     */
    virtual void sendEvent();

    /** @return the report's name. */
    QString name() const { return m_sName; }
    /** @return the properties in the order they were set. */
    QVector<Property> properties() const { return m_properties; }

protected:
    /**
     * @param key a key that was set before gets the new value and keeps its place.
     * @param value what the report says of it; becomes JSON, so a type that JSON does not have is
     * written as text or null.
     */
    void setProperty(const QString& key, const QVariant& value);

private:
    Q_DISABLE_COPY(KdTrackEvent)
    QString m_sName;
    QVector<Property> m_properties;
};

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
    using Property = std::pair<QString, QVariant>;

    explicit KdTrackEvent(const QString& name);
    virtual ~KdTrackEvent();

    /** Hands the event to the tracking log, which keeps it on this machine and sends it nowhere. */
    virtual void sendEvent();

    QString name() const { return m_sName; }
    QVector<Property> properties() const { return m_properties; }

protected:
    /** A key that was set before gets the new value and keeps its place. */
    void setProperty(const QString& key, const QVariant& value);

private:
    Q_DISABLE_COPY(KdTrackEvent)
    QString m_sName;
    QVector<Property> m_properties;
};

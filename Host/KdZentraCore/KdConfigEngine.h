#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <QString>
#include <QVariant>

#include <memory>

/** The host's free-form configuration, kept in a file in the document folder. GUI thread. */
class KDZENTRACORE_EXPORT KdConfigEngine
{
public:
    static KdConfigEngine* instance();

    /** @param scope 1: the user's own configuration, the only one there is. @return success */
    bool setValue(int scope, const QString& group, const QString& key, const QVariant& value);
    QVariant value(int scope, const QString& group, const QString& key,
                   const QVariant& fallback = QVariant()) const;

private:
    KdConfigEngine();
    ~KdConfigEngine();
    class Private;
    std::unique_ptr<Private> d;
};

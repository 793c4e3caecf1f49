#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <QString>
#include <QVariant>

#include <memory>

/**
 * The host's free-form configuration, kept as text in "HostConfig.xml" in the document folder. When
 * that folder changes the values of the new one count. A file that cannot be read counts as empty.
 * GUI thread.
 */
class KDZENTRACORE_EXPORT KdConfigEngine
{
public:
    static KdConfigEngine* instance();

    /**
     * @param scope 1: the user's own configuration, the only one there is.
     * @return success; false without any effect for another scope, an empty name, or a value that
     * has no text form. A value that could not be written still holds for the life of the process.
     */
    bool setValue(int scope, const QString& group, const QString& key, const QVariant& value);
    /** @return the value as text, convertible back to what it was; fallback when there is none. */
    QVariant value(int scope, const QString& group, const QString& key,
                   const QVariant& fallback = QVariant()) const;

private:
    KdConfigEngine();
    ~KdConfigEngine();
    class Private;
    std::unique_ptr<Private> d;
};

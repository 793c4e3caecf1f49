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
    /** @return the configuration; never null, lives until the process ends. */
    static KdConfigEngine* instance();

    /**
     * Sets a value and writes the file at once, unless the value was that already.
     * @param scope 1: the user's own configuration, the only one there is.
     * @param group name of the group, not empty.
     * @param key name of the value within its group, not empty.
     * @param value kept as text, without the characters that XML cannot hold.
     * @return success; false without any effect for another scope, an empty name, or a value that
     * has no text form. A value that could not be written still holds for the life of the process.
     */
    bool setValue(int scope, const QString& group, const QString& key, const QVariant& value);
    /**
     * @param scope 1, see setValue().
     * @param group name of the group.
     * @param key name of the value within its group.
     * @param fallback answered when there is no such value, or no such scope.
     * @return the value as text, convertible back to what it was; fallback when there is none.
     */
    QVariant value(int scope, const QString& group, const QString& key,
                   const QVariant& fallback = QVariant()) const;

private:
    KdConfigEngine();
    ~KdConfigEngine();
    class Private;
    std::unique_ptr<Private> d;
};

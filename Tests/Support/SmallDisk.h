#pragma once

#include <QString>

/**
 * A disk of a few hundred kilobytes, mounted at a folder of the test for the life of the object, to
 * be filled. Needs the right to mount, which a test of kd_add_test(... MOUNTS) has.
 */
class SmallDisk
{
public:
    /** @param folder made when it does not exist */
    SmallDisk(const QString& folder, int kilobytes);
    ~SmallDisk();

    bool isMounted() const { return m_isMounted; }
    QString filePath(const QString& name) const;
    qint64 freeBytes() const;

    /** Takes all but this much. @return whether it could. */
    bool fillUpTo(qint64 bytesLeft);

private:
    Q_DISABLE_COPY(SmallDisk)

    QString m_folder;
    bool m_isMounted = false;
};

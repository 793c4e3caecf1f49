#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * A disk of a few hundred KiB, to be filled by a test. It is seen by the test's process and its
 * children alone, and gone with them.
 */
class SmallDisk
{
public:
    /** First thing in main(), while the process has one thread. @return false where the system
     * allows no private disks. */
    static bool prepare();

    /** @param bytes its size; a page is the least that a file takes */
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();

    bool isMounted() const { return m_isMounted; }
    QString path() const { return m_folder.path(); }
    QString filePath(const QString& name) const { return m_folder.filePath(name); }
    qint64 freeBytes() const;

    /** Takes all but this much. @return whether it could. */
    bool fillUpTo(qint64 bytesLeft);

private:
    Q_DISABLE_COPY(SmallDisk)

    QTemporaryDir m_folder;
    bool m_isMounted = false;
};

#pragma once

#include <QString>

/**
 * A disk of a few hundred kilobytes, mounted at a folder of the test for the life of the object.
 * Needs the right to mount, which the end-to-end launcher gives a test that does not run as root by
 * a user namespace.
 */
class SmallDisk
{
public:
    /** @param folder made when it does not exist */
    SmallDisk(const QString& folder, int kilobytes);
    ~SmallDisk();

    bool isMounted() const { return m_mounted; }

private:
    Q_DISABLE_COPY(SmallDisk)
    QString m_folder;
    bool m_mounted = false;
};

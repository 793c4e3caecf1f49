#pragma once

#include <KdCore/KdCoreExport.h>

#include <QString>

/** Questions about folders. Reentrant. */
class KDCORE_EXPORT KdDir
{
public:
    /** @return whether path is a folder in which files can be made and read (tried, not guessed
     * from flags). */
    static bool IsPathWriteAndReadable(const QString& path);

    /**
     * @param path a file or folder; the nearest existing parent counts when it does not exist.
     * @param reserved 0
     * @return free space for this user in MB (1024 x 1024 bytes), or -1 when it cannot be told.
     */
    static qint64 getDiskFreeSpace(const QString& path, int reserved);
};

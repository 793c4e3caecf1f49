#pragma once

#include <KdCore/KdCoreExport.h>

#include <QString>

/** Questions about folders. Reentrant. */
class KDCORE_EXPORT KdDir
{
public:
    /**
     * Tries it instead of guessing from flags: a file is made for a moment, and nothing written
     * into it, so that a full disk counts as writable.
     * @param path of the folder; empty, a file and a folder that does not exist are answered with
     * false.
     * @return whether path is a folder in which files can be made and read.
     */
    static bool IsPathWriteAndReadable(const QString& path);

    /**
     * @param path a file or folder; the nearest existing parent counts when it does not exist.
     * @param reserved 0; ignored
     * @return free space for this user in MB (1024 x 1024 bytes), rounded down, or -1 when it
     * cannot be told, as for an empty path.
     */
    static qint64 getDiskFreeSpace(const QString& path, int reserved);
};

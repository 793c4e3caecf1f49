#pragma once

#include <KdCore/KdCoreExport.h>

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * Reads files that anybody may have put there, and replaces files without losing the old ones.
 * Blocks on the disk. Reentrant.
 */
class KDCORE_EXPORT KdSafeFile
{
public:
    /**
     * @param path of the file; a pipe or a device, which might never end, is not read.
     * @param maxBytes the largest size to accept.
     * @return the content, or nothing when path is no ordinary readable file of that size at most.
     */
    static std::optional<QByteArray> read(const QString& path, qint64 maxBytes);

    /**
     * Writes content to a new file that takes path's place only when every byte is known to be on
     * disk. QSaveFile::commit() alone answers true on a full disk and destroys the old file, hence
     * this helper.
     * @param path of the file, in a folder that exists. A link is followed: the file it leads to is
     * replaced.
     * @param content all of the new file.
     * @return false when anything failed; the old file is then untouched, and a warning with the
     * reason is logged.
     */
    static bool replace(const QString& path, const QByteArray& content);
};

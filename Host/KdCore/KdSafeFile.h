#pragma once

#include <KdCore/KdCoreExport.h>

#include <QByteArray>
#include <QString>

/** Replacing a file's content without ever losing the old one. Reentrant. */
class KDCORE_EXPORT KdSafeFile
{
public:
    /**
     * Writes content to a new file that takes path's place only when every byte is known to be on disk.
     * QSaveFile::commit() alone answers true on a full disk and destroys the old file, hence this helper.
     * A link is followed: the file it leads to is replaced.
     * @return false when anything failed; the old file is then untouched, and a warning with the reason is logged.
     */
    static bool replace(const QString& path, const QByteArray& content);
};

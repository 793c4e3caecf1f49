#include "KdSafeFile.h"

#include "KdBaseLog.h"
#include "KdDiskSync.h"

#include <QSaveFile>

namespace {

bool writeWhole(QSaveFile& file, const QByteArray& content)
{
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.flush() && file.error() == QFileDevice::NoError && KdDiskSync::sync(file.handle());
}

} // namespace

bool KdSafeFile::replace(const QString& path, const QByteArray& content)
{
    QSaveFile file(path);
    if (writeWhole(file, content) && file.commit()) {
        return true;
    }
    KdBaseLog::write(KdBaseLog::Warning, {"Host/KdCore/KdSafeFile", "KdSafeFile::replace"},
                     "The %d bytes of %s could not be written: %s", content.size(),
                     path.toUtf8().constData(), file.errorString().toUtf8().constData());
    file.cancelWriting();
    return false;
}

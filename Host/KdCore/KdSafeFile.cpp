#include "KdSafeFile.h"

#include "KdBaseLog.h"
#include "KdDiskSync.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

bool writeWhole(QSaveFile& file, const QByteArray& content)
{
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.flush() && file.error() == QFileDevice::NoError && KdDiskSync::sync(file.handle());
}

} // namespace

std::optional<QByteArray> KdSafeFile::read(const QString& path, qint64 maxBytes)
{
    // A pipe would block, a device might never end.
    if (!QFileInfo(path).isFile()) {
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray content = file.read(maxBytes + 1);
    const bool isWhole = file.error() == QFileDevice::NoError && content.size() <= maxBytes;
    return isWhole ? std::optional<QByteArray>(content) : std::nullopt;
}

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

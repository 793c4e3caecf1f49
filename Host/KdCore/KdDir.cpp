#include "KdDir.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryFile>

namespace {

constexpr qint64 kBytesPerMegabyte = 1024LL * 1024;

QString nearestExisting(const QString& path)
{
    QString candidate = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    while (!QFileInfo::exists(candidate)) {
        const QString parent = QFileInfo(candidate).path();
        if (parent == candidate) {
            break;
        }
        candidate = parent;
    }
    return candidate;
}

} // namespace

bool KdDir::IsPathWriteAndReadable(const QString& path)
{
    if (path.isEmpty() || !QFileInfo(path).isDir()) {
        return false;
    }
    // Nothing is written into it: a full disk is not a question of permission.
    QTemporaryFile probe(QDir(path).filePath(QStringLiteral(".probe-XXXXXX")));
    return probe.open();
}

qint64 KdDir::getDiskFreeSpace(const QString& path, int reserved)
{
    Q_UNUSED(reserved)
    if (path.isEmpty()) {
        return -1;
    }
    const QStorageInfo storage(nearestExisting(path));
    const qint64 available = storage.isValid() ? storage.bytesAvailable() : -1;
    return available < 0 ? -1 : available / kBytesPerMegabyte;
}

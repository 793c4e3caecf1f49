#include "KdDisk.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Every file system in use here limits a name to this many bytes, whatever their encoding.
constexpr int kMaxNameBytes = 255;

int descriptorOf(const KdDisk::Handle& handle)
{
    return static_cast<int>(handle.value());
}

void fill(QString* error, const QString& text)
{
    if (error) {
        *error = text;
    }
}

QString systemText(int code)
{
    return QString::fromLocal8Bit(
        std::strerror(code)); // NOLINT(concurrency-mt-unsafe): glibc's is safe
}

QString creationError(const QString& path, int code)
{
    const QString folder = QFileInfo(path).path();
    switch (code) {
    case EEXIST:
        return QStringLiteral("The file %1 exists already.").arg(path);
    case ENOENT:
        return QStringLiteral("The folder %1 does not exist.").arg(folder);
    case ENOTDIR:
        return QStringLiteral("%1 is not a folder.").arg(folder);
    case EACCES:
    case EPERM:
    case EROFS:
        return QStringLiteral("The folder %1 is not writable.").arg(folder);
    case ENOSPC:
    case EDQUOT:
        return QStringLiteral("There is no space left in the folder %1.").arg(folder);
    case ENAMETOOLONG:
        return QStringLiteral("The file name %1 is too long.").arg(path);
    default:
        return QStringLiteral("The file %1 cannot be made: %2.").arg(path, systemText(code));
    }
}

int openRetrying(const QByteArray& path, int flags)
{
    int descriptor = -1;
    do {
        descriptor = ::open(path.constData(), flags | O_CLOEXEC, 0666);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

bool syncDescriptor(int descriptor)
{
    int result = -1;
    do {
        result = ::fsync(descriptor);
    } while (result < 0 && errno == EINTR);
    // Some file systems cannot sync and say so; that they took the bytes is then all there is.
    return result == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

namespace KdDisk {

void Handle::close()
{
    if (isOpen()) {
        ::close(static_cast<int>(m_value));
        m_value = kNone;
    }
}

Handle createExclusively(const QString& path, QString* error)
{
    const int descriptor = openRetrying(QFile::encodeName(path), O_CREAT | O_EXCL | O_RDWR);
    if (descriptor < 0) {
        fill(error, creationError(path, errno));
        return Handle();
    }
    return Handle(descriptor);
}

bool isAt(const Handle& handle, const QString& path)
{
    struct stat mine = {};
    struct stat there = {};
    return ::fstat(descriptorOf(handle), &mine) == 0 &&
           ::stat(QFile::encodeName(path).constData(), &there) == 0 &&
           mine.st_dev == there.st_dev && mine.st_ino == there.st_ino;
}

bool sync(const Handle& handle, QString* error)
{
    if (syncDescriptor(descriptorOf(handle))) {
        return true;
    }
    fill(error, QStringLiteral("The disk did not take the file: %1.").arg(systemText(errno)));
    return false;
}

bool syncFile(const QString& path, QString* error)
{
    const Handle file(openRetrying(QFile::encodeName(path), O_RDONLY));
    if (!file.isOpen()) {
        fill(error, QStringLiteral("%1 cannot be opened: %2.").arg(path, systemText(errno)));
        return false;
    }
    return sync(file, error);
}

bool syncFolder(const QString& folder)
{
    const Handle handle(openRetrying(QFile::encodeName(folder), O_RDONLY | O_DIRECTORY));
    // A folder may be written to and yet not be read.
    return handle.isOpen() ? syncDescriptor(descriptorOf(handle)) : errno == EACCES;
}

bool write(const Handle& handle, const QByteArray& content, QString* error)
{
    qint64 done = 0;
    while (done < content.size()) {
        const ssize_t written = ::write(descriptorOf(handle), content.constData() + done,
                                        static_cast<size_t>(content.size() - done));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            fill(error, QStringLiteral("Writing failed: %1.").arg(systemText(errno)));
            return false;
        }
        done += written;
    }
    return true;
}

bool replace(const QString& from, const QString& to, QString* error)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0) {
        return true;
    }
    fill(error, QStringLiteral("%1 cannot be renamed to %2: %3.").arg(from, to, systemText(errno)));
    return false;
}

void hide(const QString& /*path*/) {}

bool isNameTooLong(const QString& fileName)
{
    return QFile::encodeName(fileName).size() > kMaxNameBytes;
}

QByteArray locationFor(const QString& path)
{
    return QFile::encodeName(path);
}

} // namespace KdDisk

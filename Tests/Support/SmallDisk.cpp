#include "SmallDisk.h"

#include <QFile>
#include <QStorageInfo>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

bool write(const char* path, const QByteArray& text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(text) == text.size();
}

/** Being root among nobody else, which is what an ordinary user may be. */
bool becomeRootInside()
{
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("/proc/self/setgroups", "deny") &&
           write("/proc/self/uid_map", "0 " + user + " 1") &&
           write("/proc/self/gid_map", "0 " + group + " 1");
}

} // namespace

bool SmallDisk::prepare()
{
    const bool isApart = unshare(CLONE_NEWNS) == 0 || becomeRootInside();
    return isApart && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

SmallDisk::SmallDisk(qint64 bytes)
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    const QByteArray options = "size=" + QByteArray::number(bytes);
    m_isMounted =
        mount("none", folder.constData(), "tmpfs", MS_NOSUID | MS_NODEV, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted) {
        umount2(QFile::encodeName(m_folder.path()).constData(), MNT_DETACH);
    }
}

qint64 SmallDisk::freeBytes() const
{
    return QStorageInfo(m_folder.path()).bytesAvailable();
}

bool SmallDisk::fillUpTo(qint64 bytesLeft)
{
    QFile filler(filePath(QStringLiteral("filler")));
    const qint64 bytes = freeBytes() - bytesLeft;
    if (bytes < 0 || !filler.open(QIODevice::Append | QIODevice::Unbuffered)) {
        return false;
    }
    // Who writes to the disk meanwhile may be faster: then it is full before all is written.
    return filler.write(QByteArray(static_cast<int>(bytes), 'x')) == bytes ||
           freeBytes() <= bytesLeft;
}

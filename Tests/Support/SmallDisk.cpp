#include "SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>

#include <sys/mount.h>

SmallDisk::SmallDisk(const QString& folder, int kilobytes) : m_folder(folder)
{
    QDir().mkpath(folder);
    const QByteArray options = QByteArrayLiteral("size=") + QByteArray::number(kilobytes) + 'k';
    m_isMounted =
        mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted) {
        umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH);
    }
}

QString SmallDisk::filePath(const QString& name) const
{
    return QDir(m_folder).filePath(name);
}

qint64 SmallDisk::freeBytes() const
{
    return QStorageInfo(m_folder).bytesAvailable();
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

#include "KdProcessIdentity.h"

#include <QFile>
#include <QSysInfo>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

// The fields of /proc/<id>/stat from the state on. The name before it may hold anything, brackets
// and blanks too.
QList<QByteArray> statusFields(qint64 id)
{
    const QByteArray status = contentOf(QStringLiteral("/proc/%1/stat").arg(id));
    const int nameEnd = status.lastIndexOf(')');
    return nameEnd < 0 ? QList<QByteArray>() : status.mid(nameEnd + 1).simplified().split(' ');
}

} // namespace

KdProcessIdentity KdProcessIdentity::ofId(qint64 id)
{
    constexpr int kState = 0;
    constexpr int kStartTime = 19;
    KdProcessIdentity identity;
    identity.id = id;
    const QList<QByteArray> fields = statusFields(id);
    // A process that was killed stays listed until its parent asks for it.
    if (fields.size() > kStartTime && fields[kState] != "Z" && fields[kState] != "X") {
        // The start time counts from the machine's own start.
        identity.started = QString::fromLatin1(QSysInfo::bootUniqueId() + '/' + fields[kStartTime]);
    }
    return identity;
}

QString KdProcessIdentity::scope()
{
    // A container has process ids of its own.
    return QString::fromLatin1(QSysInfo::machineUniqueId()) + QLatin1Char('/') +
           QFile::symLinkTarget(QStringLiteral("/proc/self/ns/pid")).section(QLatin1Char('/'), -1);
}

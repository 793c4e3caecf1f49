#include "ProcessTime.h"

#include <QDir>
#include <QFile>

#include <ctime>

namespace {

double ofProcess(qint64 processId)
{
    clockid_t clock{};
    timespec used{};
    const bool isThere = clock_getcpuclockid(static_cast<pid_t>(processId), &clock) == 0 &&
                         clock_gettime(clock, &used) == 0;
    return isThere ? static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9
                   : 0.0;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

double ProcessTime::ofTree(qint64 processId)
{
    double seconds = ofProcess(processId);
    const QDir threads(QStringLiteral("/proc/%1/task").arg(processId));
    const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        const QByteArray children = contentOf(threads.filePath(name + QStringLiteral("/children")));
        const QList<QByteArray> ids = children.simplified().split(' ');
        for (const QByteArray& id : ids) {
            seconds += id.isEmpty() ? 0.0 : ofTree(id.toLongLong());
        }
    }
    return seconds;
}

qint64 ProcessTime::displayServer()
{
    const QString display = qEnvironmentVariable("DISPLAY").section(QLatin1Char(':'), -1);
    const QString number = display.section(QLatin1Char('.'), 0, 0);
    return contentOf(QStringLiteral("/tmp/.X%1-lock").arg(number)).trimmed().toLongLong();
}

#include "KCoreDirs.h"

#include <QDir>
#include <QMutex>
#include <QMutexLocker>
#include <QStandardPaths>

namespace {

struct ChosenFolder
{
    QMutex mutex;
    QString path;
};

ChosenFolder& chosenFolder()
{
    // Never destroyed: threads may still ask while the process ends.
    static ChosenFolder* const folder = new ChosenFolder;
    return *folder;
}

QString defaultFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return (data.isEmpty() ? QDir::homePath() : data) + QStringLiteral("/KdRecord");
}

} // namespace

QString getZentraDocumentDir()
{
    ChosenFolder& chosen = chosenFolder();
    QMutexLocker lock(&chosen.mutex);
    QString path = chosen.path.isEmpty() ? defaultFolder() : chosen.path;
    lock.unlock();
    QDir().mkpath(path);
    return path;
}

void setZentraDocumentDir(const QString& path)
{
    const QString absolute =
        path.isEmpty() ? QString() : QDir::cleanPath(QDir(path).absolutePath());
    ChosenFolder& chosen = chosenFolder();
    QMutexLocker lock(&chosen.mutex);
    chosen.path = absolute;
    lock.unlock();
    if (!absolute.isEmpty()) {
        QDir().mkpath(absolute);
    }
}

#include <KdRecord/KdTakePath.h>

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>

namespace {

// An hour: no one records a take in every second of it, and a folder that says so is not believed.
constexpr int kSecondsToTry = 60 * 60;

} // namespace

bool KdTakePath::isThere(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

QString KdTakePath::compose(const QString& folder, const QString& pattern, const QDateTime& time)
{
    // The folder is added afterwards: it may hold a "%1" of its own.
    // QDateTime::toString() would write the digits of the system's language.
    const QString name =
        pattern.arg(QLocale::c().toString(time, QStringLiteral("yyyyMMdd_hhmmss")));
    return collapseSeparators(QDir::toNativeSeparators(folder + name), QDir::separator());
}

QString KdTakePath::composeFree(const QString& folder, const QString& pattern,
                                const QDateTime& time, const IsTaken& isTaken)
{
    for (int seconds = 0; seconds < kSecondsToTry; ++seconds) {
        QString path = compose(folder, pattern, time.addSecs(seconds));
        if (!isTaken(path)) {
            return path;
        }
    }
    return compose(folder, pattern, time);
}

QString KdTakePath::collapseSeparators(const QString& path, QChar separator)
{
    const QStringList parts = path.split(separator, Qt::SkipEmptyParts);
    const bool isRooted = separator == QLatin1Char('/') && path.startsWith(separator);
    return (isRooted ? QString(separator) : QString()) + parts.join(separator);
}

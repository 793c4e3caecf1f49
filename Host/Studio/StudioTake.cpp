#include <Studio/StudioTake.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <tuple>

QString StudioTake::name() const
{
    return QFileInfo(path).completeBaseName();
}

bool operator==(const StudioTake& left, const StudioTake& right)
{
    const auto tied = [](const StudioTake& take) {
        return std::tie(take.path, take.deviceName, take.durationMs, take.recorded, take.fileInfo,
                        take.fileExportInfo, take.state, take.problem);
    };
    return tied(left) == tied(right) && left.picture == right.picture;
}

StudioTake takeFromReport(const QString& path, const QString& fileInfo,
                          const QString& fileExportInfo)
{
    const QJsonObject info = QJsonDocument::fromJson(fileInfo.toUtf8()).object();
    StudioTake take;
    take.path = QDir::cleanPath(QDir::fromNativeSeparators(path));
    take.deviceName = info.value(QStringLiteral("device_name")).toString();
    take.durationMs =
        std::max<qint64>(0, info.value(QStringLiteral("file_duration")).toInt()) * 1000;
    take.recorded = QDateTime::currentDateTimeUtc();
    take.fileInfo = fileInfo;
    take.fileExportInfo = fileExportInfo;
    return take;
}

QString formatTakeLength(qint64 milliseconds)
{
    const qint64 seconds = std::max<qint64>(0, milliseconds) / 1000;
    QString minutesAndSeconds = QStringLiteral("%1:%2").arg(
        QString::number(seconds / 60 % 60),
        QString::number(seconds % 60).rightJustified(2, QLatin1Char('0')));
    if (seconds < 3600) {
        return minutesAndSeconds;
    }
    return QStringLiteral("%1:%2")
        .arg(seconds / 3600)
        .arg(minutesAndSeconds.rightJustified(5, QLatin1Char('0')));
}

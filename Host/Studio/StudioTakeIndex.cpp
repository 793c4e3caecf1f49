#include <Studio/StudioTakeIndex.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace StudioTakeIndex {

namespace {

constexpr int kVersion = 1;
constexpr int kMostTakes = 10000;
constexpr double kLongestMs = 1e12;

QString storedPath(const QString& path, const QString& folder)
{
    const QString prefix = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    return path.startsWith(prefix) ? path.mid(prefix.size()) : path;
}

QJsonObject toJson(const StudioTake& take, const QString& folder)
{
    return {{QStringLiteral("file"), storedPath(take.path, folder)},
            {QStringLiteral("device"), take.deviceName},
            {QStringLiteral("duration_ms"), take.durationMs},
            {QStringLiteral("recorded"), take.recorded.toUTC().toString(Qt::ISODateWithMs)},
            {QStringLiteral("file_info"), take.fileInfo},
            {QStringLiteral("file_export_info"), take.fileExportInfo}};
}

StudioTake fromJson(const QJsonObject& entry, const QString& folder)
{
    const QString file = entry.value(QStringLiteral("file")).toString();
    StudioTake take;
    take.path = file.isEmpty() ? QString() : QDir::cleanPath(QDir(folder).absoluteFilePath(file));
    take.deviceName = entry.value(QStringLiteral("device")).toString();
    const double duration = entry.value(QStringLiteral("duration_ms")).toDouble();
    take.durationMs = static_cast<qint64>(std::clamp(duration, 0.0, kLongestMs));
    take.recorded =
        QDateTime::fromString(entry.value(QStringLiteral("recorded")).toString(), Qt::ISODateWithMs)
            .toUTC();
    take.fileInfo = entry.value(QStringLiteral("file_info")).toString();
    take.fileExportInfo = entry.value(QStringLiteral("file_export_info")).toString();
    return take;
}

bool contains(const QVector<StudioTake>& takes, const QString& path)
{
    return std::any_of(takes.cbegin(), takes.cend(),
                       [&path](const StudioTake& take) { return take.path == path; });
}

} // namespace

QByteArray write(const QVector<StudioTake>& takes, const QString& folder)
{
    QJsonArray entries;
    for (const StudioTake& take : takes) {
        entries.append(toJson(take, folder));
    }
    const QJsonObject index{{QStringLiteral("version"), kVersion},
                            {QStringLiteral("takes"), entries}};
    return QJsonDocument(index).toJson();
}

Content read(const QByteArray& text, const QString& folder)
{
    const QJsonValue list = QJsonDocument::fromJson(text).object().value(QStringLiteral("takes"));
    Content content;
    if (!list.isArray()) {
        return content;
    }
    content.valid = true;
    const QJsonArray entries = list.toArray();
    for (const QJsonValue& entry : entries) {
        const StudioTake take = fromJson(entry.toObject(), folder);
        if (take.path.isEmpty() || contains(content.takes, take.path) ||
            content.takes.size() >= kMostTakes) {
            ++content.skipped;
        } else {
            content.takes.append(take);
        }
    }
    return content;
}

} // namespace StudioTakeIndex

#include "KdTrackEventLog.h"

#include "KdTrackEventLog_p.h"

#include <KCore/KCoreDirs.h>
#include <KdCore/KdBaseLog.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QStringList>

namespace {

constexpr int kMaximumKept = 1000;

/** Some twenty thousand reports. */
constexpr qint64 kFullBytes = 4 * 1024 * 1024;

struct State
{
    QVector<KdTrackEventRecord> records;
    bool isFailureLogged = false;
};

State& state()
{
    static State instance;
    return instance;
}

// QJsonDocument writes arrays and objects only, and objects with sorted keys; the order in which
// properties were set is part of a report.
QString toJson(const QVariant& value)
{
    const QJsonArray list{QJsonValue::fromVariant(value)};
    const QByteArray text = QJsonDocument(list).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

QByteArray toJsonLine(const KdTrackEventRecord& record)
{
    QStringList properties;
    for (const auto& [key, value] : record.properties) {
        properties.append(toJson(key) + QLatin1Char(':') + toJson(value));
    }
    // Joined, not by arg(): a property may hold "%1".
    const QStringList parts{QStringLiteral("{\"time\":"),
                            toJson(record.time.toString(Qt::ISODateWithMs)),
                            QStringLiteral(",\"name\":"),
                            toJson(record.name),
                            QStringLiteral(",\"properties\":{"),
                            properties.join(QLatin1Char(',')),
                            QStringLiteral("}}\n")};
    return parts.join(QString()).toUtf8();
}

QString olderFilePath()
{
    return getZentraDocumentDir() + QStringLiteral("/UsageEvents.old.jsonl");
}

/** What is older than a full file goes, so that the reports of years take no more than two of them.
 */
bool setFullFileAside()
{
    if (QFileInfo(KdTrackEventLog::filePath()).size() < kFullBytes) {
        return true;
    }
    // QFile replaces nothing that is there.
    QFile::remove(olderFilePath());
    return QFile::rename(KdTrackEventLog::filePath(), olderFilePath());
}

bool appendToFile(const QByteArray& line)
{
    if (!setFullFileAside()) {
        return false;
    }
    QFile file(KdTrackEventLog::filePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        return false;
    }
    const qint64 before = file.size();
    if (file.write(line) == line.size()) {
        return true;
    }
    // Half a line, on a full disk say, would spoil the one that follows it.
    file.resize(before);
    return false;
}

} // namespace

void KdTrackEventLog::append(const KdTrackEventRecord& record)
{
    QVector<KdTrackEventRecord>& records = state().records;
    if (records.size() == kMaximumKept) {
        records.removeFirst();
    }
    records.append(record);

    const bool isWritten = appendToFile(toJsonLine(record));
    if (!isWritten && !state().isFailureLogged) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {"Host/KdVBLModel/KdTrackEventLog", "KdTrackEventLog::append"},
                         "Usage reports cannot be written to %s", qUtf8Printable(filePath()));
    }
    state().isFailureLogged = !isWritten;
}

QVector<KdTrackEventRecord> KdTrackEventLog::records()
{
    return state().records;
}

void KdTrackEventLog::clear()
{
    state() = State();
}

QString KdTrackEventLog::filePath()
{
    return getZentraDocumentDir() + QStringLiteral("/UsageEvents.jsonl");
}

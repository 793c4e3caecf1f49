#include "KdTakeJournal.h"

#include "KdDisk.h"
#include "KdProcessIdentity.h"
#include "KdTakeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr qint64 kMaxBytes = Q_INT64_C(64) * 1024;
constexpr qint64 kForeignQuietSeconds = 60;

const QLatin1String kSuffix(".kdtake");
const QLatin1String kFile("file");
const QLatin1String kKind("kind");
const QLatin1String kWebcam("webcam");
const QLatin1String kAudio("audio");
const QLatin1String kFormat("format");
const QLatin1String kStarted("started");
const QLatin1String kProcessId("processId");
const QLatin1String kProcessStarted("processStarted");
const QLatin1String kProcessScope("processScope");

// The take is named without its folder, so that it is found even after the folder was moved.
QByteArray toJson(const KdTakeRecord& record)
{
    QJsonObject json;
    json[kFile] = QFileInfo(record.takePath).fileName();
    json[kKind] = QString(record.kind == KdTakeRecord::Kind::Webcam ? kWebcam : kAudio);
    json[kFormat] = record.format;
    json[kStarted] = record.started.toString(Qt::ISODateWithMs);
    json[kProcessId] = QString::number(record.processId);
    json[kProcessStarted] = record.processStarted;
    json[kProcessScope] = record.processScope;
    return QJsonDocument(json).toJson();
}

KdTakeRecord fromJson(const QJsonObject& json, const QDir& folder)
{
    KdTakeRecord record;
    record.takePath = folder.filePath(json[kFile].toString());
    record.kind =
        json[kKind].toString() == kWebcam ? KdTakeRecord::Kind::Webcam : KdTakeRecord::Kind::Audio;
    record.format = json[kFormat].toString();
    record.started = QDateTime::fromString(json[kStarted].toString(), Qt::ISODateWithMs);
    record.processId = json[kProcessId].toString().toLongLong();
    record.processStarted = json[kProcessStarted].toString();
    record.processScope = json[kProcessScope].toString();
    return record;
}

KdTakeRecord signedByThisProcess(KdTakeRecord record)
{
    const KdProcessIdentity self = KdProcessIdentity::current();
    record.started = QDateTime::currentDateTimeUtc();
    record.processId = self.id;
    record.processStarted = self.started;
    record.processScope = KdProcessIdentity::scope();
    return record;
}

QByteArray boundedContent(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly) || file.size() > kMaxBytes) {
        return QByteArray();
    }
    return file.read(kMaxBytes);
}

} // namespace

KdTakeJournal::KdTakeJournal() = default;

KdTakeJournal::~KdTakeJournal() = default;

bool KdTakeJournal::begin(const KdTakeRecord& record, QString* error)
{
    const QString path = pathFor(record.takePath);
    QFile::remove(path);
    const KdDisk::Handle file = KdDisk::createExclusively(path, error);
    if (!file.isOpen()) {
        return false;
    }
    m_path = path;
    KdDisk::hide(path);
    if (KdDisk::write(file, toJson(signedByThisProcess(record)), error) &&
        KdDisk::sync(file, error)) {
        KdDisk::syncFolder(QFileInfo(path).path());
        return true;
    }
    remove();
    return false;
}

void KdTakeJournal::remove()
{
    if (!m_path.isEmpty()) {
        QFile::remove(m_path);
        m_path.clear();
    }
}

QString KdTakeJournal::pathFor(const QString& takePath)
{
    return KdTakeFile::hiddenPathBeside(takePath, kSuffix);
}

QStringList KdTakeJournal::findIn(const QString& folder)
{
    if (folder.isEmpty()) {
        return QStringList();
    }
    const QDir dir(folder);
    QStringList paths;
    const QStringList names = dir.entryList({QStringLiteral(".*%1").arg(kSuffix)},
                                            QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString& name : names) {
        paths.append(dir.absoluteFilePath(name));
    }
    return paths;
}

bool KdTakeJournal::read(const QString& journalPath, KdTakeRecord* record)
{
    const QJsonObject json = QJsonDocument::fromJson(boundedContent(journalPath)).object();
    const QDir folder = QFileInfo(journalPath).absoluteDir();
    const QString name = json[kFile].toString();
    if (name.isEmpty() || QFileInfo(name).fileName() != name ||
        pathFor(folder.filePath(name)) !=
            QDir::cleanPath(QFileInfo(journalPath).absoluteFilePath())) {
        return false;
    }
    *record = fromJson(json, folder);
    return true;
}

bool KdTakeJournal::isWriterRunning(const KdTakeRecord& record)
{
    if (record.processScope == KdProcessIdentity::scope()) {
        return KdProcessIdentity{record.processId, record.processStarted}.isRunning();
    }
    const QDateTime written = QFileInfo(record.takePath).lastModified();
    return written.isValid() && written.secsTo(QDateTime::currentDateTime()) < kForeignQuietSeconds;
}

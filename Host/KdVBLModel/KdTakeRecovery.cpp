#include "KdTakeRecovery.h"

#include "KdDisk.h"
#include "KdTakeFile.h"

#include <KdCore/KdBaseLog.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <algorithm>

namespace {

// A take that began, as against the few bytes that were on their way when its predecessor was to be
// deleted.
constexpr qint64 kBegunMs = 1000;
// What a take without an index may hold: half a second of media, several times over for what waited
// to be written. A larger file is not what we think it is. Sound comes at 64 kB a second at most.
constexpr qint64 kMostSoundWithoutIndex = Q_INT64_C(256) * 1024;
constexpr qint64 kMostClipWithoutIndex = Q_INT64_C(8) * 1024 * 1024;

using Outcome = RepairResult::Outcome;
using Reason = RepairResult::Reason;

RepairResult failed(Reason reason, const QString& message)
{
    RepairResult result;
    result.reason = reason;
    result.message = message;
    return result;
}

bool isStillUnfinished(const UnfinishedTake& take)
{
    KdTakeRecord record;
    return KdTakeJournal::read(take.journalPath, &record) &&
           record.takePath == take.record.takePath && !KdTakeJournal::isWriterRunning(record);
}

void closeJournal(const UnfinishedTake& take)
{
    KdDisk::syncFolder(QFileInfo(take.record.takePath).path());
    QFile::remove(take.journalPath);
}

/** Removes what the unfinished take left and brings back the one that it was to replace, if any. */
bool takeBack(const UnfinishedTake& take)
{
    const QString path = take.record.takePath;
    const QString previous = KdTakeFile::previousPath(path);
    if (QFileInfo::exists(previous)) {
        return KdDisk::replace(previous, path, nullptr);
    }
    return !QFileInfo::exists(path) || QFile::remove(path);
}

RepairResult nothingThere(const UnfinishedTake& take, const QString& message)
{
    RepairResult result = failed(Reason::CannotRemove, message);
    if (!takeBack(take)) {
        result.message += QStringLiteral(" It cannot be removed.");
        return result;
    }
    closeJournal(take);
    result.outcome = Outcome::NothingRecoverable;
    result.reason = Reason::None;
    return result;
}

RepairResult settled(const UnfinishedTake& take, const RepairResult& result)
{
    const QString previous = KdTakeFile::previousPath(take.record.takePath);
    if (QFileInfo::exists(previous) && result.durationMs < kBegunMs) {
        return nothingThere(take, QStringLiteral("The recording had not begun."));
    }
    QFile::remove(previous);
    closeJournal(take);
    return result;
}

qint64 mostWithoutIndex(KdTakeRecord::Kind kind)
{
    return kind == KdTakeRecord::Kind::Webcam ? kMostClipWithoutIndex : kMostSoundWithoutIndex;
}

RepairResult repairLocked(const UnfinishedTake& take, const KdTakeRecovery::Progress& progress)
{
    const QFileInfo file(take.record.takePath);
    if (!file.exists() || file.size() == 0) {
        return nothingThere(take, QStringLiteral("Nothing had been recorded yet."));
    }
    RepairResult result = KdTakeRepair::run(take.record.takePath, progress);
    if (result.outcome == Outcome::Repaired) {
        return settled(take, result);
    }
    if (result.outcome != Outcome::NothingRecoverable) {
        return result;
    }
    return file.size() > mostWithoutIndex(take.record.kind)
               ? failed(Reason::Damaged,
                        QStringLiteral("%1 is damaged beyond repair and is left as it is.")
                            .arg(file.filePath()))
               : nothingThere(take, result.message);
}

void report(const UnfinishedTake& take, const RepairResult& result)
{
    const bool isGood = result.outcome == Outcome::Repaired;
    KdBaseLog::write(isGood ? KdBaseLog::Info : KdBaseLog::Warning,
                     {"Host/KdVBLModel/KdTakeRecovery", "KdTakeRecovery::repair"},
                     "%s, %lld ms: %s", take.record.takePath.toUtf8().constData(),
                     static_cast<long long>(result.durationMs),
                     result.message.toUtf8().constData());
}

} // namespace

QVector<UnfinishedTake> KdTakeRecovery::find(const QString& folder)
{
    QVector<UnfinishedTake> takes;
    const QStringList journals = KdTakeJournal::findIn(folder);
    for (const QString& journal : journals) {
        UnfinishedTake take;
        if (KdTakeJournal::read(journal, &take.record) &&
            !KdTakeJournal::isWriterRunning(take.record)) {
            take.journalPath = journal;
            take.bytes = QFileInfo(take.record.takePath).size();
            takes.append(take);
        }
    }
    std::stable_sort(takes.begin(), takes.end(),
                     [](const UnfinishedTake& left, const UnfinishedTake& right) {
                         return left.record.started < right.record.started;
                     });
    return takes;
}

RepairResult KdTakeRecovery::repair(const UnfinishedTake& take, const Progress& progress)
{
    QLockFile lock(KdTakeFile::hiddenPathBeside(take.record.takePath, QStringLiteral(".kdrepair")));
    lock.setStaleLockTime(0);
    if (!lock.tryLock(0)) {
        return failed(Reason::Busy,
                      QStringLiteral("%1 cannot be repaired now: its folder is not writable, or "
                                     "another program is at it.")
                          .arg(take.record.takePath));
    }
    if (!isStillUnfinished(take)) {
        return failed(Reason::Settled, QStringLiteral("%1 is not an unfinished recording any more.")
                                           .arg(take.record.takePath));
    }
    RepairResult result = repairLocked(take, progress);
    report(take, result);
    return result;
}

bool KdTakeRecovery::discard(const UnfinishedTake& take)
{
    if (!isStillUnfinished(take) || !takeBack(take)) {
        return false;
    }
    closeJournal(take);
    return !QFileInfo::exists(take.journalPath);
}

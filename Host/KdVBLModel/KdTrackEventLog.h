#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <QVector>

#include <utility>

/** A usage report that was sent. */
struct KdTrackEventRecord
{
    QDateTime time;                                   ///< when it was sent, local time
    QString name;                                     ///< of the event
    QVector<std::pair<QString, QVariant>> properties; ///< in the order they were set
};

/**
 * The usage reports of this process, in the order sent, also written as JSON lines to
 * "UsageEvents.jsonl" in the document folder. When that has 4 MB it becomes
 * "UsageEvents.old.jsonl", in place of a former one, and a new one begins. A file that cannot be
 * written is logged once, until it can be written again; the reports are kept in memory all the
 * same. GUI thread.
 */
namespace KdTrackEventLog {

/** @return the reports in the order sent, the last 1000 at most. */
KDVBLMODEL_EXPORT QVector<KdTrackEventRecord> records();
/** Forgets the records in memory; the file stays. */
KDVBLMODEL_EXPORT void clear();
/** @return full path of the file, in the document folder of now. */
KDVBLMODEL_EXPORT QString filePath();

} // namespace KdTrackEventLog

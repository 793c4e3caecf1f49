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
    QDateTime time;
    QString name;
    QVector<std::pair<QString, QVariant>> properties;
};

/**
 * The usage reports of this process, in the order sent, also written as JSON lines to
 * "UsageEvents.jsonl" in the document folder. A file that cannot be written is logged once, until
 * it can be written again; the reports are kept in memory all the same. GUI thread.
 */
namespace KdTrackEventLog {

/** The last 1000 at most. */
KDVBLMODEL_EXPORT QVector<KdTrackEventRecord> records();
/** Forgets the records in memory; the file stays. */
KDVBLMODEL_EXPORT void clear();
KDVBLMODEL_EXPORT QString filePath();

} // namespace KdTrackEventLog

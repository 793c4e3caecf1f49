#pragma once

#include "KdTrackEventLog.h"

namespace KdTrackEventLog {

/** Keeps the record in memory and adds it to the file. */
void append(const KdTrackEventRecord& record);

} // namespace KdTrackEventLog

#pragma once

#include <QtGlobal>

#include <gst/gst.h>

class KdTakeWriter;

/** Sound for a writer that is tested without a source. */
namespace TakeSound {

/** A block of 10 ms of a 1 kHz sine in 16 bits that continues at the given frame. Owned by the
 * caller. */
GstBuffer* tone(const KdTakeWriter& writer, qint64 firstFrame);

/** @return whether the writer took all of it. */
bool pushSeconds(KdTakeWriter& writer, double seconds);

} // namespace TakeSound

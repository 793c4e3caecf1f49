#pragma once

#include <QString>
#include <QtGlobal>

/** Recorded time as seconds, as text and in frames of the host's project. Any thread. */
namespace KdTakeTime {

/** In single precision, as the host's own time line counts. Negative time counts as 0. */
float toSeconds(qint64 milliseconds);

/** @return the seconds that are over, not rounded. */
int toWholeSeconds(qint64 milliseconds);

/** @return " hh:mm:ss" with a leading blank; hours may take more than two digits. */
QString toText(int seconds);

/**
 * @return a project's frames per second: numerator / denominator, 60 at most; 24000/1001 is 23.97;
 * 0 when either is not positive.
 */
float framesPerSecond(qint64 numerator, qint64 denominator);

/** @return the time in frames, to the nearest one, halves up. */
qint64 toFrames(qint64 milliseconds, float framesPerSecond);

} // namespace KdTakeTime

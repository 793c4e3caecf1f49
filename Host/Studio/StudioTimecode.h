#pragma once

#include <QString>
#include <QVector>

/** The arithmetic of a project's frames. Pure functions. */
namespace StudioTimecode {

/**
 * The project's frames in a second as the recording dialogs count them: 23.97 for 24000/1001,
 * everything else its quotient, at most 60; 0.0 for a fraction that makes no sense.
 */
double framesPerSecond(qint64 numerator, qint64 denominator);

/** Rounds halves up; 0 for a rate that makes no sense. */
qint64 framesFromMs(qint64 milliseconds, double framesPerSecond);
qint64 msFromFrames(qint64 frames, double framesPerSecond);

/** "00:01:02:05": hours, minutes, seconds and frames, counted at the next whole rate. */
QString text(qint64 frames, double framesPerSecond);

} // namespace StudioTimecode

/** Maps project frames to pixels of a strip. A value. */
struct StudioTimelineScale
{
    double pixelsPerFrame = 1.0;
    int left = 0; ///< pixel of frame 0

    /** The scale at which that many frames fill a width; a strip never shows less than 10 s. */
    static StudioTimelineScale fit(qint64 frames, double framesPerSecond, int left, int width);

    int toPixel(qint64 frame) const;
    qint64 toFrame(int pixel) const;
    /** Frames between two labelled marks, so that these keep that distance at least. */
    qint64 markStep(double framesPerSecond, int leastPixels) const;
};

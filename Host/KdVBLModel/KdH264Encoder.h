#pragma once

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QSize>
#include <QString>
#include <QVector>

/**
 * The H.264 encoder of a take: openh264enc, which writes a profile that everything plays, holds
 * nothing back, and is as good to the eye at a third of the cost of x264's usual preset. x264enc
 * takes over where it is not installed.
 *
 * Reentrant; needs gst_init().
 */
namespace KdH264Encoder {

/** @return bits per second for pictures of this size and rate: 4 Mbit/s for 1280x720 at 30, less
 * than in proportion for more, as larger pictures have more in common. Pure. */
KDVBLMODEL_EXPORT int bitrateFor(QSize size, double frameRate);

/** Pictures that the encoder takes; larger ones it refuses. */
constexpr int kMostWidth = 4096;
constexpr int kMostHeight = 2304;
constexpr int kLeastSide = 16;

/**
 * @param error names the missing elements on failure
 * @return elements in order, floating: from I420 to H.264 as a file has it; none on failure.
 */
QVector<GstElement*> createChain(QSize size, double frameRate, QString* error);

} // namespace KdH264Encoder

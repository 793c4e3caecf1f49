#pragma once

#include <KdVBLModel/KdAacFormat.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

#include <gst/gst.h>

/**
 * The AAC encoder of a take.
 *
 * A variable bit rate is written by avenc_aac with its fast coder: it spends what the sound needs,
 * next to nothing on silence, at 0.4 of the cost of that encoder's default and without loss to the
 * ear. A constant one is written by voaacenc, the one encoder here that holds its rate. Where one
 * is not installed the other takes over.
 *
 * Reentrant; needs gst_init().
 */
class KDVBLMODEL_EXPORT KdAacEncoder
{
public:
    /**
     * @param format as nearestAacFormat() gave it.
     * @param error names the missing elements on failure; may be null.
     * @return a new element with a floating reference, ready to be added to a bin; null on failure.
     */
    static GstElement* create(const KdAacFormat& format, QString* error);

    /** @return audio/x-raw with the rate and channels that the encoder must be fed; owned by the
     * caller. */
    static GstCaps* inputCaps(const KdAacFormat& format);
};

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

    /** By how many frames the encoder's sound comes late, which players do not make up for: they
     * play silence first. */
    static int delay(GstElement* encoder);

    /**
     * How much silence has to follow the sound for all of it to come out: an encoder that writes
     * whole packets only keeps the rest of the last one, and its own delay, to itself.
     * @param frames pushed so far
     */
    static int framesToFlush(GstElement* encoder, qint64 frames);

    /** @return audio/x-raw with the rate and channels that the encoder must be fed; owned by the
     * caller. */
    static GstCaps* inputCaps(const KdAacFormat& format);
};

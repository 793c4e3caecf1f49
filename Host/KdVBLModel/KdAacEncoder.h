#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

typedef struct _GstCaps GstCaps;
typedef struct _GstElement GstElement;

/** The AAC format that will really be written for one that was asked for. */
struct KdAacFormat
{
    int samplerate = 44100;
    int channels = 2;
    int bitrate = 128000;  ///< bits per second, all channels
    bool variable = false; ///< the bit rate follows the sound; bitrate is then its aim
    QString
        note; ///< one sentence for the log when something differs from what was asked; else empty
};

/**
 * @return the nearest format that AAC has: known rates and one or two channels, at most 6144 bit
 * per channel in a frame of 1024 samples. Out-of-range fields are moved to the nearest valid value,
 * unknown modes count as variable. Pure; any thread.
 */
KDVBLMODEL_EXPORT KdAacFormat nearestAacFormat(const KdVBLMODEL::KdAudioFormat& asked);

/** The AAC encoder of a take. Reentrant; needs gst_init(). */
class KDVBLMODEL_EXPORT KdAacEncoder
{
public:
    /**
     * @param format as nearestAacFormat() gave it.
     * @param error names the missing element on failure; may be null.
     * @return a new element with a floating reference, ready to be added to a bin; null on failure.
     */
    static GstElement* create(const KdAacFormat& format, QString* error);

    /** @return audio/x-raw with the rate and channels that the encoder must be fed; owned by the
     * caller. */
    static GstCaps* inputCaps(const KdAacFormat& format);
};

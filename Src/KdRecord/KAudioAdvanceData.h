#pragma once

/**
 * @file
 * The advanced settings of a voice-over recording, as values.
 */

#include <QtGlobal>

/** The advanced settings of a voice-over recording. A value. */
struct _AudioAdvanceData
{
    /** Four-character code, first character in the lowest byte; "AAC ". */
    quint32 encoder = 0x20434141;
    /** 1 mono, 2 stereo */
    qint32 channels = 2;
    /** Hz */
    qint32 sampleRate = 44100;
    /** kbit/s */
    qint32 bitrate = 128;
    /** 1 VBR, 2 CBR */
    quint32 bitrateMode = 1;
    /** Open the preview window while recording. */
    bool recordPreview = true;
};

/**
 * @param a one record
 * @param b the other
 * @return whether every field is the same.
 */
inline bool operator==(const _AudioAdvanceData& a, const _AudioAdvanceData& b)
{
    return a.encoder == b.encoder && a.channels == b.channels && a.sampleRate == b.sampleRate &&
           a.bitrate == b.bitrate && a.bitrateMode == b.bitrateMode &&
           a.recordPreview == b.recordPreview;
}

/**
 * @param a one record
 * @param b the other
 * @return whether any field differs.
 */
inline bool operator!=(const _AudioAdvanceData& a, const _AudioAdvanceData& b)
{
    return !(a == b);
}

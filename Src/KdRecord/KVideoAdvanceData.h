#pragma once

/**
 * @file
 * The advanced settings of a video recording, as values.
 */

#include <QtGlobal>

/**
 * The advanced settings of a video recording. The defaults are the first choices of their page. A
 * value.
 */
struct _VideoAdvanceData
{
    /** Four-character code, first character in the lowest byte; "C264". */
    quint32 encoder = 0x34363243;
    /** Frames per second */
    float frameRate = 12.0F;
    /** 1 VBR */
    quint32 bitrateMode = 1;
    /** The encoder's code; codes rise in another order than the quality they stand for. */
    quint32 quality = 7;
};

/**
 * @param a one record
 * @param b the other
 * @return whether every field is exactly the same.
 */
inline bool operator==(const _VideoAdvanceData& a, const _VideoAdvanceData& b)
{
    return a.encoder == b.encoder && a.frameRate == b.frameRate && a.bitrateMode == b.bitrateMode &&
           a.quality == b.quality;
}

/**
 * @param a one record
 * @param b the other
 * @return whether any field differs.
 */
inline bool operator!=(const _VideoAdvanceData& a, const _VideoAdvanceData& b)
{
    return !(a == b);
}

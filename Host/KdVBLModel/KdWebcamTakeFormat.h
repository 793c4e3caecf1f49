#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QSize>
#include <QString>

/** What a webcam take is made of. */
struct KdWebcamTakeFormat
{
    /** Of the pictures that come in. An odd line or column at the edge is left out of the file. */
    QSize size;
    /** Pictures per second that the camera was asked for, 1 to 240. */
    double frameRate = 30.0;
    /** The pictures' colours as GStreamer names them ("bt601", "bt709"); empty: as it takes them by
     * their size. The file says the same, so nothing is converted. */
    QString colorimetry;
    bool hasSound = false;
    KdVBLMODEL::KdAudioFormat sound; ///< the nearest that AAC has is written
    bool isFlipped = false;
    KdVBLMODEL::_KdCaptureRecordShape shape = KdVBLMODEL::fcrsSquare;
    /** The file may exist: it is this recorder's own last take, which goes when this one has begun.
     */
    bool takeAgain = false;
};

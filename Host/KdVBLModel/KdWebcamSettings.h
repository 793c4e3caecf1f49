#pragma once

#include <KdVBLModel/KdCaptureDevice.h>

#include <QSize>

/** What a webcam recorder was told to do. */
struct KdWebcamSettings
{
    KdCaptureDevice camera;
    QSize size;
    double frameRate = 0.0;
    KdCaptureDevice microphone;
    bool hasSound = false;
    KdVBLMODEL::KdAudioFormat sound;
    int intervalMs = 50;
    QString outputFile;
    KdVBLMODEL::_KdCaptureRecordShape shape = KdVBLMODEL::fcrsSquare;
    bool isFlipped = false;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode background = KdVBLMODEL::fcbmNone;
};

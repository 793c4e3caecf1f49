#include "FileRecorder.h"
#include "FileWebcamRecorder.h"

// All that the module asks an engine for.

KdVBLMODEL::IKdAudioRecorder* KdVBLMODEL::createAudioRecorder(QObject* owner)
{
    Q_UNUSED(owner)
    return new FileAudioRecorder;
}

KdVBLMODEL::IKdWebcamRecorder* KdVBLMODEL::createWebcamRecorder()
{
    return new FileWebcamRecorder;
}

#include <KdRecord/KdCaptureEngine.h>

KdVBLMODEL::IKdWebcamRecorder* KdVBLMODEL::createWebcamRecorder()
{
    return nullptr; // An engine that cannot record webcams yet says so.
}

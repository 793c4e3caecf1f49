#include <KdRecord/KdWebcamTakeParams.h>

#include <algorithm>

KdVBLMODEL::_KdWebcamRecordParams KdWebcamTakeParams::compose(const QString& path, int audioRow,
                                                              double frameRate)
{
    KdVBLMODEL::_KdWebcamRecordParams params;
    params.recordAudio = audioRow >= 0;
    params.audioIndex = std::max(audioRow, -1);
    params.outputName = path;
    params.interval = kInterval;
    params.video.fourcc = KdVBLMODEL::kFourCcH264;
    params.video.frameRate = frameRate;
    return params;
}

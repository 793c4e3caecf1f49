#pragma once

#include <KdRecord/KdCaptureEngine.h>

/** What a webcam take is recorded with. Functions of values. */
namespace KdWebcamTakeParams {

/** Interval of the engine's time and level reports in ms. */
constexpr int kInterval = 100;

/**
 * @param audioRow position in the list of audio inputs read last; negative: without sound
 * @param frameRate frames per second
 */
KdVBLMODEL::_KdWebcamRecordParams compose(const QString& path, int audioRow, double frameRate);

} // namespace KdWebcamTakeParams

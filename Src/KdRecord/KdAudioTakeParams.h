#pragma once

#include <KdRecord/KdCaptureEngine.h>

class KAudioAdvanceSettings;

/** What a voice-over take is recorded with. Functions of values. */
namespace KdAudioTakeParams {

/** Interval of the engine's time and level reports in ms. */
constexpr int kInterval = 50;

/** What the panel and its adapter contribute. */
struct Input
{
    int deviceRow = -1; ///< position in the device list read last
    QString path;
    qint32 bitsPerSample = 16;
    double volume = -1.0;
};

/** Fills a parameter record: the settings hold kbit/s, the engine takes bit/s. */
KdVBLMODEL::_KdAudioRecordParams compose(const Input& input, const KAudioAdvanceSettings& settings);

} // namespace KdAudioTakeParams

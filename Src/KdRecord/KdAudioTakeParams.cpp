#include <KdRecord/KdAudioTakeParams.h>

#include <KdAppSettings/KdAppSettings.h>

#include <algorithm>
#include <limits>

namespace {

qint32 toBitsPerSecond(int kilobits)
{
    constexpr int kMost = std::numeric_limits<qint32>::max() / 1000;
    return std::clamp(kilobits, 0, kMost) * 1000;
}

} // namespace

KdVBLMODEL::_KdAudioRecordParams KdAudioTakeParams::compose(const Input& input,
                                                            const KAudioAdvanceSettings& settings)
{
    KdVBLMODEL::_KdAudioRecordParams params;
    params.index = input.deviceRow;
    params.interval = kInterval;
    params.outputName = input.path;
    params.format.bitrateMode = static_cast<qint32>(settings.GetBitrateMode());
    params.format.fourcc = static_cast<qint32>(settings.GetAudioEncode());
    params.format.bitrate = toBitsPerSecond(settings.GetBitrate());
    params.format.channels = settings.GetChannels();
    params.format.bitPerSample = input.bitsPerSample;
    params.format.samplerate = settings.GetSampleRate();
    params.format.volume = input.volume;
    return params;
}

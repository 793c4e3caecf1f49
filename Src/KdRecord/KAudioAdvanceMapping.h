#pragma once

#include <KdRecord/KAudioAdvanceData.h>

/** Carries the advanced audio settings between the dialog and a host's settings object. */
namespace KAudioAdvanceMapping {

/** @param settings has the getters of KAudioAdvanceSettings. */
template <typename Settings>
_AudioAdvanceData read(const Settings& settings)
{
    _AudioAdvanceData data;
    data.encoder = settings.GetAudioEncode();
    data.channels = settings.GetChannels();
    data.sampleRate = settings.GetSampleRate();
    data.bitrate = settings.GetBitrate();
    data.bitrateMode = settings.GetBitrateMode();
    data.recordPreview = settings.GetRecordPreview();
    return data;
}

/**
 * Writes what an accepted dialog holds, in an order that hosts rely on. The preview flag is left
 * alone: its switch has written it the moment it was clicked.
 * @param settings has the setters of KAudioAdvanceSettings.
 */
template <typename Settings>
void write(const _AudioAdvanceData& data, Settings& settings)
{
    settings.SetAudioEncode(data.encoder);
    settings.SetBitrate(data.bitrate);
    settings.SetChannels(data.channels);
    settings.SetBitrateMode(data.bitrateMode);
    settings.SetSampleRate(data.sampleRate);
}

} // namespace KAudioAdvanceMapping

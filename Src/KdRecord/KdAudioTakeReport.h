#pragma once

#include <QString>

/** The two JSON texts that go to the host with a finished voice-over. Any thread. */
namespace KdAudioTakeReport {

struct Values
{
    int audioChannels = 0;
    int samplingRate = 0; ///< carries the bits per sample; hosts read it as such
    int fileDuration = 0; ///< s
    QString deviceName;   ///< may hold anything
};

/** @return "sampling_rate", "audio_channels", "file_duration" and "device_name", indented. */
QString fileInfo(const Values& values);

/** @return an empty object: a voice-over has nothing to say about its export. */
QString fileExportInfo();

} // namespace KdAudioTakeReport

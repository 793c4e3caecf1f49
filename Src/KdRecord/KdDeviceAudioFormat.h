#pragma once

#include <KdRecord/KdCaptureEngine.h>

/**
 * The audio format that selecting a device establishes: the engine's format record without the
 * bitrate mode, which is no part of it. The defaults are those of every device. A value.
 */
struct KdDeviceAudioFormat
{
    qint32 fourcc =
        KdVBLMODEL::kFourCcAac; ///< codec, four characters, first one in the lowest byte
    qint32 bitrate = 128000;    ///< bits per second
    qint32 bitPerSample = 16;   ///< of what is handed to the codec
    qint32 channels = 2;        ///< 1 mono, 2 stereo
    qint32 samplerate = 44100;  ///< Hz
    double volume = -1.0;       ///< 0.0 to 1.0; -1.0: not set, the device keeps its own

    /** @return what the engine is handed, with a variable bitrate. */
    KdVBLMODEL::KdAudioFormat record() const
    {
        KdVBLMODEL::KdAudioFormat record;
        record.bitrateMode = KdVBLMODEL::fbmVariable;
        record.fourcc = fourcc;
        record.bitrate = bitrate;
        record.channels = channels;
        record.bitPerSample = bitPerSample;
        record.samplerate = samplerate;
        record.volume = volume;
        return record;
    }
};

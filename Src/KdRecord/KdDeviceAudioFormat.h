#pragma once

#include <KdRecord/KdCaptureEngine.h>

/**
 * The audio format that selecting a device establishes: the engine's format record without the
 * bitrate mode, which is no part of it.
 */
struct KdDeviceAudioFormat
{
    qint32 fourcc = KdVBLMODEL::kFourCcAac;
    qint32 bitrate = 128000;
    qint32 bitPerSample = 16;
    qint32 channels = 2;
    qint32 samplerate = 44100;
    double volume = -1.0;

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

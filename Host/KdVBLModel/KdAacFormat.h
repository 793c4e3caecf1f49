#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

/** The AAC format that will really be written for one that was asked for. */
struct KdAacFormat
{
    int samplerate = 44100;
    int channels = 2;
    int bitrate = 128000; ///< bits per second, all channels
    bool isConstant =
        true; ///< the bit rate is held; otherwise it follows the sound, bitrate is its aim
    QString
        note; ///< one sentence for the log when something differs from what was asked; else empty
};

/** AAC's own limit: 6144 bit for each channel in a frame of 1024 samples. @return bits per second
 */
constexpr int aacMaxBitrate(int samplerate, int channels)
{
    return 6 * samplerate * channels;
}

/** The most for which an encoder that holds its bit rate is at hand. @return bits per second */
constexpr int aacMaxConstantBitrate(int samplerate, int channels)
{
    constexpr int kPerChannel = 160000;
    return 6 * samplerate < kPerChannel ? 6 * samplerate * channels : kPerChannel * channels;
}

/**
 * @return the nearest format that can be written: a sample rate that AAC knows, one or two
 * channels, at most aacMaxBitrate(). A constant bit rate beyond aacMaxConstantBitrate() becomes a
 * variable one, which comes nearer to what was asked than a lower constant one. Every field may
 * hold any value; a bit rate of 0 or less counts as 128000, an unknown mode as variable. Pure; any
 * thread.
 */
KDVBLMODEL_EXPORT KdAacFormat nearestAacFormat(const KdVBLMODEL::KdAudioFormat& asked);

/** For people: "AAC, 44100 Hz, 2 channels, 128 kbit/s constant". */
KDVBLMODEL_EXPORT QString aacFormatText(const KdAacFormat& format);

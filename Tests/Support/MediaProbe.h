#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/** What ffprobe and ffmpeg find in a media file. */
struct MediaInfo
{
    bool isReadable = false; ///< opened, and every packet of it decoded without a complaint
    QString complaint;       ///< when it is not
    QString container;       ///< as in "mov,mp4,m4a,3gp,3g2,mj2"
    QString audioCodec;      ///< as in "aac"; empty without sound
    QString videoCodec;      ///< as in "h264"; empty without a picture
    int samplerate = 0;
    int channels = 0;
    int bitrate = 0; ///< of the sound, bits per second
    int width = 0;
    int height = 0;
    double seconds = 0.0; ///< length by the container
};

namespace MediaProbe {

MediaInfo probe(const QString& path);

/** The sound of the first channel, decoded, -1 to 1. Empty when it cannot be decoded. */
QVector<float> samples(const QString& path, int samplerate = 48000);

/** Loudness of a part in decibels below full scale; -infinity for silence. seconds 0: to the end.
 */
double meanDecibel(const QString& path, double fromSeconds = 0.0, double seconds = 0.0);
double peakDecibel(const QString& path, double fromSeconds = 0.0, double seconds = 0.0);

/** How loud one frequency is around a position, in decibels below full scale; -infinity for none.
 */
double toneDecibel(const QVector<float>& samples, int samplerate, double frequency, double second,
                   double windowSeconds = 0.05);

/**
 * How loud a tone is that is played all the time: the median of all parts of 20 ms, so that the
 * dropouts that a busy machine has while it plays it do not count.
 */
double steadyToneDecibel(const QString& path, double frequency);

/** The pitch of a sine around a position, by its zero crossings; 0 where there is none. */
/** Times in seconds from the first to before the end, all of them step apart. */
QVector<double> moments(double first, double end, double step);
double pitchAt(const QVector<float>& samples, int samplerate, double second,
               double windowSeconds = 0.02);

} // namespace MediaProbe

#pragma once

#include <QByteArray>
#include <QVector>

/** One frame of sound or picture in the file. Times in the track's own units. */
struct KdMp4Sample
{
    qint64 offset = 0; ///< from the file's start
    quint32 size = 0;
    quint32 duration = 0;
    qint32 compositionOffset = 0; ///< how much later it is shown than decoded
    bool isSync = true;
};

/** What a fragment's samples are where it does not say so itself. */
struct KdMp4Defaults
{
    quint32 duration = 0;
    quint32 size = 0; ///< 0: not known
    quint32 flags = 0;
};

/** More samples than a take of two days has; a damaged file may not make us read on and on. */
constexpr int kMp4MostSamples = 8 * 1000 * 1000;

struct KdMp4Track
{
    quint32 id = 0;
    quint32 timescale = 0; ///< units in a second
    KdMp4Defaults defaults;
    QVector<KdMp4Sample> samples;
    quint64 duration = 0; ///< of all samples together

    qint64 durationMs() const { return timescale == 0 ? 0 : qint64(duration * 1000 / timescale); }
};

/** The movie of a file: its header as it stands there, and every sample that is known. */
struct KdMp4Movie
{
    QByteArray header; ///< what the moov box holds
    bool isFragmented = false;
    QVector<KdMp4Track> tracks;

    qint64 durationMs() const
    {
        qint64 longest = 0;
        for (const KdMp4Track& track : tracks) {
            longest = qMax(longest, track.durationMs());
        }
        return longest;
    }
};

#pragma once

#include <QString>
#include <QStringList>

/** Takes made without a device, as the engine writes them, and what an independent reader says of
 * them. */
namespace TakeMaker {

struct Take
{
    QString path;
    bool hasVideo = false;
    int seconds = 0;
};

/** Writes a take and finishes it. @return one sentence when that failed. */
QString write(const Take& take);

/** What ffprobe and ffmpeg find in a file. */
struct Contents
{
    int streams = 0;
    int audioFrames = 0;
    int videoFrames = 0;
    qint64 audioMs = 0;
    qint64 videoMs = 0;
    /** "stream time size" for each frame, as it lies in the file. */
    QStringList packets;
    /** What decoding all of it complains about; empty when the file is sound. */
    QString complaints;
};

Contents read(const QString& path);

/**
 * Makes of a finished take the file that it was before the muxer finalised it.
 * @return false when the file does not have what the muxer leaves.
 */
bool unfinalise(QByteArray* file);

} // namespace TakeMaker

#pragma once

#include <QMetaType>
#include <QString>

/** What a look into a media file found. */
struct StudioMediaInfo
{
    bool readable = false;
    QString problem; ///< why it is not readable, a sentence
    qint64 durationMs = 0;
    int channels = 0;
    int sampleRate = 0; ///< Hz
};

/**
 * Looks whether a file is there, holds sound and can be decoded. Blocks, for 5 s at most; any
 * thread but the GUI's.
 */
StudioMediaInfo probeMedia(const QString& path);

Q_DECLARE_METATYPE(StudioMediaInfo)

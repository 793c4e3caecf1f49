#pragma once

#include <QMetaType>
#include <QSize>
#include <QString>

/** What a look into a media file found. */
struct StudioMediaInfo
{
    bool readable = false;
    QString problem; ///< why it is not readable, a sentence; see mediaProblemText()
    qint64 durationMs = 0;
    int channels = 0;   ///< 0: no sound
    int sampleRate = 0; ///< Hz
    QSize picture;      ///< of the moving picture; invalid: none
};

/**
 * Looks whether a file is there, holds sound or a moving picture and can be decoded. Blocks, for 5
 * s at most; any thread but the GUI's.
 */
StudioMediaInfo probeMedia(const QString& path);

/** @return what probeMedia() found wrong, in the language of now; the media framework's own words
 * stay as they are. Any thread. */
QString mediaProblemText(const QString& problem);

Q_DECLARE_METATYPE(StudioMediaInfo)

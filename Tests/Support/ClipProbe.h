#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/** What ffprobe finds in a file with a picture. Times in seconds. */
struct ClipInfo
{
    QString profile;      ///< as in "Constrained Baseline"
    QString colourRange;  ///< "tv" or "pc"
    QString colourMatrix; ///< as in "bt709"
    double pictureBegin = -1.0;
    double pictureLength = -1.0;
    double soundBegin = -1.0; ///< -1 without sound, as the length
    double soundLength = -1.0;
    QVector<double> pictureTimes;   ///< when each is shown
    QVector<double> pictureLengths; ///< for how long
    QVector<bool> isKeyPicture;

    int pictures() const { return pictureTimes.size(); }
};

namespace ClipProbe {

ClipInfo probe(const QString& path);

/**
 * One decoded picture: its planes in I420 without padding, in the file's own colours.
 * @param index from 0 @return empty when there is none
 */
QByteArray picture(const QString& path, int index);

} // namespace ClipProbe

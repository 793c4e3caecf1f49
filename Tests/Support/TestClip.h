#pragma once

#include <QColor>
#include <QSize>
#include <QString>
#include <QVector>

/** Clips with a moving picture that tests make. Failing to is a failure of the test at hand. */
namespace TestClip {

/** A part of a clip in one colour. */
struct Part
{
    QColor color;
    double seconds = 1.0;
};

/** Writes an .mp4 of H.264 with 30 pictures a second. @param sound a tone of AAC beside it */
void write(const QString& path, const QVector<Part>& parts, bool sound = true,
           const QSize& size = QSize(320, 180));

/** @return whether two colours are the same but for what compression makes of them. */
bool isLike(const QColor& left, const QColor& right);

} // namespace TestClip

#pragma once

#include <QImage>
#include <QString>

/** Pictures of a clip as a player shows them. */
namespace ClipPicture {

/** The picture at a time; null when there is none. */
QImage at(const QString& path, double second);

/** The virtual camera's colours: red, green and blue thirds. */
bool isRed(const QColor& color);
bool isGreen(const QColor& color);
bool isBlue(const QColor& color);
bool isBlack(const QColor& color);

/** Where the virtual camera's white square is, as the place of its left edge; -1 when it is not
 * there. */
int squareAt(const QImage& picture);

/** How far apart two pictures are, in grey levels on average, after one has been brought to the
 * other's size. */
double difference(const QImage& one, const QImage& other);

} // namespace ClipPicture

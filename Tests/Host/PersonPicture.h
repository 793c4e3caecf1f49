#pragma once

#include <QColor>
#include <QImage>

/** DrawnPerson as a camera's picture, and what there is to see on it wherever it is shown. */
namespace PersonPicture {

/** @return whether the picture could be written. @param path of a file for VirtualCamera */
bool write(const QString& path, QSize size);

/** Whether face and shirt are there, in their colours. */
bool showsPerson(const QImage& picture);

/** Whether all else is black, or transparent. */
bool isAlone(const QImage& picture);

/** In words, for a message: what the picture shows where the person is, and beside. */
QString describe(const QImage& picture);

} // namespace PersonPicture

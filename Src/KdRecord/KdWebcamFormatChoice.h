#pragma once

#include <QList>
#include <QSize>
#include <QString>

/** Picture sizes and frame rates as a user reads and chooses them. Functions of values. */
namespace KdWebcamFormatChoice {

/** @return "1280x720" */
QString sizeText(const QSize& size);

/** @return "30 fps", in two significant digits: 29.97 reads as 30. */
QString rateText(double rate);

/**
 * @param stored the user's choice of an earlier session, perhaps made with another webcam
 * @return stored where the webcam offers it, else current.
 */
QSize chosenSize(const QSize& stored, const QList<QSize>& offered, const QSize& current);

/** @return stored where it is a rate, else current. */
double chosenRate(double stored, double current);

/** @return the rate's row; else the first whose text is the same; -1 without one. */
int rateRow(const QList<double>& offered, double rate);

} // namespace KdWebcamFormatChoice

#pragma once

#include <QList>
#include <QSize>

/**
 * The resolution in which a webcam starts: its largest one if that is larger than 640 x 480, else
 * 640 x 480 if it has that, else the one just before the middle of its list. Of several of the
 * largest area the first.
 * @param list what the webcam offers, in its order; for an empty one the answer is 640 x 480.
 */
QSize GetDefaultResoluction(const QList<QSize>& list);

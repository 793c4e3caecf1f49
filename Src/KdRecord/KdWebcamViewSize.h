#pragma once

#include <QSize>

/** How large the webcam dialog opens. Any thread. */
namespace KdWebcamViewSize {

/** @param available of the screen; a size without room counts as none. @return never negative. */
QSize forScreen(const QSize& available);

} // namespace KdWebcamViewSize

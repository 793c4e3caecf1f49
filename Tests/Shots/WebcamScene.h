#pragma once

#include <QImage>

/** What a webcam sees: somebody in a room that looks different when it is flipped. */
namespace WebcamScene {

/** @param hasBackground else the person alone, over nothing */
QImage frame(bool hasBackground);

} // namespace WebcamScene

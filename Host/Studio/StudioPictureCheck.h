#pragma once

#include <QString>

/** Looking whether anything can be seen at a camera. */
namespace StudioPictureCheck {

/**
 * Blocks until the camera delivers two pictures that differ, or the time is over.
 * @param device its name at the video server
 * @return a sentence that says what is wrong; empty: something moves
 */
QString look(const QString& device, int timeoutMs);

} // namespace StudioPictureCheck

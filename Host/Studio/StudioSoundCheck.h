#pragma once

#include <QString>

/** Listening whether anything can be heard at a recording device. */
namespace StudioSoundCheck {

/**
 * Blocks until the device delivers sound louder than -40 dB of full scale, or the time is over.
 * @param device its name at the sound server
 * @return a sentence that says what is wrong; empty: something can be heard
 */
QString listen(const QString& device, int timeoutMs);

} // namespace StudioSoundCheck

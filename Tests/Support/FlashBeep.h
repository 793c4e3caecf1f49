#pragma once

#include <QString>
#include <QVector>

/**
 * Pictures that flash when the sound beeps, once a second, and finding both in a file: the way to
 * see how far sound and picture are apart.
 */
namespace FlashBeep {

constexpr double kFirst = 0.5;        ///< when the first flash and beep begin, in seconds
constexpr double kPeriod = 1.0;       ///< from one flash to the next
constexpr double kLength = 0.1;       ///< of a flash, and of a beep
constexpr double kFrequency = 1000.0; ///< of the beep

/** Whether a picture taken at a time, in seconds, is white; else it is black. */
bool isFlash(double second);
/** The sound at a time, -1 to 1. */
float sample(double second);

/** When each flash of a file begins, by the first picture that is bright. */
QVector<double> flashes(const QString& path);
/** When each beep of a file begins. */
QVector<double> beeps(const QString& path);

/** For each flash how much later, in seconds, the nearest beep begins. */
QVector<double> offsets(const QString& path);

} // namespace FlashBeep

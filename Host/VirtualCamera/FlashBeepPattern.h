#pragma once

#include <cmath>

/**
 * Pictures that flash when the sound beeps, once a second: the way to see how far sound and picture
 * are apart.
 */
namespace FlashBeep {

constexpr double kFirst = 0.5;        ///< when the first flash and beep begin, in seconds
constexpr double kPeriod = 1.0;       ///< from one flash to the next
constexpr double kLength = 0.1;       ///< of a flash, and of a beep
constexpr double kFrequency = 1000.0; ///< of the beep

/** Whether a picture taken at a time, in seconds, is white; else it is black. */
inline bool isFlash(double second)
{
    const double since = second - kFirst;
    return since - std::floor(since / kPeriod) * kPeriod < kLength;
}

/** The sound of a beep that began so many seconds ago, -1 to 1. */
inline float tone(double second)
{
    constexpr double kTwoPi = 6.283185307179586;
    const bool isOn = second >= 0.0 && second < kLength;
    return isOn ? static_cast<float>(0.5 * std::sin(kTwoPi * kFrequency * second)) : 0.0F;
}

/** The sound at a time, -1 to 1. */
inline float sample(double second)
{
    const double since = second - kFirst;
    return tone(since - std::floor(since / kPeriod) * kPeriod);
}

} // namespace FlashBeep

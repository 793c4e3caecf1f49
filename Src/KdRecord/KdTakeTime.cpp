#include <KdRecord/KdTakeTime.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kHighestRate = 60.0;
// Not the quotient: hosts count such a project's frames at this rate.
constexpr double kFilmRate = 23.97;
// The greatest float below 2^31.
constexpr float kMostSeconds = 2147483520.0F;

QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

} // namespace

float KdTakeTime::toSeconds(qint64 milliseconds)
{
    const float seconds = static_cast<float>(milliseconds) * 0.001F;
    return std::clamp(seconds, 0.0F, kMostSeconds);
}

int KdTakeTime::toWholeSeconds(qint64 milliseconds)
{
    return static_cast<int>(toSeconds(milliseconds));
}

QString KdTakeTime::toText(int seconds)
{
    const int total = std::max(seconds, 0);
    return QLatin1Char(' ') + twoDigits(total / 3600) + QLatin1Char(':') +
           twoDigits(total % 3600 / 60) + QLatin1Char(':') + twoDigits(total % 60);
}

float KdTakeTime::framesPerSecond(qint64 numerator, qint64 denominator)
{
    if (numerator <= 0 || denominator <= 0) {
        return 0.0F;
    }
    const bool isFilm = numerator == 24000 && denominator == 1001;
    const double rate =
        isFilm ? kFilmRate : static_cast<double>(numerator) / static_cast<double>(denominator);
    return static_cast<float>(std::min(rate, kHighestRate));
}

qint64 KdTakeTime::toFrames(qint64 milliseconds, float framesPerSecond)
{
    return std::llround(toSeconds(milliseconds) * framesPerSecond);
}

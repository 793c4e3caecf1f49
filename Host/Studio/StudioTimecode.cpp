#include <Studio/StudioTimecode.h>

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace StudioTimecode {

namespace {

constexpr double kMostFramesPerSecond = 60.0;

QString twoDigits(qint64 value)
{
    return QString::number(value).rightJustified(2, QLatin1Char('0'));
}

} // namespace

double framesPerSecond(qint64 numerator, qint64 denominator)
{
    if (numerator <= 0 || denominator <= 0) {
        return 0.0;
    }
    if (numerator == 24000 && denominator == 1001) {
        return 23.97;
    }
    return std::min(static_cast<double>(numerator) / static_cast<double>(denominator),
                    kMostFramesPerSecond);
}

qint64 framesFromMs(qint64 milliseconds, double framesPerSecond)
{
    const double frames =
        static_cast<double>(std::max<qint64>(0, milliseconds)) / 1000.0 * framesPerSecond;
    return std::isfinite(frames) ? static_cast<qint64>(std::floor(frames + 0.5)) : 0;
}

qint64 msFromFrames(qint64 frames, double framesPerSecond)
{
    if (framesPerSecond <= 0.0) {
        return 0;
    }
    return static_cast<qint64>(
        std::floor(static_cast<double>(frames) / framesPerSecond * 1000.0 + 0.5));
}

QString text(qint64 frames, double framesPerSecond)
{
    const auto wholeRate = std::max<qint64>(1, static_cast<qint64>(std::ceil(framesPerSecond)));
    const qint64 shown = std::max<qint64>(0, frames);
    const qint64 seconds = shown / wholeRate;
    return QStringList{twoDigits(seconds / 3600), twoDigits(seconds / 60 % 60),
                       twoDigits(seconds % 60), twoDigits(shown % wholeRate)}
        .join(QLatin1Char(':'));
}

} // namespace StudioTimecode

StudioTimelineScale StudioTimelineScale::fit(qint64 frames, double framesPerSecond, int left,
                                             int width)
{
    const double least = std::max(1.0, framesPerSecond * 10.0);
    const double shown = std::max(least, static_cast<double>(frames));
    return {std::max(1, width) / shown, left};
}

int StudioTimelineScale::toPixel(qint64 frame) const
{
    return left + static_cast<int>(std::lround(static_cast<double>(frame) * pixelsPerFrame));
}

qint64 StudioTimelineScale::toFrame(int pixel) const
{
    return std::max<qint64>(0, std::llround((pixel - left) / pixelsPerFrame));
}

qint64 StudioTimelineScale::markStep(double framesPerSecond, int leastPixels) const
{
    static constexpr std::array<int, 13> kSeconds{1,   2,   5,   10,  15,   30,  60,
                                                  120, 300, 600, 900, 1800, 3600};
    const double rate = std::max(1.0, framesPerSecond);
    for (const int seconds : kSeconds) {
        if (seconds * rate * pixelsPerFrame >= leastPixels) {
            return std::llround(seconds * rate);
        }
    }
    const double hours = std::ceil(leastPixels / (3600.0 * rate * pixelsPerFrame));
    return std::llround(std::min(hours, 1e6) * 3600.0 * rate);
}

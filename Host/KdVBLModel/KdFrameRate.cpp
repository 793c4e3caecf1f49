#include <KdVBLModel/KdFrameRate.h>

#include <cmath>

namespace {

/** Rates are written with two digits behind the point. */
constexpr double kRounded = 0.006;

bool isNearInteger(double value)
{
    return std::abs(value - std::round(value)) < kRounded;
}

} // namespace

std::optional<KdFrameRate> KdFrameRate::of(double value)
{
    if (!(value >= kLeast && value <= kMost)) {
        return std::nullopt;
    }
    if (isNearInteger(value)) {
        return KdFrameRate{static_cast<int>(std::lround(value)), 1};
    }
    // What colour television has left us.
    if (isNearInteger(value * 1.001)) {
        return KdFrameRate{static_cast<int>(std::lround(value * 1.001)) * 1000, 1001};
    }
    return KdFrameRate{static_cast<int>(std::lround(value * 1000.0)), 1000};
}

#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <optional>

/** Pictures per second as a fraction, which is how cameras and files mean them. */
struct KDVBLMODEL_EXPORT KdFrameRate
{
    int numerator = 30;
    int denominator = 1;

    static constexpr double kLeast = 1.0;
    static constexpr double kMost = 240.0;

    double value() const { return static_cast<double>(numerator) / denominator; }

    /**
     * @return what a rate stands for: 29.97 is 30000/1001; nothing for one outside of kLeast to
     * kMost, or that is no number.
     */
    static std::optional<KdFrameRate> of(double value);
};

#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace mox::segmentation {

/// The grey levels of co-occurrence matrices: classes of one width, what lies outside counted at the ends. NaN is of
/// level 0.
struct GreyLevels {
    GreyLevels(double minimum, double maximum, double width)
        : minGrey(minimum)
        , maxGrey(maximum)
        , binSize(width)
        , top((maximum - minimum) / width)
        , count(maximum >= minimum ? std::ceil((maximum - minimum + 1.0) / width) : 0.0)
        , last(count - 1)
    {
    }

    /// Without levels a matrix cannot be used.
    bool empty() const { return !(count >= 1); }

    std::uint16_t operator()(double v) const
    {
        double const level = v >= maxGrey ? top : v >= minGrey ? (v - minGrey) / binSize : 0.0;
        return static_cast<std::uint16_t>(level < last ? level : last);
    }

    double minGrey;
    double maxGrey;
    double binSize;
    double top;
    double count; ///< beyond all bounds for some parameters
    double last; ///< the greatest level: in ranges so large that the 1 added to them is lost, `top` would lie behind it
};

/// The bins of `math::Histogram`, and one more for what that ignores.
struct HistogramBins {
    HistogramBins(double minimum, double maximum, double width)
        : lowest(minimum > maximum ? maximum : minimum)
        , highest(minimum > maximum ? minimum : maximum)
        , binSize(width)
        , count(std::trunc((highest - lowest) / width + 1.5))
        , outside((std::trunc(count / padding) + 1) * padding)
    {
    }

    std::uint32_t operator()(double v) const
    {
        double const bin = std::fmin((v - lowest) / binSize, count - 1);
        return static_cast<std::uint32_t>(v >= lowest && v <= highest ? bin : outside);
    }

    double centre(double bin) const { return bin * binSize + lowest + binSize * 0.5; }

    double lowest;
    double highest;
    double binSize;
    double count;
    /// The bin of what is ignored: behind all others, which can be searched in steps of `padding` without it.
    double outside;
    static constexpr int padding = 16;
};

} // namespace mox::segmentation

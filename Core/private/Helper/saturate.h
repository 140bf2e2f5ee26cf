#pragma once

#include <cmath>
#include <concepts>
#include <limits>

namespace mox::helper {

/// A number in a voxel type: for integers truncated towards zero and held within the type's limits, NaN as 0; floating
/// types take the ordinary conversion.
template <class T>
T saturate(double value)
{
    if constexpr (std::floating_point<T>) {
        return static_cast<T>(value);
    } else {
        using Limits = std::numeric_limits<T>;
        if (std::isnan(value)) {
            return 0;
        }
        // The highest value of a 64-bit type is rounded up as a double, to a number that the type has not.
        if (value >= static_cast<double>(Limits::max())) {
            return Limits::max();
        }
        return value <= static_cast<double>(Limits::min()) ? Limits::min() : static_cast<T>(value);
    }
}

} // namespace mox::helper

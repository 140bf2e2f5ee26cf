#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace mox::registration {

/// The middle of values of which none is NaN; the mean of the two central ones of an even number. Reorders them.
inline double median(std::vector<double>& values)
{
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 != 0) {
        return *middle;
    }
    return (*std::max_element(values.begin(), middle) + *middle) * 0.5;
}

/// Whether the median can be below a limit: that takes as many values below it as there are up to the lower of the
/// central ones. Counting is much cheaper than selecting, and most samples of a robust fit fail it.
inline bool canHaveMedianBelow(double limit, std::vector<double> const& values)
{
    std::size_t below = 0;
    for (double const value : values) {
        below += value < limit ? 1 : 0;
    }
    return below >= (values.size() + 1) / 2;
}

} // namespace mox::registration

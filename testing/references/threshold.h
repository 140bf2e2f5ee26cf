#pragma once

#include <cstddef>
#include <vector>

namespace mox::testing {

/// From the definition: voxels as doubles, both ends inside.
template <class In, class Out>
std::vector<Out> thresholdReference(std::vector<In> const& voxels, double low, double high)
{
    std::vector<Out> result(voxels.size());
    for (std::size_t i = 0; i < voxels.size(); ++i) {
        double const v = static_cast<double>(voxels[i]);
        result[i] = low > v || v > high ? Out(0) : Out(1);
    }
    return result;
}

} // namespace mox::testing

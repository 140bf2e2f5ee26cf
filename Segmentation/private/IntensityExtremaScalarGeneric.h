#pragma once

#include <Moxelcore/Core/Integers.h>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <limits>

#include "Segmentation/private/foldExtrema.h"

namespace mox::analysis {

/// Minimum, maximum and sum of the voxels so far. A NaN never replaces an extremum.
template <class T>
class IntensityExtremaScalarGeneric {
public:
    /// Floats are added lane by lane, the lane being the place in the row modulo their number.
    static constexpr std::size_t numOfLanes = ExtremaSum<T>::numOfLanes;

    void row(T const* voxels, std::size_t count)
    {
        foldExtrema(voxels, count, minimum_, maximum_, sum_);
        count_ += count;
    }

    void join(IntensityExtremaScalarGeneric const& following)
    {
        minimum_ = std::min(minimum_, following.minimum_);
        maximum_ = std::max(maximum_, following.maximum_);
        sum_.join(following.sum_);
        count_ += following.count_;
    }

    T minimum() const { return minimum_; }
    T maximum() const { return maximum_; }
    double mean() const { return sum_.over(count_); }

private:
    T minimum_ = std::numeric_limits<T>::max();
    T maximum_ = std::numeric_limits<T>::lowest();
    ExtremaSum<T> sum_;
    uint64 count_ = 0;
};

} // namespace mox::analysis

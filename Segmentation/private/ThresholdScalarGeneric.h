#pragma once

#include <algorithm>
#include <cstddef>

#include "Segmentation/private/ThresholdInterval.h"

namespace mox::segmentation {

/// 1 where the voxel lies in the interval, 0 elsewhere.
template <class In>
class ThresholdScalarGeneric {
public:
    ThresholdScalarGeneric(double low, double high)
        : interval_(low, high)
    {
    }

    template <class Out>
    void row(In const* in, Out* out, std::size_t count) const
    {
        if (interval_.isEmpty()) {
            std::fill_n(out, count, Out(0));
            return;
        }
        auto const interval = interval_; // a copy that writing to `out` cannot change
#pragma GCC ivdep                        // in and out are the same row or do not overlap
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<Out>(interval.contains(in[i]));
        }
    }

private:
    ThresholdInterval<In> interval_;
};

} // namespace mox::segmentation

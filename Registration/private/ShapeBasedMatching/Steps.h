#pragma once

#include <Moxelcore/Core/Integers.h>

#include <cmath>

#include "Core/private/Helper/saturate.h"

namespace mox::registration {

/// The values begin, begin + step, ... that are at most end, within a rounding of the last. A step that does not lead
/// on (0, negative, NaN, too small for begin to change) leaves begin alone.
class Steps {
public:
    Steps(double begin, double end, double step)
        : begin_(begin)
    {
        if (step > 0.0 && begin + step != begin) {
            step_ = step;
            count_ = helper::saturate<uint64>(std::floor((end - begin) / step + 1e-9) + 1.0);
        }
    }

    uint64 count() const { return count_; }
    double operator[](uint64 index) const { return begin_ + static_cast<double>(index) * step_; }

private:
    double begin_;
    double step_ = 0.0;
    uint64 count_ = 1;
};

} // namespace mox::registration

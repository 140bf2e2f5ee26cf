#pragma once

#include <Moxelcore/Core/Integers.h>

#include <cstddef>
#include <vector>

namespace mox::segmentation {

/// n log n of whole numbers in fixed point, for entropies of counts. The logarithm is rounded at primes only and added
/// up elsewhere: log(x y) = log x + log y exactly. Sums of such terms that cancel in theory, as they do in windows
/// whose grey levels are independent, then cancel to 0.
class AdditiveLogarithm {
public:
    /// For numbers up to the largest.
    explicit AdditiveLogarithm(std::size_t largest);

    /// n log n.
    int64 operator()(std::size_t n) const { return values_[n]; }
    int64 const* values() const { return values_.data(); }
    /// steps()[n] = (n + 1) log(n + 1) - n log n.
    int64 const* steps() const { return steps_.data(); }
    int64 logarithmOf2() const { return values_.size() > 2 ? values_[2] / 2 : 0; }
    /// What one unit is worth.
    double unit() const { return unit_; }

private:
    std::vector<int64> values_;
    std::vector<int64> steps_;
    double unit_;
};

} // namespace mox::segmentation

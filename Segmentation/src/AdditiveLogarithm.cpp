#include "Segmentation/private/AdditiveLogarithm.h"

#include <algorithm>
#include <cmath>

namespace mox::segmentation {

namespace {

/// So many that the largest value stays below 2^62.
int fractionalBits(std::size_t largest)
{
    auto const n = static_cast<double>(std::max<std::size_t>(largest, 2));
    return std::min(52, 61 - std::ilogb(n * std::log(n)));
}

} // namespace

AdditiveLogarithm::AdditiveLogarithm(std::size_t largest)
    : values_(largest + 1)
    , steps_(largest)
{
    int const bits = fractionalBits(largest);
    unit_ = std::ldexp(1.0, -bits);
    for (std::size_t p = 2; p <= largest; ++p) { // a sieve: `values_` holds logarithms until the end
        if (values_[p] != 0) {
            continue;
        }
        auto const logarithm = std::llrint(std::ldexp(std::log(static_cast<double>(p)), bits));
        for (std::size_t power = p; power <= largest; power *= p) {
            for (std::size_t multiple = power; multiple <= largest; multiple += power) {
                values_[multiple] += logarithm;
            }
        }
    }
    for (std::size_t n = 0; n <= largest; ++n) {
        values_[n] *= static_cast<int64>(n);
    }
    for (std::size_t n = 0; n < largest; ++n) {
        steps_[n] = values_[n + 1] - values_[n];
    }
}

} // namespace mox::segmentation

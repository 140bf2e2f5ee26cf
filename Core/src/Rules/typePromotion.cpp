#include "Core/private/Rules/typePromotion.h"

#include <cmath>
#include <limits>

namespace mox::rules {

namespace {

template <class Integer>
bool holds(double wholeNumber)
{
    // Both bounds are powers of two, hence exact in double; the upper one is the first that no longer fits.
    double const lower = static_cast<double>(std::numeric_limits<Integer>::min());
    return wholeNumber >= lower && wholeNumber < -lower;
}

} // namespace

VoxelTypes typeOfNumber(double number)
{
    bool const isWhole = std::trunc(number) == number;
    if (isWhole && holds<short>(number)) {
        return MOX_INT16;
    }
    if (isWhole && holds<int>(number)) {
        return MOX_INT32;
    }
    if (isWhole && holds<long long>(number)) {
        return MOX_INT64;
    }
    bool const fitsFloat = std::isinf(number) || std::abs(number) <= std::numeric_limits<float>::max();
    return fitsFloat && static_cast<double>(static_cast<float>(number)) == number ? MOX_FLOAT32 : MOX_FLOAT64;
}

} // namespace mox::rules

#include "Segmentation/private/ThresholdInterval.h"

#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace mox::testing {

namespace {

/// Levels anywhere, but often at a voxel or right beside it.
template <class T>
double anyLevel(T voxel)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    auto const at = static_cast<double>(voxel);
    return *rc::gen::oneOf(rc::gen::arbitrary<double>(),
                           rc::gen::element(at, std::nextafter(at, infinity), std::nextafter(at, -infinity), infinity,
                                            -infinity, std::numeric_limits<double>::quiet_NaN()));
}

template <class T>
void acceptsWhatTheDefinitionAccepts()
{
    T const voxel = *rc::gen::oneOf(rc::gen::arbitrary<T>(),
                                    rc::gen::element(std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()));
    double const low = anyLevel(voxel);
    double const high = anyLevel(voxel);
    double const v = static_cast<double>(voxel);
    bool const wanted = !(low > v || v > high);
    segmentation::ThresholdInterval<T> const interval(low, high);
    RC_ASSERT((!interval.isEmpty() && interval.contains(voxel)) == wanted);
}

RC_GTEST_PROP(ThresholdInterval, uint8, ())
{
    acceptsWhatTheDefinitionAccepts<unsigned char>();
}

RC_GTEST_PROP(ThresholdInterval, int8, ())
{
    acceptsWhatTheDefinitionAccepts<signed char>();
}

RC_GTEST_PROP(ThresholdInterval, uint32, ())
{
    acceptsWhatTheDefinitionAccepts<unsigned int>();
}

RC_GTEST_PROP(ThresholdInterval, int64, ())
{
    acceptsWhatTheDefinitionAccepts<long long>();
}

RC_GTEST_PROP(ThresholdInterval, uint64, ())
{
    acceptsWhatTheDefinitionAccepts<unsigned long long>();
}

RC_GTEST_PROP(ThresholdInterval, float32, ())
{
    acceptsWhatTheDefinitionAccepts<float>();
}

RC_GTEST_PROP(ThresholdInterval, float64, ())
{
    acceptsWhatTheDefinitionAccepts<double>();
}

} // namespace

} // namespace mox::testing

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace math {

/// Measures of a histogram.
enum MOXELCORE_API MeasuresIndex : int { MSR_MEAN = 0, MSR_STDDEV, MSR_VARIANCE, MSR_SKEWNESS, MSR_KURTOSIS, MSR_PEAK };

} // namespace math

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<math::MeasuresIndex>();

} // namespace mox

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace point_operations {

/// How the components of a gradient become one amplitude.
enum MOXELCORE_API GradientMagnitudeOutputType : int {
    GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN = 0,
    GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS
};

} // namespace point_operations

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<point_operations::GradientMagnitudeOutputType>();

} // namespace mox

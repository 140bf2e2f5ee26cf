#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace morphology {

/// Small elements in the plane.
enum MOXELCORE_API Neighborhood2DType : int { MOX_NEIGHBORHOOD2D_4 = 0, MOX_NEIGHBORHOOD2D_8 };

} // namespace morphology

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<morphology::Neighborhood2DType>();

} // namespace mox

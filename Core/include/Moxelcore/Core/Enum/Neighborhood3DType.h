#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace morphology {

/// Small elements in space.
enum MOXELCORE_API Neighborhood3DType : int { MOX_NEIGHBORHOOD3D_6 = 0, MOX_NEIGHBORHOOD3D_18, MOX_NEIGHBORHOOD3D_26 };

} // namespace morphology

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<morphology::Neighborhood3DType>();

} // namespace mox

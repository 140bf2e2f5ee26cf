#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace morphology {

/// Whether a disk or ball is approximated by iterated small elements or taken as it is.
enum MOXELCORE_API AlgoPrecisionType : int { MOX_ALGO_FAST = 0, MOX_ALGO_PRECISE };

} // namespace morphology

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<morphology::AlgoPrecisionType>();

} // namespace mox

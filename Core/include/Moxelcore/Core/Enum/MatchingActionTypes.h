#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace morphology {

/// What a look-up table does to a voxel.
struct MOXELCORE_API MatchingActionTypes {
    enum Value : int { SET_ZERO = 0, SET_ONE, SET_CHANGE, SET_UNCHANGE };

    constexpr MatchingActionTypes(Value choice) noexcept
        : value(choice)
    {
    }
    constexpr operator Value() const noexcept { return value; }

    Value value;
};

} // namespace morphology

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<morphology::MatchingActionTypes>();

} // namespace mox

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace miscellaneous {

/// What stands for the voxels that a decimation joins.
struct MOXELCORE_API DecimationOp {
    enum Value : int { MEAN = 0, MIN, MAX, FIRST };

    constexpr DecimationOp(Value choice) noexcept
        : value(choice)
    {
    }
    constexpr operator Value() const noexcept { return value; }

    Value value;
};

} // namespace miscellaneous

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<miscellaneous::DecimationOp>();

} // namespace mox

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {

/// Levels of runners, from the plainest to the fastest.
struct MOXELCORE_API OptimLevelType {
    enum Value : int { SCALAR = 0, VEC_SSE, VEC_AVX, GPU };

    constexpr OptimLevelType(Value level) noexcept
        : value(level)
    {
    }
    constexpr operator Value() const noexcept { return value; }

    Value value;
};

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<OptimLevelType>();

} // namespace mox

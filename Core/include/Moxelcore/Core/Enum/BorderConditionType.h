#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace miscellaneous {

/// How an image is extended beyond its edges.
struct MOXELCORE_API BorderConditionType {
    enum Value : int { FIXED = 0, MIRROR, CONTINUE, DIRECTIONAL_MIRROR };

    constexpr BorderConditionType(Value choice) noexcept
        : value(choice)
    {
    }
    constexpr operator Value() const noexcept { return value; }

    Value value;
};

} // namespace miscellaneous

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<miscellaneous::BorderConditionType>();

} // namespace mox

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace registration {

/// Similarity measures of shape matching.
struct MOXELCORE_API SIMILARITY_MEASURE {
    enum Value : int { NORMALIZED = 0, NORMALIZED_ABS };

    constexpr SIMILARITY_MEASURE(Value choice) noexcept
        : value(choice)
    {
    }
    constexpr operator Value() const noexcept { return value; }

    Value value;
};

} // namespace registration

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<registration::SIMILARITY_MEASURE>();

} // namespace mox

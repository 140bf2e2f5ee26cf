#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace registration {

/// Transformations that a 2D landmark registration can fit.
struct MOXELCORE_API TransformationType {
    enum Value : int { TRANSLATION = 0, RIGID, AFFINE, PROJECTIVE, POLYNOMIAL_2, POLYNOMIAL_3 };

    constexpr TransformationType(Value choice) noexcept
        : value(choice)
    {
    }
    constexpr operator Value() const noexcept { return value; }

    Value value;
};

} // namespace registration

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<registration::TransformationType>();

} // namespace mox

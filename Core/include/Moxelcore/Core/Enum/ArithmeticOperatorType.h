#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace point_operations {

/// Voxel-wise arithmetic.
enum MOXELCORE_API ArithmeticOperatorType : int {
    ARITHMETIC_ADD = 0,
    ARITHMETIC_SUBTRACT,
    ARITHMETIC_MULTIPLY,
    ARITHMETIC_DIVIDE,
    ARITHMETIC_MINIMUM,
    ARITHMETIC_MAXIMUM
};

} // namespace point_operations

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<point_operations::ArithmeticOperatorType>();

} // namespace mox

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>

namespace mox {
namespace point_operations {

/// Voxel-wise logic of two operands.
enum MOXELCORE_API BinaryLogicalOperatorType : int {
    LOGICAL_AND = 0,
    LOGICAL_OR,
    LOGICAL_XOR,
    LOGICAL_NAND,
    LOGICAL_NOR,
    LOGICAL_NXOR,
    LOGICAL_SUB
};

} // namespace point_operations

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<point_operations::BinaryLogicalOperatorType>();

} // namespace mox

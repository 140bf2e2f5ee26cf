#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <optional>

namespace mox::rules {

/// The voxel type that holds the result of an arithmetic operator on two operands. Kinds: 0 add, subtract and
/// divide, 1 multiply, 2 minimum, 3 maximum. None for another kind, or for an operand that is not real.
std::optional<VoxelTypes> promotedType(int kind, VoxelTypes first, VoxelTypes second);

/// The voxel type of a number: the smallest signed integer from 16 bits on that holds a whole number, else 32-bit
/// float where it holds the number exactly, else 64-bit float.
VoxelTypes typeOfNumber(double number);

} // namespace mox::rules

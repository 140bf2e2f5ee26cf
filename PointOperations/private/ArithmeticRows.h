#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include "Core/private/Helper/raise.h"
#include "Core/private/filters/PointRow.h"
#include "PointOperations/private/ArithmeticOperators.h"

namespace mox::point_operations {

/// The kernel of an operator on two voxel types. Its output has the type to which they promote. The kernels of each
/// operator are instantiated in a source file of their own.
template <class Operator>
filters::PointRow arithmeticRow(VoxelTypes first, VoxelTypes second);

/// The same for an operator's number. Throws `InvalidCall` with the given site for a number that is none.
filters::PointRow arithmeticRow(int arithmeticOperator, VoxelTypes first, VoxelTypes second, helper::Site site);

/// The kind of an operator's type promotion; likewise.
int promotionKind(int arithmeticOperator, helper::Site site);

} // namespace mox::point_operations

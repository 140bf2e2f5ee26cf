#include "PointOperations/private/ArithmeticRowsDefinitions.h"

namespace mox::point_operations {

template filters::PointRow arithmeticRow<ArithmeticOperator_SubtractTag>(VoxelTypes first, VoxelTypes second);

} // namespace mox::point_operations

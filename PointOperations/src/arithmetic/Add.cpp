#include "PointOperations/private/ArithmeticRowsDefinitions.h"

namespace mox::point_operations {

template filters::PointRow arithmeticRow<ArithmeticOperator_AddTag>(VoxelTypes first, VoxelTypes second);

} // namespace mox::point_operations

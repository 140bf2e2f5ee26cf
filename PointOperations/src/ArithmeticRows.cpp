#include "PointOperations/private/ArithmeticRows.h"

#include <Moxelcore/Core/Enum/ArithmeticOperatorType.h>

namespace mox::point_operations {

namespace {

/// Calls a lambda `[&]<class Operator>() { ... }` with the operator's tag.
template <class Callable>
auto dispatchOperator(int arithmeticOperator, helper::Site site, Callable&& callable)
{
    switch (arithmeticOperator) {
    case ARITHMETIC_ADD:
        return callable.template operator()<ArithmeticOperator_AddTag>();
    case ARITHMETIC_SUBTRACT:
        return callable.template operator()<ArithmeticOperator_SubtractTag>();
    case ARITHMETIC_MULTIPLY:
        return callable.template operator()<ArithmeticOperator_MultiplyTag>();
    case ARITHMETIC_DIVIDE:
        return callable.template operator()<ArithmeticOperator_DivideTag>();
    case ARITHMETIC_MINIMUM:
        return callable.template operator()<ArithmeticOperator_MinimumTag>();
    case ARITHMETIC_MAXIMUM:
        return callable.template operator()<ArithmeticOperator_MaximumTag>();
    default:
        helper::raise<InvalidCall>(site, "The provided arithmeticOperator is unknow (value=", arithmeticOperator, ")");
    }
}

} // namespace

filters::PointRow arithmeticRow(int arithmeticOperator, VoxelTypes first, VoxelTypes second, helper::Site site)
{
    return dispatchOperator(arithmeticOperator, site,
                            [&]<class Operator>() { return arithmeticRow<Operator>(first, second); });
}

int promotionKind(int arithmeticOperator, helper::Site site)
{
    return dispatchOperator(arithmeticOperator, site, []<class Operator>() { return Operator::kind; });
}

} // namespace mox::point_operations

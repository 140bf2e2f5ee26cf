#pragma once

#include <Moxelcore/Core/Enum/BinaryLogicalOperatorType.h>

#include "Core/private/Helper/raise.h"

namespace mox::point_operations {

struct LogicalOperator_AndTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(a & b);
    }
};

struct LogicalOperator_OrTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(a | b);
    }
};

struct LogicalOperator_XorTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(a ^ b);
    }
};

struct LogicalOperator_NAndTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(~(a & b));
    }
};

struct LogicalOperator_NOrTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(~(a | b));
    }
};

struct LogicalOperator_NXorTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(~(a ^ b));
    }
};

struct LogicalOperator_SubTag {
    template <class T>
    static T apply(T a, T b)
    {
        return static_cast<T>(a & ~b);
    }
};

/// Calls a lambda `[&]<class Operator>() { ... }` with the operator's tag.
template <class Callable>
void dispatchLogical(int logicalOperator, helper::Site site, Callable&& callable)
{
    switch (logicalOperator) {
    case LOGICAL_AND:
        return callable.template operator()<LogicalOperator_AndTag>();
    case LOGICAL_OR:
        return callable.template operator()<LogicalOperator_OrTag>();
    case LOGICAL_XOR:
        return callable.template operator()<LogicalOperator_XorTag>();
    case LOGICAL_NAND:
        return callable.template operator()<LogicalOperator_NAndTag>();
    case LOGICAL_NOR:
        return callable.template operator()<LogicalOperator_NOrTag>();
    case LOGICAL_NXOR:
        return callable.template operator()<LogicalOperator_NXorTag>();
    case LOGICAL_SUB:
        return callable.template operator()<LogicalOperator_SubTag>();
    default:
        helper::raise<InvalidCall>(site, "The provided logicalOperator is unknow (value=", logicalOperator, ")");
    }
}

} // namespace mox::point_operations

#pragma once

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include "PointOperations/private/ArithmeticImageProcessingScalarGeneric.h"
#include "PointOperations/private/ArithmeticRows.h"

namespace mox::point_operations {

template <class Operator>
filters::PointRow arithmeticRow(VoxelTypes first, VoxelTypes second)
{
    filters::PointRow row = {};
    dispatch(RealVoxels(), first, [&]<class A>() {
        dispatch(RealVoxels(), second, [&]<class B>() {
            using Kernel = ArithmeticImageProcessingScalarGeneric<A, B, Operator>;
            static constexpr Kernel kernel;
            row = filters::pointRow<Kernel, typename Kernel::Out, A, B>(kernel);
        });
    });
    return row;
}

} // namespace mox::point_operations

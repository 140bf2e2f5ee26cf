#pragma once

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <cstddef>
#include <tuple>
#include <type_traits>

#include "Core/private/Rules/typePromotion.h"
#include "PointOperations/private/ArithmeticOperators.h"

namespace mox::point_operations {

namespace detail {

template <VoxelTypes type, class... T>
constexpr auto voxelOf(TypeVector<T...>)
{
    return std::tuple_element<static_cast<std::size_t>(type), std::tuple<std::type_identity<T>...>>();
}

} // namespace detail

/// The C++ type of a real voxel type.
template <VoxelTypes type>
using VoxelOf = typename decltype(detail::voxelOf<type>(RealVoxels()))::type::type;

/// An operator on the voxels of two images, into the type to which they promote.
template <class A, class B, class Operator>
class ArithmeticImageProcessingScalarGeneric {
public:
    using Out = VoxelOf<rules::promotedType(Operator::kind, voxelTypeOf<A>, voxelTypeOf<B>).value()>;

    void row(A const* a, B const* b, Out* out, std::size_t count) const
    {
#pragma GCC ivdep // out is the same row as an input or does not overlap it
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<Out>(Operator::apply(a[i], b[i]));
        }
    }
};

} // namespace mox::point_operations

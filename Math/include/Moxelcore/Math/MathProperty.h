#pragma once

#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/Vector.h>
#include <Moxelcore/Math/Matrix2.h>
#include <Moxelcore/Math/Matrix3.h>
#include <Moxelcore/Math/Vector2.h>
#include <Moxelcore/Math/Vector3.h>
#include <Moxelcore/Math/Vector4.h>

// The sequences and properties of the math values that the library instantiates.

#define MOX_FOR_EACH_MATH_ELEMENT(X, N)                                                                                \
    X(mox::math::Vector##N<int>)                                                                                       \
    X(mox::math::Vector##N<unsigned int>)                                                                              \
    X(mox::math::Vector##N<mox::int64>)                                                                                \
    X(mox::math::Vector##N<mox::uint64>)                                                                               \
    X(mox::math::Vector##N<double>)
#define MOX_FOR_EACH_MATH_VECTOR(X)                                                                                    \
    MOX_FOR_EACH_MATH_ELEMENT(X, 2)                                                                                    \
    MOX_FOR_EACH_MATH_ELEMENT(X, 3)                                                                                    \
    MOX_FOR_EACH_MATH_ELEMENT(X, 4)
#define MOX_FOR_EACH_MATRIX(X)                                                                                         \
    X(mox::math::Matrix2<float>)                                                                                       \
    X(mox::math::Matrix2<double>)                                                                                      \
    X(mox::math::Matrix3<float>)                                                                                       \
    X(mox::math::Matrix3<double>)

namespace mox {

#define MOX_DECLARE(V)                                                                                                 \
    extern template class MOXELCORE_API Vector<V>;                                                                     \
    extern template class MOXELCORE_API Property<V>;                                                                   \
    extern template class MOXELCORE_API Property<Vector<V>*>;                                                          \
    extern template class MOXELCORE_API Property<Vector<V> const*>;
MOX_FOR_EACH_MATH_VECTOR(MOX_DECLARE)
#undef MOX_DECLARE

#define MOX_DECLARE(M) extern template class MOXELCORE_API Property<M>;
MOX_FOR_EACH_MATRIX(MOX_DECLARE)
#undef MOX_DECLARE

extern template class MOXELCORE_API Property<Vector<math::Vector2<int>>>;

} // namespace mox

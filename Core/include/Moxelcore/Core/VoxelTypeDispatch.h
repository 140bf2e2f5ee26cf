#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>
#include <Moxelcore/Core/Integers.h>

#include <type_traits>
#include <vector>

namespace mox {

/// A list of C++ types of voxels. Rules and runners name the same list, so that they cannot drift apart.
template <class... T>
struct TypeVector {
};

using RealVoxels =
    TypeVector<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64, float, double>;
using IntegerVoxels = TypeVector<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
using NarrowVoxels = TypeVector<unsigned char, unsigned short, signed char, short>;
using SseVoxels = TypeVector<unsigned char, short, float, double, signed char, unsigned short, unsigned int, int>;

namespace detail {

template <class T, class... Types>
constexpr int indexOf(TypeVector<Types...>)
{
    int index = 0;
    bool const found = ((std::is_same_v<T, Types> || (++index, false)) || ...);
    return found ? index : -1;
}

} // namespace detail

/// The voxel type of a real C++ type; the list of the real types stands in the enumeration's order.
template <class T>
constexpr VoxelTypes voxelTypeOf = static_cast<VoxelTypes>(detail::indexOf<T>(RealVoxels{}));

template <class... T>
std::vector<VoxelTypes> voxelTypesOf(TypeVector<T...>)
{
    return {voxelTypeOf<T>...};
}

/// Calls a lambda `[&]<class T>() { ... }` with the type of the list that is the given one. False when none is.
template <class... T, class Callable>
bool dispatch(TypeVector<T...>, [[maybe_unused]] VoxelTypes type, Callable&& callable)
{
    return ((voxelTypeOf<T> == type && (callable.template operator()<T>(), true)) || ...);
}

} // namespace mox

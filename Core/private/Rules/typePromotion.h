#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <array>
#include <cstddef>
#include <optional>

namespace mox::rules {

namespace promotion {

constexpr VoxelTypes u8 = MOX_UINT8, u16 = MOX_UINT16, u32 = MOX_UINT32, u64 = MOX_UINT64;
constexpr VoxelTypes i8 = MOX_INT8, i16 = MOX_INT16, i32 = MOX_INT32, i64 = MOX_INT64;

using Table = std::array<std::array<VoxelTypes, 8>, 8>;

// Rows are the first operand, columns the second, both in the order of the enumeration.
// clang-format off
inline constexpr std::array<Table, 4> integerTables = {{
    {{ // add, subtract, divide
        {i16, i32, i64, i64, i16, i16, i32, i64},
        {i32, i32, i64, i64, i32, i32, i32, i64},
        {i64, i64, i64, i64, i64, i64, i64, i64},
        {i64, i64, i64, i64, i64, i64, i64, i64},
        {i16, i32, i64, i64, i16, i16, i32, i64},
        {i16, i32, i64, i64, i16, i16, i32, i64},
        {i32, i32, i64, i64, i32, i32, i32, i64},
        {i64, i64, i64, i64, i64, i64, i64, i64}}},
    {{ // multiply
        {u16, i32, u64, u64, i16, i16, i32, i64},
        {i32, i32, u64, u64, i32, i32, i32, i64},
        {u64, u64, u64, u64, i64, i64, i64, i64},
        {u64, u64, u64, u64, i64, i64, i64, i64},
        {i16, i32, i64, i64, i16, i16, i32, i64},
        {i16, i32, i64, i64, i16, i16, i32, i64},
        {i32, i32, i64, i64, i32, i32, i32, i64},
        {i64, i64, i64, i64, i64, i64, i64, i64}}},
    {{ // minimum
        {u8,  u8,  u8,  u8,  i8,  i16, i32, i64},
        {u8,  u16, u16, u16, i8,  i16, i32, i64},
        {u8,  u16, u32, u32, i8,  i16, i32, i64},
        {u8,  u16, u32, u64, i8,  i16, i32, i64},
        {i8,  i8,  i8,  i8,  i8,  i16, i32, i64},
        {i16, i16, i16, i16, i16, i16, i32, i64},
        {i32, i32, i32, i32, i32, i32, i32, i64},
        {i64, i64, i64, i64, i64, i64, i64, i64}}},
    {{ // maximum
        {u8,  u16, u32, u64, u8,  u8,  i32, i64},
        {u16, u16, u32, u64, u16, u16, u16, i64},
        {u32, u32, u32, u64, u32, u32, u32, u32},
        {u64, u64, u64, u64, u64, u64, u64, u64},
        {u8,  u16, u32, u64, i8,  i16, i32, i64},
        {u8,  u16, u32, u64, i16, i16, i32, i64},
        {i32, u16, u32, u64, i32, i32, i32, i64},
        {i64, i64, u32, u64, i64, i64, i64, i64}}},
}};
// clang-format on

constexpr bool isReal(VoxelTypes type)
{
    return type >= MOX_UINT8 && type <= MOX_FLOAT64;
}

} // namespace promotion

/// The voxel type that holds the result of an arithmetic operator on two operands. Kinds: 0 add, subtract and
/// divide, 1 multiply, 2 minimum, 3 maximum. None for another kind, or for an operand that is not real.
constexpr std::optional<VoxelTypes> promotedType(int kind, VoxelTypes first, VoxelTypes second)
{
    if (kind < 0 || kind >= static_cast<int>(promotion::integerTables.size()) || !promotion::isReal(first) ||
        !promotion::isReal(second)) {
        return std::nullopt;
    }
    for (VoxelTypes const floating : {MOX_FLOAT64, MOX_FLOAT32}) {
        if (first == floating || second == floating) {
            return floating;
        }
    }
    return promotion::integerTables[static_cast<std::size_t>(kind)][static_cast<std::size_t>(first)]
                                   [static_cast<std::size_t>(second)];
}

/// The voxel type of a number: the smallest signed integer from 16 bits on that holds a whole number, else 32-bit
/// float where it holds the number exactly, else 64-bit float.
VoxelTypes typeOfNumber(double number);

} // namespace mox::rules

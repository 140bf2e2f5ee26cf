#include "Core/private/Rules/typePromotion.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace mox::rules {

namespace {

constexpr VoxelTypes u8 = MOX_UINT8, u16 = MOX_UINT16, u32 = MOX_UINT32, u64 = MOX_UINT64;
constexpr VoxelTypes i8 = MOX_INT8, i16 = MOX_INT16, i32 = MOX_INT32, i64 = MOX_INT64;

using Table = std::array<std::array<VoxelTypes, 8>, 8>;

// Rows are the first operand, columns the second, both in the order of the enumeration.
// clang-format off
constexpr std::array<Table, 4> integerTables = {{
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

bool isReal(VoxelTypes type)
{
    return type >= MOX_UINT8 && type <= MOX_FLOAT64;
}

template <class Integer>
bool holds(double wholeNumber)
{
    // Both bounds are powers of two, hence exact in double; the upper one is the first that no longer fits.
    double const lower = static_cast<double>(std::numeric_limits<Integer>::min());
    return wholeNumber >= lower && wholeNumber < -lower;
}

} // namespace

std::optional<VoxelTypes> promotedType(int kind, VoxelTypes first, VoxelTypes second)
{
    if (kind < 0 || kind >= static_cast<int>(integerTables.size()) || !isReal(first) || !isReal(second)) {
        return std::nullopt;
    }
    for (VoxelTypes const floating : {MOX_FLOAT64, MOX_FLOAT32}) {
        if (first == floating || second == floating) {
            return floating;
        }
    }
    return integerTables[static_cast<std::size_t>(kind)][static_cast<std::size_t>(first)]
                        [static_cast<std::size_t>(second)];
}

VoxelTypes typeOfNumber(double number)
{
    bool const isWhole = std::trunc(number) == number;
    if (isWhole && holds<short>(number)) {
        return MOX_INT16;
    }
    if (isWhole && holds<int>(number)) {
        return MOX_INT32;
    }
    if (isWhole && holds<long long>(number)) {
        return MOX_INT64;
    }
    bool const fitsFloat = std::isinf(number) || std::abs(number) <= std::numeric_limits<float>::max();
    return fitsFloat && static_cast<double>(static_cast<float>(number)) == number ? MOX_FLOAT32 : MOX_FLOAT64;
}

} // namespace mox::rules

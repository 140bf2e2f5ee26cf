#include "Core/private/Rules/typePromotion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <sstream>
#include <string>

namespace mox::rules {

namespace {

constexpr VoxelTypes floatingTypes[] = {MOX_FLOAT32, MOX_FLOAT64};

// The integer operands: rows are the first, columns the second, both in the order u8 u16 u32 u64 i8 i16 i32 i64.
// clang-format off
char const* const sums[] = {
    "i16 i32 i64 i64 i16 i16 i32 i64",
    "i32 i32 i64 i64 i32 i32 i32 i64",
    "i64 i64 i64 i64 i64 i64 i64 i64",
    "i64 i64 i64 i64 i64 i64 i64 i64",
    "i16 i32 i64 i64 i16 i16 i32 i64",
    "i16 i32 i64 i64 i16 i16 i32 i64",
    "i32 i32 i64 i64 i32 i32 i32 i64",
    "i64 i64 i64 i64 i64 i64 i64 i64"};

char const* const products[] = {
    "u16 i32 u64 u64 i16 i16 i32 i64",
    "i32 i32 u64 u64 i32 i32 i32 i64",
    "u64 u64 u64 u64 i64 i64 i64 i64",
    "u64 u64 u64 u64 i64 i64 i64 i64",
    "i16 i32 i64 i64 i16 i16 i32 i64",
    "i16 i32 i64 i64 i16 i16 i32 i64",
    "i32 i32 i64 i64 i32 i32 i32 i64",
    "i64 i64 i64 i64 i64 i64 i64 i64"};

char const* const minima[] = {
    "u8  u8  u8  u8  i8  i16 i32 i64",
    "u8  u16 u16 u16 i8  i16 i32 i64",
    "u8  u16 u32 u32 i8  i16 i32 i64",
    "u8  u16 u32 u64 i8  i16 i32 i64",
    "i8  i8  i8  i8  i8  i16 i32 i64",
    "i16 i16 i16 i16 i16 i16 i32 i64",
    "i32 i32 i32 i32 i32 i32 i32 i64",
    "i64 i64 i64 i64 i64 i64 i64 i64"};

char const* const maxima[] = {
    "u8  u16 u32 u64 u8  u8  i32 i64",
    "u16 u16 u32 u64 u16 u16 u16 i64",
    "u32 u32 u32 u64 u32 u32 u32 u32",
    "u64 u64 u64 u64 u64 u64 u64 u64",
    "u8  u16 u32 u64 i8  i16 i32 i64",
    "u8  u16 u32 u64 i16 i16 i32 i64",
    "i32 u16 u32 u64 i32 i32 i32 i64",
    "i64 i64 u32 u64 i64 i64 i64 i64"};
// clang-format on

VoxelTypes typeFrom(std::string const& abbreviation)
{
    static std::map<std::string, VoxelTypes> const types = {
        {"u8", MOX_UINT8}, {"u16", MOX_UINT16}, {"u32", MOX_UINT32}, {"u64", MOX_UINT64},
        {"i8", MOX_INT8},  {"i16", MOX_INT16},  {"i32", MOX_INT32},  {"i64", MOX_INT64}};
    return types.at(abbreviation);
}

struct KindOfPromotion {
    int kind;
    char const* const* rows;
};

class TypePromotion : public ::testing::TestWithParam<KindOfPromotion> {};

TEST_P(TypePromotion, followsTheTableForIntegers)
{
    for (int first = MOX_UINT8; first <= MOX_INT64; ++first) {
        std::istringstream row(GetParam().rows[first]);
        std::string cell;
        for (int second = MOX_UINT8; second <= MOX_INT64; ++second) {
            ASSERT_TRUE(row >> cell);
            EXPECT_EQ(promotedType(GetParam().kind, static_cast<VoxelTypes>(first), static_cast<VoxelTypes>(second)),
                      typeFrom(cell))
                << first << " with " << second;
        }
        EXPECT_FALSE(row >> cell);
    }
}

TEST_P(TypePromotion, prefersTheWiderFloatOverEverything)
{
    int const kind = GetParam().kind;
    for (VoxelTypes const floating : floatingTypes) {
        for (int other = MOX_UINT8; other <= MOX_INT64; ++other) {
            EXPECT_EQ(promotedType(kind, floating, static_cast<VoxelTypes>(other)), floating) << other;
            EXPECT_EQ(promotedType(kind, static_cast<VoxelTypes>(other), floating), floating) << other;
        }
    }
    EXPECT_EQ(promotedType(kind, MOX_FLOAT32, MOX_FLOAT32), MOX_FLOAT32);
    EXPECT_EQ(promotedType(kind, MOX_FLOAT32, MOX_FLOAT64), MOX_FLOAT64);
    EXPECT_EQ(promotedType(kind, MOX_FLOAT64, MOX_FLOAT32), MOX_FLOAT64);
    EXPECT_EQ(promotedType(kind, MOX_FLOAT64, MOX_FLOAT64), MOX_FLOAT64);
}

TEST_P(TypePromotion, hasNoneForTypesThatAreNotReal)
{
    int const kind = GetParam().kind;
    for (int const value : {-1, static_cast<int>(MOX_COMPLEX_FLOAT32), static_cast<int>(MOX_COMPLEX_FLOAT64), 12}) {
        auto const type = static_cast<VoxelTypes>(value);
        EXPECT_EQ(promotedType(kind, type, MOX_UINT8), std::nullopt) << value;
        EXPECT_EQ(promotedType(kind, MOX_FLOAT64, type), std::nullopt) << value;
    }
}

INSTANTIATE_TEST_SUITE_P(OfAllKinds, TypePromotion,
                         ::testing::Values(KindOfPromotion{0, sums}, KindOfPromotion{1, products},
                                           KindOfPromotion{2, minima}, KindOfPromotion{3, maxima}));

TEST(TypePromotionOfAnotherKind, isNone)
{
    for (int const kind : {-1, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(promotedType(kind, MOX_UINT8, MOX_UINT8), std::nullopt) << kind;
        EXPECT_EQ(promotedType(kind, MOX_FLOAT64, MOX_UINT8), std::nullopt) << kind;
    }
}

struct TypedNumber {
    double number;
    VoxelTypes type;
};

class TypeOfNumber : public ::testing::TestWithParam<TypedNumber> {};

TEST_P(TypeOfNumber, isTheSmallestThatHoldsIt)
{
    EXPECT_EQ(typeOfNumber(GetParam().number), GetParam().type) << GetParam().number;
}

double const infinity = std::numeric_limits<double>::infinity();
double const largestFloat = std::numeric_limits<float>::max();

INSTANTIATE_TEST_SUITE_P(OfWholeNumbers, TypeOfNumber,
                         ::testing::Values(TypedNumber{0.0, MOX_INT16}, TypedNumber{-0.0, MOX_INT16},
                                           TypedNumber{200.0, MOX_INT16}, TypedNumber{32767.0, MOX_INT16},
                                           TypedNumber{32768.0, MOX_INT32}, TypedNumber{-32768.0, MOX_INT16},
                                           TypedNumber{-32769.0, MOX_INT32}, TypedNumber{100000.0, MOX_INT32},
                                           TypedNumber{0x1p31 - 1, MOX_INT32}, TypedNumber{0x1p31, MOX_INT64},
                                           TypedNumber{-0x1p31, MOX_INT32}, TypedNumber{-0x1p31 - 1, MOX_INT64},
                                           TypedNumber{std::nextafter(0x1p63, 0.0), MOX_INT64},
                                           TypedNumber{-0x1p63, MOX_INT64}));

INSTANTIATE_TEST_SUITE_P(OfWholeNumbersBeyondIntegers, TypeOfNumber,
                         ::testing::Values(TypedNumber{0x1p63, MOX_FLOAT32},
                                           TypedNumber{std::nextafter(-0x1p63, -infinity), MOX_FLOAT64},
                                           TypedNumber{1e300, MOX_FLOAT64}, TypedNumber{-1e300, MOX_FLOAT64},
                                           TypedNumber{largestFloat, MOX_FLOAT32},
                                           TypedNumber{-largestFloat, MOX_FLOAT32},
                                           TypedNumber{std::nextafter(largestFloat, infinity), MOX_FLOAT64},
                                           TypedNumber{std::numeric_limits<double>::max(), MOX_FLOAT64}));

INSTANTIATE_TEST_SUITE_P(OfFractions, TypeOfNumber,
                         ::testing::Values(TypedNumber{2.5, MOX_FLOAT32}, TypedNumber{-0.125, MOX_FLOAT32},
                                           TypedNumber{0.1, MOX_FLOAT64},
                                           TypedNumber{static_cast<double>(0.1F), MOX_FLOAT32},
                                           TypedNumber{100000.5, MOX_FLOAT32}, TypedNumber{16777216.5, MOX_FLOAT64},
                                           TypedNumber{0x1p-149, MOX_FLOAT32}, TypedNumber{0x1p-150, MOX_FLOAT64},
                                           TypedNumber{5e-324, MOX_FLOAT64}));

INSTANTIATE_TEST_SUITE_P(OfWhatIsNotFinite, TypeOfNumber,
                         ::testing::Values(TypedNumber{infinity, MOX_FLOAT32}, TypedNumber{-infinity, MOX_FLOAT32},
                                           TypedNumber{std::numeric_limits<double>::quiet_NaN(), MOX_FLOAT64}));

} // namespace

} // namespace mox::rules

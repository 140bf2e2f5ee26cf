#include "PointOperations/private/ArithmeticOperators.h"

#include <gtest/gtest.h>

#include <random>

namespace mox::point_operations::arithmetic {

namespace {

/// From the definition.
long long quotientOf(long long a, long long b)
{
    return b == 0 ? 0 : a / b;
}

TEST(NarrowQuotient, isThatOfTheDefinitionForAllBytes)
{
    for (int a = -128; a <= 255; ++a) {
        for (int b = -128; b <= 255; ++b) {
            ASSERT_EQ(narrowQuotient(a, b), quotientOf(a, b)) << a << " by " << b;
        }
    }
}

// A quotient in float can be wrong where it is just below or at a whole number alone.
TEST(NarrowQuotient, isThatOfTheDefinitionAroundAllMultiplesOf16Bits)
{
    for (int b = 1; b <= 65535; ++b) {
        for (int multiple = b; multiple <= 65535; multiple += b) {
            ASSERT_EQ(narrowQuotient(multiple, b), multiple / b);
            ASSERT_EQ(narrowQuotient(multiple - 1, b), (multiple - 1) / b);
            ASSERT_EQ(narrowQuotient(-multiple, b), -multiple / b);
            ASSERT_EQ(narrowQuotient(1 - multiple, -b), (multiple - 1) / b);
        }
        ASSERT_EQ(narrowQuotient(b, 0), 0);
    }
}

TEST(WideQuotient, isThatOfTheDefinition)
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    EXPECT_EQ(wideQuotient(lowest, -1), lowest);
    std::mt19937 random(1);
    std::uniform_int_distribution<int> anywhere(lowest, highest);
    for (int round = 0; round < 300000; ++round) {
        int const b = round % 5 == 0 ? static_cast<int>(random() % 9) - 4 : anywhere(random) >> random() % 31;
        long long const multiple = b == 0 ? 0 : anywhere(random) / b * static_cast<long long>(b);
        for (long long const a :
             {multiple - 1, multiple, multiple + 1, static_cast<long long>(lowest), static_cast<long long>(highest)}) {
            if (a < lowest || a > highest || (a == lowest && b == -1)) {
                continue;
            }
            ASSERT_EQ(wideQuotient(static_cast<int>(a), b), quotientOf(a, b)) << a << " by " << b;
        }
    }
}

} // namespace

} // namespace mox::point_operations::arithmetic

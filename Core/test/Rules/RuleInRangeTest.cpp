#include "Core/private/Rules/RuleInRange.h"

#include <gtest/gtest.h>

#include <limits>

#include "testing/ForeignLocale.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleInRange"};
}

TEST(RuleInRange, closesTheRangeAtBothEnds)
{
    RuleInRange<double> rule(0.0, 1.0);
    for (double const value : {0.0, -0.0, 0.5, 1.0}) {
        EXPECT_EQ(verdict(rule, value), passes) << value;
    }
    for (double const value : {-1e-300, 1.0000001, -1.0, 2.0, std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(verdict(rule, value), refusal("Parameter value must be in the range [0  1]")) << value;
    }
}

TEST(RuleInRange, tellsIntegerRanges)
{
    RuleInRange<int> rule(-2, 100);
    EXPECT_EQ(verdict(rule, -2), passes);
    EXPECT_EQ(verdict(rule, 100), passes);
    EXPECT_EQ(verdict(rule, -3), refusal("Parameter value must be in the range [-2  100]"));
    EXPECT_EQ(verdict(rule, 101), refusal("Parameter value must be in the range [-2  100]"));
}

TEST(RuleInRange, comparesUnsignedNumbersAsSuch)
{
    RuleInRange<unsigned int> rule(1, 0xFFFFFFFFU);
    EXPECT_EQ(verdict(rule, 0xFFFFFFFFU), passes);
    EXPECT_EQ(verdict(rule, 0), refusal("Parameter value must be in the range [1  4294967295]"));
}

TEST(RuleInRange, refusesEverythingWhereTheRangeIsEmpty)
{
    RuleInRange<int> rule(1, 0);
    EXPECT_EQ(verdict(rule, 0), refusal("Parameter value must be in the range [1  0]"));
    EXPECT_EQ(verdict(rule, 1), refusal("Parameter value must be in the range [1  0]"));
}

TEST(RuleInRange, tellsTheRangeTheSameInEveryLocale)
{
    ForeignLocale const locale;
    RuleInRange<double> fractions(0.5, 1.5);
    EXPECT_EQ(verdict(fractions, 0.0), refusal("Parameter value must be in the range [0.5  1.5]"));
    RuleInRange<int> integers(0, 12345);
    EXPECT_EQ(verdict(integers, -1), refusal("Parameter value must be in the range [0  12345]"));
}

} // namespace

} // namespace mox::testing

#include "Core/private/Rules/RuleAssertPositiveOnly.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict const refusal = {"Parameter value cannot be negative or null", "RuleAssertPositiveOnly"};

template <class T>
class RuleAssertPositiveOnlyOf : public ::testing::Test {
};

using Numbers = ::testing::Types<int, unsigned int, int64, uint64, double>;
TYPED_TEST_SUITE(RuleAssertPositiveOnlyOf, Numbers);

TYPED_TEST(RuleAssertPositiveOnlyOf, passesWhatIsAboveZero)
{
    RuleAssertPositiveOnly<TypeParam> rule;
    EXPECT_EQ(verdict(rule, TypeParam(1)), passes);
    EXPECT_EQ(verdict(rule, std::numeric_limits<TypeParam>::max()), passes);
    EXPECT_EQ(verdict(rule, TypeParam(0)), refusal);
    if constexpr (std::is_signed_v<TypeParam>) {
        EXPECT_EQ(verdict(rule, TypeParam(-1)), refusal);
        EXPECT_EQ(verdict(rule, std::numeric_limits<TypeParam>::lowest()), refusal);
    }
}

TEST(RuleAssertPositiveOnly, looksAtFractions)
{
    using Limits = std::numeric_limits<double>;
    RuleAssertPositiveOnly<double> rule;
    EXPECT_EQ(verdict(rule, Limits::denorm_min()), passes);
    EXPECT_EQ(verdict(rule, Limits::infinity()), passes);
    EXPECT_EQ(verdict(rule, -0.0), refusal);
    EXPECT_EQ(verdict(rule, -0.5), refusal);
    EXPECT_EQ(verdict(rule, -Limits::infinity()), refusal);
    EXPECT_EQ(verdict(rule, Limits::quiet_NaN()), refusal);
}

} // namespace

} // namespace mox::testing

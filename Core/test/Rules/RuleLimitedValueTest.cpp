#include "Core/private/Rules/RuleLimitedValue.h"

#include <gtest/gtest.h>

#include <limits>

#include "testing/Verdict.h"

namespace mox::testing {

namespace {

constexpr int atOrAbove = 0;
constexpr int above = 1;
constexpr int atOrBelow = 2;
constexpr int below = 3;

Verdict refusal(char const* message)
{
    return {message, "RuleAssertLimitedValue"};
}

template <class T>
class RuleLimitedValueOf : public ::testing::Test {
protected:
    Verdict verdictOn(T value, T limit, int kind)
    {
        RuleLimitedValue<T> rule(limit, kind);
        return verdict(rule, value);
    }
};

using Numbers = ::testing::Types<unsigned int, double>;
TYPED_TEST_SUITE(RuleLimitedValueOf, Numbers);

TYPED_TEST(RuleLimitedValueOf, holdsAtOrAbove)
{
    EXPECT_EQ(this->verdictOn(3, 2, atOrAbove), passes);
    EXPECT_EQ(this->verdictOn(2, 2, atOrAbove), passes);
    EXPECT_EQ(this->verdictOn(1, 2, atOrAbove), refusal("Parameter value <1> must be greater or equal that <2>."));
}

TYPED_TEST(RuleLimitedValueOf, holdsAbove)
{
    EXPECT_EQ(this->verdictOn(3, 2, above), passes);
    EXPECT_EQ(this->verdictOn(2, 2, above), refusal("Parameter value <2> must be greater that <2>."));
    EXPECT_EQ(this->verdictOn(1, 2, above), refusal("Parameter value <1> must be greater that <2>."));
}

TYPED_TEST(RuleLimitedValueOf, holdsAtOrBelow)
{
    EXPECT_EQ(this->verdictOn(1, 2, atOrBelow), passes);
    EXPECT_EQ(this->verdictOn(2, 2, atOrBelow), passes);
    EXPECT_EQ(this->verdictOn(3, 2, atOrBelow), refusal("Parameter value <3> must be lower or equal that <2>."));
}

TYPED_TEST(RuleLimitedValueOf, holdsBelow)
{
    EXPECT_EQ(this->verdictOn(1, 2, below), passes);
    EXPECT_EQ(this->verdictOn(2, 2, below), refusal("Parameter value <2> must be lower that <2>."));
    EXPECT_EQ(this->verdictOn(3, 2, below), refusal("Parameter value <3> must be lower that <2>."));
}

TYPED_TEST(RuleLimitedValueOf, knowsNoOtherKind)
{
    for (int const kind : {-1, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(this->verdictOn(2, 2, kind), refusal("The type of the rule is unknown.")) << kind;
    }
}

TEST(RuleLimitedValue, writesSixSignificantDigits)
{
    RuleLimitedValue<double> rule(1234567.0, above);
    EXPECT_EQ(verdict(rule, 1.0 / 3), refusal("Parameter value <0.333333> must be greater that <1.23457e+06>."));
}

TEST(RuleLimitedValue, comparesUnsignedNumbersAsSuch)
{
    RuleLimitedValue<unsigned int> rule(0x80000000U, atOrAbove);
    EXPECT_EQ(verdict(rule, 0xFFFFFFFFU), passes);
    EXPECT_EQ(verdict(rule, 1), refusal("Parameter value <1> must be greater or equal that <2147483648>."));
}

TEST(RuleLimitedValue, refusesNotANumberOnEverySide)
{
    double const notANumber = std::numeric_limits<double>::quiet_NaN();
    RuleLimitedValue<double> geRule(0.0, atOrAbove);
    RuleLimitedValue<double> gtRule(0.0, above);
    RuleLimitedValue<double> leRule(0.0, atOrBelow);
    RuleLimitedValue<double> ltRule(0.0, below);
    EXPECT_EQ(verdict(geRule, notANumber), refusal("Parameter value <nan> must be greater or equal that <0>."));
    EXPECT_EQ(verdict(gtRule, notANumber), refusal("Parameter value <nan> must be greater that <0>."));
    EXPECT_EQ(verdict(leRule, notANumber), refusal("Parameter value <nan> must be lower or equal that <0>."));
    EXPECT_EQ(verdict(ltRule, notANumber), refusal("Parameter value <nan> must be lower that <0>."));
}

} // namespace

} // namespace mox::testing

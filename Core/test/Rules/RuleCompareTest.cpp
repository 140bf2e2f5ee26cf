#include "Core/private/Rules/RuleCompare.h"

#include <gtest/gtest.h>

#include <limits>

#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleCompare"};
}

TEST(RuleCompare, comparesWithTheOtherPropertysPresentValue)
{
    Property<double> low;
    PropertyAccess::setName(low, "lowLevel");
    RuleCompare<Property<double>, detail::GreaterOrEqualThan> rule(low);
    low = 2.5;
    EXPECT_EQ(verdict(rule, 3.0), passes);
    EXPECT_EQ(verdict(rule, 2.5), passes);
    EXPECT_EQ(verdict(rule, 2.0), refusal("Parameter value (2) must be greater or equal than the value of the property "
                                          "lowLevel (2.5)"));
    low = 1.0;
    EXPECT_EQ(verdict(rule, 2.0), passes);
}

TEST(RuleCompare, comparesIntegers)
{
    Property<int> other;
    PropertyAccess::setName(other, "size");
    other = 7;
    RuleCompare<Property<int>, detail::GreaterOrEqualThan> rule(other);
    EXPECT_EQ(verdict(rule, 7), passes);
    EXPECT_EQ(verdict(rule, -7),
              refusal("Parameter value (-7) must be greater or equal than the value of the property size (7)"));
}

TEST(RuleCompare, refusesNotANumberOnEitherSide)
{
    double const notANumber = std::numeric_limits<double>::quiet_NaN();
    Property<double> other;
    PropertyAccess::setName(other, "other");
    RuleCompare<Property<double>, detail::GreaterOrEqualThan> rule(other);
    EXPECT_EQ(verdict(rule, notANumber),
              refusal("Parameter value (nan) must be greater or equal than the value of the property other (0)"));
    other = notANumber;
    EXPECT_EQ(verdict(rule, 0.0),
              refusal("Parameter value (0) must be greater or equal than the value of the property other (nan)"));
}

/// A comparison of the test's own.
struct Equal {
    static constexpr char const* text = "equal to";
    bool operator()(int value, int other) const { return value == other; }
};

TEST(RuleCompare, tellsTheTextOfItsComparison)
{
    Property<int> other;
    PropertyAccess::setName(other, "other");
    RuleCompare<Property<int>, Equal> rule(other);
    EXPECT_EQ(verdict(rule, 0), passes);
    EXPECT_EQ(verdict(rule, 1), refusal("Parameter value (1) must be equal to the value of the property other (0)"));
}

} // namespace

} // namespace mox::testing

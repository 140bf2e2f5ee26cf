#include "Core/private/Rules/RuleIsAnEnumOfType.h"

#include <gtest/gtest.h>

#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict const refusal = {"The enumeration value is not valid", "RuleIsAnEnumOfType"};

TEST(RuleIsAnEnumOfType, passesTheValuesOfTheTable)
{
    EnumInfo const info("A = 0, B, C = 7", "E");
    RuleIsAnEnumOfType rule(info);
    for (int const value : {0, 1, 7}) {
        EXPECT_EQ(verdict(rule, value), passes) << value;
    }
    for (int const value : {-1, 2, 6, 8, 99}) {
        EXPECT_EQ(verdict(rule, value), refusal) << value;
    }
}

TEST(RuleIsAnEnumOfType, refusesEverythingWithAnEmptyTable)
{
    EnumInfo const info("", "E");
    RuleIsAnEnumOfType rule(info);
    EXPECT_EQ(verdict(rule, 0), refusal);
}

} // namespace

} // namespace mox::testing

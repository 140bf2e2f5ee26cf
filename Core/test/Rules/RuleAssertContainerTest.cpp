#include <gtest/gtest.h>

#include <cstddef>

#include "Core/private/Rules/RuleAssertContainerNoEmpty.h"
#include "Core/private/Rules/RuleAssertContainerSize.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

template <class T>
class RuleAssertContainerOf : public ::testing::Test {
};

using Elements = ::testing::Types<unsigned char, int, unsigned int, int64, uint64, double>;
TYPED_TEST_SUITE(RuleAssertContainerOf, Elements);

TYPED_TEST(RuleAssertContainerOf, refusesEmptyOnes)
{
    using Container = Vector<TypeParam>;
    RuleAssertContainerNoEmpty<Container> rule;
    EXPECT_EQ(verdict(rule, Container(1)), passes);
    EXPECT_EQ(verdict(rule, Container(1000)), passes);
    EXPECT_EQ(verdict(rule, Container()), (Verdict{"Parameter should not be empty.", "RuleAssertContainerNoEmpty"}));
}

TYPED_TEST(RuleAssertContainerOf, refusesOtherSizes)
{
    using Container = Vector<TypeParam>;
    RuleAssertContainerSize<Container> rule(3);
    EXPECT_EQ(verdict(rule, Container(3)), passes);
    EXPECT_EQ(verdict(rule, Container(2)),
              (Verdict{"Parameter must have a size of 3. Current size is 2", "RuleAssertContainerSize"}));
    EXPECT_EQ(verdict(rule, Container(1000)),
              (Verdict{"Parameter must have a size of 3. Current size is 1000", "RuleAssertContainerSize"}));
}

TYPED_TEST(RuleAssertContainerOf, mayAskForNoElements)
{
    using Container = Vector<TypeParam>;
    RuleAssertContainerSize<Container> rule(0);
    EXPECT_EQ(verdict(rule, Container()), passes);
    EXPECT_EQ(verdict(rule, Container(1)),
              (Verdict{"Parameter must have a size of 0. Current size is 1", "RuleAssertContainerSize"}));
}

} // namespace

} // namespace mox::testing

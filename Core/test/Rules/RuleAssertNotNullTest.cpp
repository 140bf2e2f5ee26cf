#include "Core/private/Rules/RuleAssertNotNull.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <gtest/gtest.h>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict const null = {"Parameter value cannot be null", "RuleAssertNotNull"};

template <class T>
class RuleAssertNotNullOfImages : public ::testing::Test {
};

TYPED_TEST_SUITE(RuleAssertNotNullOfImages, ImagePointers);

TYPED_TEST(RuleAssertNotNullOfImages, refusesNullAlone)
{
    RuleAssertNotNull<TypeParam> rule;
    memory::InMemoryImage image;
    EXPECT_EQ(verdict(rule, &image), passes);
    EXPECT_EQ(verdict(rule, nullptr), null);
}

TEST(RuleAssertNotNull, refusesZeroAlone)
{
    RuleAssertNotNull<unsigned int> rule;
    EXPECT_EQ(verdict(rule, 0), null);
    EXPECT_EQ(verdict(rule, 1), passes);
    EXPECT_EQ(verdict(rule, 0xFFFFFFFFU), passes);
}

TEST(RuleAssertNotNull, refusesPointersToOtherThings)
{
    RuleAssertNotNull<Vector<int> const*> rule;
    Vector<int> const empty;
    EXPECT_EQ(verdict(rule, &empty), passes);
    EXPECT_EQ(verdict(rule, nullptr), null);
}

} // namespace

} // namespace mox::testing

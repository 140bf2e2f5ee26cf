#include "Core/private/Rules/RuleWhenGiven.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <gtest/gtest.h>

#include "Core/private/Rules/RuleAssertSameSize.h"
#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

template <class T>
class RuleWhenGivenOfImages : public ::testing::Test {
};

TYPED_TEST_SUITE(RuleWhenGivenOfImages, ImagePointers);

TYPED_TEST(RuleWhenGivenOfImages, isTheOtherRuleUnlessTheValueIsNull)
{
    memory::InMemoryImage small;
    memory::InMemoryImage large;
    small.allocate(MOX_UINT8, 2, 3, 1, 1, 1);
    large.allocate(MOX_UINT8, 4, 3, 1, 1, 1);
    Property<ImageModel const*> other;
    other = &small;
    RuleWhenGiven<TypeParam, RuleAssertSameSize<TypeParam>> rule(other);
    EXPECT_EQ(verdict(rule, nullptr), passes);
    EXPECT_EQ(verdict(rule, &small), passes);
    EXPECT_EQ(verdict(rule, &large), (Verdict{"Images don't have the same size", "RuleAssertSameSize"}));
}

} // namespace

} // namespace mox::testing

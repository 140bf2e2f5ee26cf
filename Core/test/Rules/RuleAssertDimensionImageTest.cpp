#include "Core/private/Rules/RuleAssertDimensionImage.h"

#include <gtest/gtest.h>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleAssertDimension"};
}

template <class T>
class RuleAssertDimensionImageOf : public ::testing::Test {
protected:
    Property<ImageModel const*> other;
};

TYPED_TEST_SUITE(RuleAssertDimensionImageOf, ImagePointers);

TYPED_TEST(RuleAssertDimensionImageOf, looksAtOneDimensionAlone)
{
    auto const otherImage = imageOf(MOX_UINT8, {5, 4, 3, 2, 1});
    auto const image = imageOf(MOX_FLOAT32, {5, 9, 9, 9, 9});
    this->other = otherImage.get();
    RuleAssertDimensionImage<TypeParam> columns(COLUMNS, this->other);
    RuleAssertDimensionImage<TypeParam> rows(ROWS, this->other);
    EXPECT_EQ(verdict(columns, image.get()), passes);
    EXPECT_EQ(verdict(rows, image.get()), refusal("Component 1 must have a size of 4. Current size is 9"));
}

TYPED_TEST(RuleAssertDimensionImageOf, readsTheOtherPropertyWhenItIsApplied)
{
    auto const image = imageOf(MOX_UINT8, {5, 1, 1, 1, 2});
    auto const wide = imageOf(MOX_UINT8, {5, 1, 1, 1, 2});
    auto const narrow = imageOf(MOX_UINT8, {4, 1, 1, 1, 1});
    RuleAssertDimensionImage<TypeParam> rule(SPECTRAL_SERIES, this->other);
    this->other = wide.get();
    EXPECT_EQ(verdict(rule, image.get()), passes);
    this->other = narrow.get();
    EXPECT_EQ(verdict(rule, image.get()), refusal("Component 4 must have a size of 1. Current size is 2"));
}

TYPED_TEST(RuleAssertDimensionImageOf, refusesNullOnEitherSide)
{
    auto const image = imageOf(MOX_UINT8);
    RuleAssertDimensionImage<TypeParam> rule(COLUMNS, this->other);
    EXPECT_EQ(verdict(rule, image.get()), refusal("Parameter value cannot be null"));
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
    this->other = image.get();
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
    EXPECT_EQ(verdict(rule, image.get()), passes);
}

} // namespace

} // namespace mox::testing

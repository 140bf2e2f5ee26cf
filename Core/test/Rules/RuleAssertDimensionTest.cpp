#include "Core/private/Rules/RuleAssertDimension.h"

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
class RuleAssertDimensionOf : public ::testing::Test {
protected:
    Verdict verdictOn(ImageDimension dimension, unsigned int size)
    {
        RuleAssertDimension<T> rule(dimension, size);
        return verdict(rule, imageOf(MOX_UINT8, {5, 4, 3, 2, 1}).get());
    }
};

TYPED_TEST_SUITE(RuleAssertDimensionOf, ImagePointers);

TYPED_TEST(RuleAssertDimensionOf, passesTheSizeAlone)
{
    EXPECT_EQ(this->verdictOn(COLUMNS, 5), passes);
    EXPECT_EQ(this->verdictOn(ROWS, 4), passes);
    EXPECT_EQ(this->verdictOn(PLANS, 3), passes);
    EXPECT_EQ(this->verdictOn(TIME_SERIES, 2), passes);
    EXPECT_EQ(this->verdictOn(SPECTRAL_SERIES, 1), passes);
}

TYPED_TEST(RuleAssertDimensionOf, numbersTheDimensionAndTellsBothSizes)
{
    EXPECT_EQ(this->verdictOn(COLUMNS, 4), refusal("component 0 must have a size of 4. Current size is 5"));
    EXPECT_EQ(this->verdictOn(ROWS, 5), refusal("component 1 must have a size of 5. Current size is 4"));
    EXPECT_EQ(this->verdictOn(SPECTRAL_SERIES, 3), refusal("component 4 must have a size of 3. Current size is 1"));
}

TYPED_TEST(RuleAssertDimensionOf, findsNoVoxelsAlongWhatIsNoDimension)
{
    EXPECT_EQ(this->verdictOn(static_cast<ImageDimension>(5), 1),
              refusal("component 5 must have a size of 1. Current size is 0"));
}

TYPED_TEST(RuleAssertDimensionOf, refusesNull)
{
    RuleAssertDimension<TypeParam> rule(COLUMNS, 5);
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing

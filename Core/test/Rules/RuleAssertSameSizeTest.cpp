#include "Core/private/Rules/RuleAssertSameSize.h"

#include <gtest/gtest.h>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleAssertSameSize"};
}

template <class T>
class RuleAssertSameSizeOf : public ::testing::Test {
protected:
    RuleAssertSameSizeOf()
        : rule(other)
    {
        calibrate(*otherImage);
        calibrate(*image);
        other = otherImage.get();
    }

    std::unique_ptr<TestImage> const otherImage = imageOf(MOX_UINT8, {5, 4, 3, 2, 1});
    std::unique_ptr<TestImage> const image = imageOf(MOX_FLOAT64, {5, 4, 3, 2, 1});
    Property<ImageModel const*> other;
    RuleAssertSameSize<T> rule;
};

TYPED_TEST_SUITE(RuleAssertSameSizeOf, ImagePointers);

TYPED_TEST(RuleAssertSameSizeOf, passesEqualSizesAndCalibrationsOfAnyType)
{
    EXPECT_EQ(verdict(this->rule, this->image.get()), passes);
}

TYPED_TEST(RuleAssertSameSizeOf, comparesAllSizes)
{
    for (Sizes const& sizes : {Sizes{6, 4, 3, 2, 1}, Sizes{5, 5, 3, 2, 1}, Sizes{5, 4, 4, 2, 1}, Sizes{5, 4, 3, 3, 1},
                               Sizes{5, 4, 3, 2, 2}}) {
        access::allocate(*this->image, MOX_UINT8, sizes);
        EXPECT_EQ(verdict(this->rule, this->image.get()), refusal("Images don't have the same size"));
    }
}

TYPED_TEST(RuleAssertSameSizeOf, comparesOriginsAndStepsOfAllDimensions)
{
    for (ImageDimension const dimension : allDimensions) {
        this->image->setCalibrationOrigin(dimension, -1.0);
        EXPECT_EQ(verdict(this->rule, this->image.get()), refusal("Images don't have the same calibration"));
        calibrate(*this->image);
        this->image->setCalibrationStep(dimension, -1.0);
        EXPECT_EQ(verdict(this->rule, this->image.get()), refusal("Images don't have the same calibration"));
        calibrate(*this->image);
    }
    EXPECT_EQ(verdict(this->rule, this->image.get()), passes);
}

TYPED_TEST(RuleAssertSameSizeOf, comparesSizesBeforeCalibrations)
{
    access::allocate(*this->image, MOX_UINT8, {1, 1, 1, 1, 1});
    this->image->setCalibrationStep(ROWS, -1.0);
    EXPECT_EQ(verdict(this->rule, this->image.get()), refusal("Images don't have the same size"));
}

TYPED_TEST(RuleAssertSameSizeOf, ignoresTextsAndInterpretation)
{
    this->image->setUnit("mm");
    this->image->setDescription("other");
    this->image->setInterpretation(INTERPRETATION_LABEL);
    EXPECT_EQ(verdict(this->rule, this->image.get()), passes);
}

TYPED_TEST(RuleAssertSameSizeOf, refusesNullOnEitherSide)
{
    EXPECT_EQ(verdict(this->rule, nullptr), refusal("Parameter value cannot be null"));
    this->other = nullptr;
    EXPECT_EQ(verdict(this->rule, this->image.get()), refusal("Parameter value cannot be null"));
    EXPECT_EQ(verdict(this->rule, nullptr), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing

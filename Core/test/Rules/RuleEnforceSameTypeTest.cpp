#include "Core/private/Rules/RuleEnforceSameType.h"

#include <gtest/gtest.h>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleEnforceSameType"};
}

class RuleEnforceSameTypeOf : public ::testing::Test {
protected:
    RuleEnforceSameTypeOf()
        : rule(input)
    {
        input = inputImage.get();
    }

    std::unique_ptr<TestImage> const inputImage = imageOf(MOX_FLOAT32, {9, 9, 1, 1, 1});
    Property<ImageModel const*> input;
    RuleEnforceSameType rule;
};

TEST_F(RuleEnforceSameTypeOf, givesTheTypeAndKeepsTheSizes)
{
    auto const image = imageOf(MOX_UINT8, {5, 4, 3, 2, 1});
    calibrate(*image);
    image->setInterpretation(INTERPRETATION_LABEL);
    EXPECT_EQ(verdict(rule, image.get()), passes);
    EXPECT_EQ(image->getVoxelType(), MOX_FLOAT32);
    EXPECT_EQ(Sizes::of(*image), (Sizes{5, 4, 3, 2, 1}));
    EXPECT_EQ(image->getCalibrationStep(ROWS), 1.5);
    EXPECT_EQ(image->getInterpretation(), INTERPRETATION_LABEL);
}

TEST_F(RuleEnforceSameTypeOf, retypesAFreshImage)
{
    TestImage image;
    EXPECT_EQ(verdict(rule, &image), passes);
    EXPECT_EQ(image.getVoxelType(), MOX_FLOAT32);
    EXPECT_EQ(Sizes::of(image), Sizes());
}

TEST_F(RuleEnforceSameTypeOf, keepsTheVoxelsOfAnImageOfThatType)
{
    auto const bytes = makeImage<unsigned char>(smallSizes, someBytes());
    auto const image = makeImage<unsigned char>(smallSizes, someBytes());
    input = bytes.get();
    EXPECT_EQ(verdict(rule, image.get()), passes);
    EXPECT_EQ(voxelsOf<unsigned char>(*image), someBytes());
}

TEST_F(RuleEnforceSameTypeOf, passesTheInputItself)
{
    inputImage->allocates = false;
    EXPECT_EQ(verdict(rule, inputImage.get()), passes);
}

TEST_F(RuleEnforceSameTypeOf, refusesAnImageThatDoesNotChange)
{
    auto const image = imageOf(MOX_UINT8);
    image->allocates = false;
    EXPECT_EQ(verdict(rule, image.get()), refusal("Image cannot be retyped"));
    OverstatingImage overstating;
    EXPECT_EQ(verdict(rule, &overstating), refusal("Image cannot be retyped"));
}

TEST_F(RuleEnforceSameTypeOf, looksAtTheImageNotAtItsAnswer)
{
    UnderstatingImage image;
    EXPECT_EQ(verdict(rule, &image), passes);
    EXPECT_EQ(image.getVoxelType(), MOX_FLOAT32);
}

TEST_F(RuleEnforceSameTypeOf, refusesNullOnEitherSide)
{
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
    input = nullptr;
    EXPECT_EQ(verdict(rule, inputImage.get()), refusal("Parameter value cannot be null"));
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing

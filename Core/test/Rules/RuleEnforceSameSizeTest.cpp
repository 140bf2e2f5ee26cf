#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "Core/private/Rules/RuleEnforceSameSizeAndCalibration.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

template <class Rule>
Verdict const null;
template <class Rule>
Verdict const refusal;

template <>
Verdict const null<RuleEnforceSameSizeAndCalibration> = {"Parameter value cannot be null",
                                                         "RuleEnforceSameSizeAndCalibration"};
template <>
Verdict const refusal<RuleEnforceSameSizeAndCalibration> = {"Image cannot be resized",
                                                            "RuleEnforceSameSizeAndCalibration"};
template <>
Verdict const null<RuleEnforceSameSizeCalibrationAndType> = {"Parameter value cannot be NULL.",
                                                             "RuleEnforceSameSizeCalibrationAndType"};
template <>
Verdict const refusal<RuleEnforceSameSizeCalibrationAndType> = {"Image cannot be resized and retyped.",
                                                                "RuleEnforceSameSizeCalibrationAndType"};

/// The two rules differ in the type alone.
template <class Rule>
class RuleEnforceSameSize : public ::testing::Test {
protected:
    RuleEnforceSameSize()
        : rule(input)
    {
        calibrate(*inputImage);
        input = inputImage.get();
    }

    std::unique_ptr<TestImage> const inputImage = imageOf(MOX_INT16, smallSizes);
    Property<ImageModel const*> input;
    Rule rule;
};

using BothRules = ::testing::Types<RuleEnforceSameSizeAndCalibration, RuleEnforceSameSizeCalibrationAndType>;
TYPED_TEST_SUITE(RuleEnforceSameSize, BothRules);

TYPED_TEST(RuleEnforceSameSize, givesSizesAndCalibration)
{
    auto const image = imageOf(MOX_FLOAT64, {5, 1, 1, 2, 1});
    EXPECT_EQ(verdict(this->rule, image.get()), passes);
    EXPECT_EQ(Sizes::of(*image), smallSizes);
    expectSameCalibration(*image, *this->inputImage);
}

TYPED_TEST(RuleEnforceSameSize, changesNothingElse)
{
    this->inputImage->setUnit("mm");
    this->inputImage->setDescription("input");
    this->inputImage->setInterpretation(INTERPRETATION_LABEL);
    TestImage image;
    EXPECT_EQ(verdict(this->rule, &image), passes);
    EXPECT_EQ(Sizes::of(image), smallSizes);
    EXPECT_STREQ(image.getUnit().c_str(), "");
    EXPECT_STREQ(image.getDescription().c_str(), "");
    EXPECT_EQ(image.getInterpretation(), INTERPRETATION_VALUE);
}

TYPED_TEST(RuleEnforceSameSize, keepsTheVoxelsWhereOnlyTheCalibrationDiffers)
{
    auto const bytes = imageOf(MOX_UINT8, smallSizes);
    calibrate(*bytes);
    this->input = bytes.get();
    auto const image = makeImage<unsigned char>(smallSizes, someBytes());
    EXPECT_EQ(verdict(this->rule, image.get()), passes);
    expectSameCalibration(*image, *bytes);
    EXPECT_EQ(voxelsOf<unsigned char>(*image), someBytes());
}

TYPED_TEST(RuleEnforceSameSize, passesAnImageThatNeedsNoChange)
{
    auto const image = imageOf(MOX_INT16, smallSizes);
    calibrate(*image);
    image->allocates = false;
    image->calibrates = false;
    EXPECT_EQ(verdict(this->rule, image.get()), passes);
}

TYPED_TEST(RuleEnforceSameSize, passesTheInputItselfWithoutAChange)
{
    auto const image = makeImage<unsigned char>(smallSizes, someBytes());
    image->setCalibrationStep(ROWS, std::numeric_limits<double>::quiet_NaN());
    this->input = image.get();
    EXPECT_EQ(verdict(this->rule, image.get()), passes);
    EXPECT_EQ(voxelsOf<unsigned char>(*image), someBytes());
}

TYPED_TEST(RuleEnforceSameSize, comparesEverySize)
{
    for (Sizes const& sizes : {Sizes{5, 3, 2, 1, 1}, Sizes{4, 4, 2, 1, 1}, Sizes{4, 3, 3, 1, 1}, Sizes{4, 3, 2, 2, 1},
                               Sizes{4, 3, 2, 1, 2}}) {
        auto const image = imageOf(MOX_INT16, sizes);
        EXPECT_EQ(verdict(this->rule, image.get()), passes);
        EXPECT_EQ(Sizes::of(*image), smallSizes);
    }
}

TYPED_TEST(RuleEnforceSameSize, takesTheSizesOfAnEmptyInput)
{
    TestImage empty;
    this->input = &empty;
    auto const image = imageOf(MOX_UINT8, smallSizes);
    EXPECT_EQ(verdict(this->rule, image.get()), passes);
    EXPECT_EQ(Sizes::of(*image), Sizes());
}

TYPED_TEST(RuleEnforceSameSize, refusesAnImageThatKeepsItsSizes)
{
    auto const image = imageOf(MOX_INT16, {1, 1, 1, 1, 1});
    image->allocates = false;
    EXPECT_EQ(verdict(this->rule, image.get()), refusal<TypeParam>);
    EXPECT_EQ(Sizes::of(*image), (Sizes{1, 1, 1, 1, 1}));
}

TYPED_TEST(RuleEnforceSameSize, refusesAnImageThatKeepsItsCalibration)
{
    auto const image = imageOf(MOX_INT16, {1, 1, 1, 1, 1});
    image->calibrates = false;
    EXPECT_EQ(verdict(this->rule, image.get()), refusal<TypeParam>);
    EXPECT_EQ(Sizes::of(*image), smallSizes) << "earlier changes stay";
}

TYPED_TEST(RuleEnforceSameSize, looksAtTheImageNotAtItsAnswer)
{
    UnderstatingImage understating;
    EXPECT_EQ(verdict(this->rule, &understating), passes);
    EXPECT_EQ(Sizes::of(understating), smallSizes);
    expectSameCalibration(understating, *this->inputImage);
    OverstatingImage overstating;
    EXPECT_EQ(verdict(this->rule, &overstating), refusal<TypeParam>);
}

TYPED_TEST(RuleEnforceSameSize, refusesNullOnEitherSide)
{
    EXPECT_EQ(verdict(this->rule, nullptr), null<TypeParam>);
    this->input = nullptr;
    EXPECT_EQ(verdict(this->rule, this->inputImage.get()), null<TypeParam>);
    EXPECT_EQ(verdict(this->rule, nullptr), null<TypeParam>);
}

TEST(RuleEnforceSameSizeAndCalibration, keepsTheType)
{
    auto const inputImage = imageOf(MOX_INT16, smallSizes);
    Property<ImageModel const*> input;
    input = inputImage.get();
    RuleEnforceSameSizeAndCalibration rule(input);
    auto const image = imageOf(MOX_FLOAT64, {5, 1, 1, 2, 1});
    EXPECT_EQ(verdict(rule, image.get()), passes);
    EXPECT_EQ(image->getVoxelType(), MOX_FLOAT64);
    EXPECT_EQ(Sizes::of(*image), smallSizes);
}

class RuleEnforceSameSizeCalibrationAndTypeOf : public RuleEnforceSameSize<RuleEnforceSameSizeCalibrationAndType> {};

TEST_F(RuleEnforceSameSizeCalibrationAndTypeOf, retypesAnImageOfTheSameSizes)
{
    auto const image = imageOf(MOX_UINT8, smallSizes);
    EXPECT_EQ(verdict(rule, image.get()), passes);
    EXPECT_EQ(image->getVoxelType(), MOX_INT16);
    EXPECT_EQ(Sizes::of(*image), smallSizes);
}

TEST_F(RuleEnforceSameSizeCalibrationAndTypeOf, resizesAndRetypesAtOnce)
{
    auto const image = imageOf(MOX_FLOAT64, {5, 1, 1, 2, 1});
    EXPECT_EQ(verdict(rule, image.get()), passes);
    EXPECT_EQ(image->getVoxelType(), MOX_INT16);
    EXPECT_EQ(Sizes::of(*image), smallSizes);
}

TEST_F(RuleEnforceSameSizeCalibrationAndTypeOf, refusesAnImageThatKeepsItsType)
{
    auto const image = imageOf(MOX_UINT8, smallSizes);
    calibrate(*image);
    image->allocates = false;
    EXPECT_EQ(verdict(rule, image.get()), refusal<RuleEnforceSameSizeCalibrationAndType>);
    EXPECT_EQ(image->getVoxelType(), MOX_UINT8);
}

} // namespace

} // namespace mox::testing

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "Core/private/Rules/RuleEnforceTypePromotionImageImage.h"
#include "Core/private/Rules/RuleEnforceTypePromotionImageValue.h"
#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

constexpr int sum = 0;
constexpr int product = 1;
constexpr int minimum = 2;
constexpr int maximum = 3;

class RuleEnforceTypePromotionImageImageOf : public ::testing::Test {
protected:
    RuleEnforceTypePromotionImageImageOf()
    {
        first = firstImage.get();
        second = secondImage.get();
    }

    Verdict verdictOn(ImageModel* output, int kind = sum)
    {
        RuleEnforceTypePromotionImageImage rule(first, second, kind);
        return verdict(rule, output);
    }

    static Verdict refusal(char const* message) { return {message, "RuleEnforceTypePromotionImageImage"}; }

    std::unique_ptr<TestImage> const firstImage = imageOf(MOX_UINT8);
    std::unique_ptr<TestImage> const secondImage = imageOf(MOX_UINT16);
    Property<ImageModel const*> first;
    Property<ImageModel const*> second;
};

TEST_F(RuleEnforceTypePromotionImageImageOf, retypesTheOutputByItsKind)
{
    auto const output = imageOf(MOX_FLOAT64);
    EXPECT_EQ(verdictOn(output.get(), sum), passes);
    EXPECT_EQ(output->getVoxelType(), MOX_INT32);
    EXPECT_EQ(verdictOn(output.get(), minimum), passes);
    EXPECT_EQ(output->getVoxelType(), MOX_UINT8);
    EXPECT_EQ(verdictOn(output.get(), maximum), passes);
    EXPECT_EQ(output->getVoxelType(), MOX_UINT16);
    EXPECT_EQ(verdictOn(output.get(), product), passes);
    EXPECT_EQ(output->getVoxelType(), MOX_INT32);
}

TEST_F(RuleEnforceTypePromotionImageImageOf, looksAtBothInputs)
{
    auto const int32 = imageOf(MOX_INT32);
    auto const output = imageOf(MOX_UINT8);
    second = int32.get();
    first = secondImage.get();
    EXPECT_EQ(verdictOn(output.get(), maximum), passes);
    EXPECT_EQ(output->getVoxelType(), MOX_UINT16);
    first = firstImage.get();
    EXPECT_EQ(verdictOn(output.get(), maximum), passes);
    EXPECT_EQ(output->getVoxelType(), MOX_INT32);
}

TEST_F(RuleEnforceTypePromotionImageImageOf, keepsTheOutputsSizesAndCalibration)
{
    auto const output = imageOf(MOX_UINT8, {5, 4, 3, 2, 1});
    calibrate(*output);
    EXPECT_EQ(verdictOn(output.get()), passes);
    EXPECT_EQ(Sizes::of(*output), (Sizes{5, 4, 3, 2, 1}));
    EXPECT_EQ(output->getCalibrationStep(ROWS), 1.5);
}

TEST_F(RuleEnforceTypePromotionImageImageOf, keepsTheVoxelsOfAnOutputOfThatType)
{
    auto const output = makeImage<unsigned char>(smallSizes, someBytes());
    EXPECT_EQ(verdictOn(output.get(), minimum), passes);
    EXPECT_EQ(voxelsOf<unsigned char>(*output), someBytes());
}

TEST_F(RuleEnforceTypePromotionImageImageOf, passesAnInputThatNeedsNoChange)
{
    firstImage->allocates = false;
    EXPECT_EQ(verdictOn(firstImage.get(), minimum), passes);
    EXPECT_EQ(verdictOn(secondImage.get(), maximum), passes);
}

TEST_F(RuleEnforceTypePromotionImageImageOf, refusesAnInputThatWouldBeRetyped)
{
    for (TestImage* input : {firstImage.get(), secondImage.get()}) {
        VoxelTypes const before = input->getVoxelType();
        EXPECT_EQ(verdictOn(input, sum), refusal("input image cannot be used as output image if it must be retyped"));
        EXPECT_EQ(input->getVoxelType(), before);
    }
}

TEST_F(RuleEnforceTypePromotionImageImageOf, refusesAnOutputThatDoesNotChange)
{
    auto const output = imageOf(MOX_UINT8);
    output->allocates = false;
    EXPECT_EQ(verdictOn(output.get()), refusal("Image cannot be retyped"));
    OverstatingImage overstating;
    EXPECT_EQ(verdictOn(&overstating), refusal("Image cannot be retyped"));
    UnderstatingImage understating;
    EXPECT_EQ(verdictOn(&understating), passes);
}

TEST_F(RuleEnforceTypePromotionImageImageOf, knowsNoOtherKind)
{
    auto const output = imageOf(MOX_INT32);
    for (int const kind : {-1, 4, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(verdictOn(output.get(), kind), refusal("unsupported type of rule")) << kind;
    }
}

TEST_F(RuleEnforceTypePromotionImageImageOf, refusesNullAnywhere)
{
    auto const output = imageOf(MOX_INT32);
    EXPECT_EQ(verdictOn(nullptr), refusal("Parameter value cannot be null"));
    first = nullptr;
    EXPECT_EQ(verdictOn(output.get()), refusal("Parameter value cannot be null"));
    first = firstImage.get();
    second = nullptr;
    EXPECT_EQ(verdictOn(output.get()), refusal("Parameter value cannot be null"));
    EXPECT_EQ(verdictOn(output.get(), 4), refusal("Parameter value cannot be null"));
}

class RuleEnforceTypePromotionImageValueOf : public ::testing::Test {
protected:
    RuleEnforceTypePromotionImageValueOf() { image = inputImage.get(); }

    Verdict verdictOn(ImageModel* output, int kind = sum)
    {
        RuleEnforceTypePromotionImageValue rule(image, value, kind);
        return verdict(rule, output);
    }

    /// The type of the output for this number.
    VoxelTypes typeFor(double number, int kind)
    {
        value = number;
        auto const output = imageOf(MOX_COMPLEX_FLOAT32);
        EXPECT_EQ(verdictOn(output.get(), kind), passes);
        return output->getVoxelType();
    }

    static Verdict refusal(char const* message) { return {message, "RuleEnforceTypePromotionImageValue"}; }

    std::unique_ptr<TestImage> const inputImage = imageOf(MOX_UINT8);
    Property<ImageModel const*> image;
    Property<double> value;
};

TEST_F(RuleEnforceTypePromotionImageValueOf, typesTheNumber)
{
    EXPECT_EQ(typeFor(1.0, sum), MOX_INT16);
    EXPECT_EQ(typeFor(100000.0, sum), MOX_INT32);
    EXPECT_EQ(typeFor(-0x1p40, sum), MOX_INT64);
    EXPECT_EQ(typeFor(2.5, sum), MOX_FLOAT32);
    EXPECT_EQ(typeFor(0.1, sum), MOX_FLOAT64);
    EXPECT_EQ(typeFor(std::numeric_limits<double>::infinity(), sum), MOX_FLOAT32);
    EXPECT_EQ(typeFor(std::numeric_limits<double>::quiet_NaN(), sum), MOX_FLOAT64);
}

TEST_F(RuleEnforceTypePromotionImageValueOf, promotesTheImagesTypeWithTheNumbers)
{
    EXPECT_EQ(typeFor(1.0, maximum), MOX_UINT8);
    EXPECT_EQ(typeFor(1.0, minimum), MOX_INT16);
    EXPECT_EQ(typeFor(1.0, product), MOX_INT16);
    auto const wide = imageOf(MOX_UINT16);
    image = wide.get();
    EXPECT_EQ(typeFor(100000.0, maximum), MOX_UINT16);
    EXPECT_EQ(typeFor(100000.0, minimum), MOX_INT32);
}

TEST_F(RuleEnforceTypePromotionImageValueOf, keepsSizesAndWhatNeedsNoChange)
{
    auto const output = imageOf(MOX_UINT8, {5, 4, 3, 2, 1});
    value = 1.0;
    EXPECT_EQ(verdictOn(output.get()), passes);
    EXPECT_EQ(Sizes::of(*output), (Sizes{5, 4, 3, 2, 1}));
    output->allocates = false;
    EXPECT_EQ(verdictOn(output.get()), passes);
    EXPECT_EQ(verdictOn(inputImage.get(), maximum), passes);
}

TEST_F(RuleEnforceTypePromotionImageValueOf, refusesAnInputThatWouldBeRetyped)
{
    EXPECT_EQ(verdictOn(inputImage.get()), refusal("input image cannot be used as output image if it must be retyped"));
    EXPECT_EQ(inputImage->getVoxelType(), MOX_UINT8);
}

TEST_F(RuleEnforceTypePromotionImageValueOf, refusesAnOutputThatDoesNotChange)
{
    auto const output = imageOf(MOX_UINT8);
    output->allocates = false;
    EXPECT_EQ(verdictOn(output.get()), refusal("Image cannot be retyped"));
}

TEST_F(RuleEnforceTypePromotionImageValueOf, knowsNoOtherKind)
{
    auto const output = imageOf(MOX_INT16);
    EXPECT_EQ(verdictOn(output.get(), 4), refusal("unsupported type of rule"));
    EXPECT_EQ(verdictOn(output.get(), -1), refusal("unsupported type of rule"));
}

TEST_F(RuleEnforceTypePromotionImageValueOf, refusesNullOnEitherSide)
{
    auto const output = imageOf(MOX_INT16);
    EXPECT_EQ(verdictOn(nullptr), refusal("Parameter value cannot be null"));
    image = nullptr;
    EXPECT_EQ(verdictOn(output.get()), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing

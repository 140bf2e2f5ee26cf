#include <Moxelcore/PointOperations/MaskImageProcessing.h>

#include <gmock/gmock.h>

#include <cmath>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using point_operations::MaskImageProcessing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

template <class T, class Mask>
std::vector<T> masked(Sizes const& sizes, std::vector<T> const& voxels, std::vector<Mask> const& mask)
{
    auto const input = makeImage(sizes, voxels);
    Sizes maskSizes = sizes;
    maskSizes.spectralSeries = 1;
    auto const inputBinary = makeImage(maskSizes, mask);
    memory::InMemoryImage output;
    auto const algorithm = MaskImageProcessing::New();
    algorithm->input = input.get();
    algorithm->inputBinary = inputBinary.get();
    algorithm->output = &output;
    algorithm->run();
    return voxelsOf<T>(output);
}

TEST(MaskImageProcessingContract, hasItsPropertiesInOrder)
{
    EXPECT_THAT(propertyNames(*MaskImageProcessing::New()), ElementsAre("input", "inputBinary", "output"));
}

TEST(MaskImageProcessingContract, refusesMasksThatDoNotMatch)
{
    auto const input = makeImage({2, 3, 4, 5, 2}, std::vector<float>(240, 7));
    memory::InMemoryImage mask;
    auto const algorithm = MaskImageProcessing::New();
    algorithm->input = input.get();
    algorithm->inputBinary = &mask;
    algorithm->output = input.get();
    auto const refusalOf = [&](VoxelTypes type, Sizes const& sizes) {
        access::allocate(mask, type, sizes);
        return refusal(*algorithm);
    };
    EXPECT_THAT(refusalOf(MOX_INT32, {2, 3, 4, 5, 1}),
                HasSubstr("#1 Error : Voxel type must be one of the following types : uint8, uint16, int8, int16. "
                          "Current voxel type is int32 \n"));
    EXPECT_THAT(refusalOf(MOX_UINT8, {3, 3, 4, 5, 1}),
                HasSubstr("#1 Error : Component 0 must have a size of 2. Current size is 3 \n"));
    EXPECT_THAT(refusalOf(MOX_UINT8, {2, 2, 4, 5, 1}),
                HasSubstr("#1 Error : Component 1 must have a size of 3. Current size is 2 \n"));
    EXPECT_THAT(refusalOf(MOX_UINT8, {2, 3, 1, 5, 1}),
                HasSubstr("#1 Error : Component 2 must have a size of 4. Current size is 1 \n"));
    EXPECT_THAT(refusalOf(MOX_UINT8, {2, 3, 4, 6, 1}),
                HasSubstr("#1 Error : Component 3 must have a size of 5. Current size is 6 \n"));
    EXPECT_THAT(refusalOf(MOX_UINT8, {2, 3, 4, 5, 2}),
                HasSubstr("#1 Error : component 4 must have a size of 1. Current size is 2 \n"));
    EXPECT_THAT(refusalOf(MOX_UINT8, {2, 3, 4, 5, 2}), HasSubstr("#2 From Rule error in property inputBinary \n"));
    EXPECT_EQ(voxelsOf<float>(*input), std::vector<float>(240, 7));
}

TEST(MaskImageProcessingLiteral, keepsVoxelsWhereTheMaskIsNotZero)
{
    EXPECT_THAT((masked<short, unsigned char>({4, 1, 1, 1, 1}, {-5, 6, 7, 8}, {0, 1, 255, 0})),
                ElementsAre(0, 6, 7, 0));
    EXPECT_THAT((masked<unsigned char, short>({3, 1, 1, 1, 1}, {5, 6, 7}, {-256, 256, 0})), ElementsAre(5, 6, 0));
    auto const floats = masked<float, signed char>({4, 1, 1, 1, 1}, {NAN, NAN, -0.0F, -INFINITY}, {0, 1, 1, 0});
    EXPECT_EQ(floats[0], 0);
    EXPECT_FALSE(std::signbit(floats[0]));
    EXPECT_TRUE(std::isnan(floats[1]));
    EXPECT_TRUE(std::signbit(floats[2]));
    EXPECT_EQ(floats[3], 0);
}

TEST(MaskImageProcessingLiteral, oneMaskServesAllChannels)
{
    EXPECT_THAT((masked<unsigned char, unsigned char>({2, 1, 1, 2, 2}, {1, 2, 3, 4, 5, 6, 7, 8}, {1, 0, 0, 1})),
                ElementsAre(1, 0, 0, 4, 5, 0, 0, 8));
}

template <class T>
class MaskImageProcessingTyped : public ::testing::Test {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(MaskImageProcessingTyped, RealTypes);

TYPED_TEST(MaskImageProcessingTyped, equalsTheDefinition)
{
    std::mt19937 random(1);
    for (int round = 0; round < 10; ++round) {
        Sizes const sizes = randomSizes(random, {50, 20, 5, 2, 3});
        Sizes maskSizes = sizes;
        maskSizes.spectralSeries = 1;
        auto voxels = randomVoxels<TypeParam>(random, sizes.numOfVoxels());
        for (TypeParam& voxel : voxels) {
            voxel = voxel == voxel ? voxel : TypeParam(3); // NaN cannot be compared
        }
        dispatch(NarrowVoxels(), voxelTypesOf(NarrowVoxels())[static_cast<std::size_t>(round) % 4], [&]<class Mask>() {
            auto mask = randomVoxels<Mask>(random, maskSizes.numOfVoxels());
            for (Mask& voxel : mask) {
                voxel = random() % 2 == 0 ? Mask(0) : voxel;
            }
            auto expected = voxels;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                if (mask[i % mask.size()] == 0) {
                    expected[i] = 0;
                }
            }
            ASSERT_EQ((masked<TypeParam, Mask>(sizes, voxels, mask)), expected);
        });
    }
}

TEST(MaskImageProcessingRun, keepsTypeCalibrationAndInterpretationOfTheInput)
{
    auto const input = makeImage({2, 1, 1, 1, 1}, std::vector<double>{1.5, 2.5});
    input->setCalibrationOrigin(ROWS, -4);
    input->setInterpretation(INTERPRETATION_LABEL);
    auto const mask = makeImage({2, 1, 1, 1, 1}, std::vector<unsigned char>{0, 1}); // its calibration differs
    memory::InMemoryImage output;
    auto const algorithm = MaskImageProcessing::New();
    algorithm->input = input.get();
    algorithm->inputBinary = mask.get();
    algorithm->output = &output;
    algorithm->run();
    EXPECT_THAT(voxelsOf<double>(output), ElementsAre(0, 2.5));
    EXPECT_EQ(output.getCalibrationOrigin(ROWS), -4);
    EXPECT_EQ(output.getInterpretation(), INTERPRETATION_LABEL);
}

TEST(MaskImageProcessingRun, takesAMaskOfTheInputsTypeAsItsOutput)
{
    auto const input = makeImage({3, 1, 1, 1, 1}, std::vector<short>{4, 5, 6});
    auto const mask = makeImage({3, 1, 1, 1, 1}, std::vector<short>{0, 9, 1});
    auto const algorithm = MaskImageProcessing::New();
    algorithm->input = input.get();
    algorithm->inputBinary = mask.get();
    algorithm->output = mask.get();
    algorithm->run();
    EXPECT_THAT(voxelsOf<short>(*mask), ElementsAre(0, 5, 6));
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/PointOperations/ArithmeticImageProcessing.h>
#include <Moxelcore/PointOperations/ArithmeticValueProcessing.h>

#include <gmock/gmock.h>

#include <limits>

#include "Core/private/Rules/typePromotion.h"
#include "testing/AlgorithmTests.h"
#include "testing/Images.h"
#include "testing/references/arithmetic.h"

namespace mox::testing {

namespace {

using namespace point_operations;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

void run(ImageModel const& input, int arithmeticOperator, double value, ImageModel& output)
{
    auto const algorithm = ArithmeticValueProcessing::New();
    algorithm->input = &input;
    algorithm->inputValue = value;
    algorithm->arithmeticOperator = arithmeticOperator;
    algorithm->output = &output;
    algorithm->run();
}

TEST(ArithmeticValueProcessingContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = ArithmeticValueProcessing::New();
    EXPECT_THAT(propertyNames(*algorithm), ElementsAre("input", "inputValue", "arithmeticOperator", "output"));
    EXPECT_EQ(algorithm->inputValue, 0.0);
    EXPECT_EQ(algorithm->arithmeticOperator, ARITHMETIC_ADD);
}

TEST(ArithmeticValueProcessingContract, refusesAnOperatorBeforeAnythingElse)
{
    auto const algorithm = ArithmeticValueProcessing::New();
    algorithm->arithmeticOperator = 6;
    EXPECT_THROW(algorithm->run(), InvalidCall);
    EXPECT_THAT(refusal(*algorithm), HasSubstr("#1 Error : The provided arithmeticOperator is unknow (value=6) \n"));
}

TEST(ArithmeticValueProcessingContract, refusesAnInputThatWouldHaveToBeRetyped)
{
    auto const image = makeImage({2, 1, 1, 1, 1}, std::vector<unsigned char>{1, 2});
    auto const algorithm = ArithmeticValueProcessing::New();
    algorithm->input = image.get();
    algorithm->output = image.get();
    EXPECT_THAT(refusal(*algorithm),
                HasSubstr("#1 Error : input image cannot be used as output image if it must be retyped \n"));
    EXPECT_THAT(voxelsOf<unsigned char>(*image), ElementsAre(1, 2));
}

TEST(ArithmeticValueProcessingLiteral, givesTheNumberTheFirstTypeThatHoldsIt)
{
    auto const bytes = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned char>{10});
    memory::InMemoryImage output;
    run(*bytes, ARITHMETIC_ADD, 2.5, output);
    EXPECT_THAT(voxelsOf<float>(output), ElementsAre(12.5F));
    EXPECT_EQ(output.getVoxelType(), MOX_FLOAT32);
    run(*bytes, ARITHMETIC_ADD, 2.0, output);
    EXPECT_EQ(output.getVoxelType(), MOX_INT16);
    EXPECT_THAT(voxelsOf<short>(output), ElementsAre(12));
    run(*bytes, ARITHMETIC_ADD, 100000, output);
    EXPECT_EQ(output.getVoxelType(), MOX_INT32);
    EXPECT_THAT(voxelsOf<int>(output), ElementsAre(100010));
    run(*bytes, ARITHMETIC_ADD, 0.1, output);
    EXPECT_EQ(output.getVoxelType(), MOX_FLOAT64);
    EXPECT_THAT(voxelsOf<double>(output), ElementsAre(10.1));
    run(*bytes, ARITHMETIC_MULTIPLY, -3e12, output);
    EXPECT_EQ(output.getVoxelType(), MOX_INT64);
    EXPECT_THAT(voxelsOf<int64>(output), ElementsAre(-30000000000000));
    run(*bytes, ARITHMETIC_DIVIDE, std::numeric_limits<double>::quiet_NaN(), output);
    EXPECT_EQ(output.getVoxelType(), MOX_FLOAT64);
    EXPECT_TRUE(std::isnan(voxelsOf<double>(output)[0]));
}

/// One voxel more than a kernel's row of numbers, with the type's limits among them.
std::unique_ptr<memory::InMemoryImage> image(VoxelTypes type)
{
    constexpr unsigned int numOfVoxels = 513;
    std::unique_ptr<memory::InMemoryImage> result;
    dispatch(RealVoxels(), type, [&]<class T>() {
        std::mt19937 random(5);
        result = makeImage({numOfVoxels, 1, 1, 1, 1}, randomVoxels<T>(random, numOfVoxels));
    });
    return result;
}

// The number is an operand like the voxels of a second image.
TEST(ArithmeticValueProcessingTyped, equalsTheImageOfTheNumber)
{
    constexpr double largestFloat = std::numeric_limits<float>::max();
    for (double const value : {0.0, -1.0, 2.0, 32767.0, -32768.0, 32768.0, -2147483648.0, 2147483648.0, -0x1p63, 0x1p62,
                               0.5, 0.1, 1e300, largestFloat, std::numeric_limits<double>::infinity()}) {
        VoxelTypes const type = rules::typeOfNumber(value);
        std::unique_ptr<memory::InMemoryImage> constant;
        dispatch(RealVoxels(), type, [&]<class T>() {
            constant = makeImage({513, 1, 1, 1, 1}, std::vector<T>(513, static_cast<T>(value)));
        });
        for (int voxelType = MOX_UINT8; voxelType <= MOX_FLOAT64; ++voxelType) {
            auto const input = image(static_cast<VoxelTypes>(voxelType));
            for (int op = 0; op <= ARITHMETIC_MAXIMUM; ++op) {
                memory::InMemoryImage output;
                run(*input, op, value, output);
                memory::InMemoryImage expected;
                auto const ofImages = ArithmeticImageProcessing::New();
                ofImages->input1 = input.get();
                ofImages->input2 = constant.get();
                ofImages->arithmeticOperator = op;
                ofImages->output = &expected;
                ofImages->run();
                ASSERT_EQ(numbersOf(output), numbersOf(expected)) << voxelType << ' ' << op << ' ' << value;
            }
        }
    }
}

TEST(ArithmeticValueProcessingRun, worksInPlaceWhereTheTypeStays)
{
    std::mt19937 random(3);
    Sizes const sizes{1030, 31, 3, 2, 2};
    auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
    auto const image = makeImage(sizes, voxels);
    run(*image, ARITHMETIC_SUBTRACT, 5, *image);
    std::vector<short> expected(voxels.size());
    std::transform(voxels.begin(), voxels.end(), expected.begin(), [](short v) { return static_cast<short>(v - 5); });
    EXPECT_EQ(voxelsOf<short>(*image), expected);
}

} // namespace

} // namespace mox::testing

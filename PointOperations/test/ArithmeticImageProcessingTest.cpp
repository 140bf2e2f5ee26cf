#include <Moxelcore/PointOperations/ArithmeticImageProcessing.h>

#include <gmock/gmock.h>

#include <limits>

#include "Core/private/Rules/typePromotion.h"
#include "testing/AlgorithmTests.h"
#include "testing/Images.h"
#include "testing/TestImage.h"
#include "testing/references/arithmetic.h"

namespace mox::testing {

namespace {

using namespace point_operations;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

void run(ImageModel const& first, int arithmeticOperator, ImageModel const& second, ImageModel& output)
{
    auto const algorithm = ArithmeticImageProcessing::New();
    algorithm->input1 = &first;
    algorithm->input2 = &second;
    algorithm->arithmeticOperator = arithmeticOperator;
    algorithm->output = &output;
    algorithm->run();
}

template <class Out, class A, class B>
std::vector<Out> computed(std::vector<A> const& a, int arithmeticOperator, std::vector<B> const& b)
{
    Sizes const sizes{static_cast<unsigned int>(a.size()), 1, 1, 1, 1};
    auto const first = makeImage(sizes, a);
    auto const second = makeImage(sizes, b);
    memory::InMemoryImage output;
    run(*first, arithmeticOperator, *second, output);
    EXPECT_EQ(output.getVoxelType(), voxelTypeOf<Out>);
    return voxelsOf<Out>(output);
}

using U8 = std::vector<unsigned char>;
using I8 = std::vector<signed char>;
using U16 = std::vector<unsigned short>;
using F32 = std::vector<float>;

TEST(ArithmeticImageProcessingContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = ArithmeticImageProcessing::New();
    EXPECT_THAT(propertyNames(*algorithm), ElementsAre("input1", "input2", "arithmeticOperator", "output"));
    EXPECT_EQ(algorithm->arithmeticOperator, ARITHMETIC_ADD);
}

class ArithmeticImageProcessingRefusal : public ::testing::Test {
protected:
    ArithmeticImageProcessingRefusal()
    {
        fill(first, {2, 1, 1, 1, 1}, U8{1, 2});
        fill(second, {2, 1, 1, 1, 1}, U8{3, 4});
        fill(output, {2, 1, 1, 1, 1}, U8{42, 43});
        algorithm->input1 = &first;
        algorithm->input2 = &second;
        algorithm->output = &output;
    }

    void expectRefusal(std::string const& property, std::string const& message)
    {
        std::string const text = refusal(*algorithm);
        EXPECT_THAT(text, HasSubstr("#1 Error : " + message + " \n"));
        EXPECT_THAT(text, HasSubstr("#2 From Rule error in property " + property + " \n"));
        EXPECT_FALSE(algorithm->output.isLocked());
        EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42, 43));
    }

    memory::InMemoryImage first, second;
    TestImage output;
    boost::shared_ptr<ArithmeticImageProcessing> algorithm = ArithmeticImageProcessing::New();
};

TEST_F(ArithmeticImageProcessingRefusal, ofInputsThatDoNotMatch)
{
    algorithm->input1 = nullptr;
    expectRefusal("input1", "Parameter value cannot be null");
    algorithm->input1 = &first;
    second.setCalibrationStep(PLANS, 2);
    expectRefusal("input2", "Images don't have the same calibration");
    fill(second, {1, 2, 1, 1, 1}, U8{3, 4});
    expectRefusal("input2", "Images don't have the same size");
    second.allocate(MOX_COMPLEX_FLOAT64, 2, 1, 1, 1, 1);
    expectRefusal("input2",
                  "Voxel type must be one of the following types : uint8, uint16, uint32, uint64, int8, int16, "
                  "int32, int64, float32, float64. Current voxel type is complex float64");
}

TEST_F(ArithmeticImageProcessingRefusal, ofOutputsThatCannotBeRetyped)
{
    output.allocates = false;
    expectRefusal("output", "Image cannot be retyped");
}

TEST_F(ArithmeticImageProcessingRefusal, ofAnOperatorBeforeAnythingElse)
{
    algorithm->input1 = nullptr;
    for (int const value : {7, -1}) {
        algorithm->arithmeticOperator = value;
        EXPECT_THROW(algorithm->run(), InvalidCall);
        EXPECT_THAT(refusal(*algorithm), HasSubstr("#1 Error : The provided arithmeticOperator is unknow (value=" +
                                                   std::to_string(value) + ") \n"));
        EXPECT_THAT(refusal(*algorithm), HasSubstr("ArithmeticImageProcessing of Moxelcore library"));
    }
    EXPECT_FALSE(algorithm->input1.isLocked());
}

TEST_F(ArithmeticImageProcessingRefusal, ofAnInputThatWouldHaveToBeRetyped)
{
    for (memory::InMemoryImage* const image : {&first, &second}) {
        auto const fresh = ArithmeticImageProcessing::New();
        fresh->input1 = &first;
        fresh->input2 = &second;
        fresh->output = image;
        EXPECT_THAT(refusal(*fresh),
                    HasSubstr("#1 Error : input image cannot be used as output image if it must be retyped \n"));
        EXPECT_EQ(image->getVoxelType(), MOX_UINT8);
    }
    EXPECT_THAT(voxelsOf<unsigned char>(first), ElementsAre(1, 2));
}

// A refused run leaves its promotion with the output.
TEST_F(ArithmeticImageProcessingRefusal, isFeltByALaterRunInPlace)
{
    algorithm->output = &first;
    algorithm->arithmeticOperator = ARITHMETIC_MINIMUM;
    algorithm->run();
    EXPECT_THAT(voxelsOf<unsigned char>(first), ElementsAre(1, 2));
    algorithm->arithmeticOperator = ARITHMETIC_ADD;
    EXPECT_NE(refusal(*algorithm), "nothing thrown");
    algorithm->arithmeticOperator = ARITHMETIC_MINIMUM;
    EXPECT_THAT(refusal(*algorithm), HasSubstr("input image cannot be used as output image if it must be retyped"));
    algorithm->output = &output;
    EXPECT_EQ(refusal(*algorithm), "nothing thrown");
    EXPECT_EQ(output.getVoxelType(), MOX_UINT8);
}

TEST(ArithmeticImageProcessingLiteral, promotesBytes)
{
    EXPECT_THAT(computed<short>(U8{200, 100}, ARITHMETIC_ADD, U8{100, 200}), ElementsAre(300, 300));
    EXPECT_THAT(computed<short>(U8{200, 100}, ARITHMETIC_SUBTRACT, U8{100, 200}), ElementsAre(100, -100));
    EXPECT_THAT(computed<unsigned short>(U8{255, 3}, ARITHMETIC_MULTIPLY, U8{255, 4}), ElementsAre(65025, 12));
    EXPECT_THAT(computed<short>(U8{7, 7, 0}, ARITHMETIC_DIVIDE, U8{2, 0, 0}), ElementsAre(3, 0, 0));
}

TEST(ArithmeticImageProcessingLiteral, wrapsWhatDoesNotFit)
{
    EXPECT_THAT(computed<int>(U16{65535}, ARITHMETIC_MULTIPLY, U16{65535}), ElementsAre(-131071));
    EXPECT_THAT(computed<int64>(std::vector<unsigned int>{1}, ARITHMETIC_SUBTRACT, std::vector<unsigned int>{2}),
                ElementsAre(4294967295));
    constexpr uint64 highest = std::numeric_limits<uint64>::max();
    EXPECT_THAT(computed<int64>(std::vector<uint64>{highest}, ARITHMETIC_ADD, std::vector<uint64>{highest}),
                ElementsAre(-2));
    constexpr int lowest = std::numeric_limits<int>::min();
    EXPECT_THAT(computed<int>(std::vector<int>{lowest, lowest}, ARITHMETIC_DIVIDE, std::vector<int>{-1, 0}),
                ElementsAre(lowest, 0));
    constexpr int64 longLowest = std::numeric_limits<int64>::min();
    EXPECT_THAT(computed<int64>(std::vector<int64>{longLowest}, ARITHMETIC_DIVIDE, std::vector<int64>{-1}),
                ElementsAre(longLowest));
}

TEST(ArithmeticImageProcessingLiteral, comparesMixedTypesByValue)
{
    EXPECT_THAT(computed<unsigned char>(I8{-1, 5, 127}, ARITHMETIC_MAXIMUM, U8{3, 3, 255}), ElementsAre(3, 5, 255));
    EXPECT_THAT(computed<signed char>(U8{200, 3, 3}, ARITHMETIC_MINIMUM, I8{127, -1, 5}), ElementsAre(127, -1, 3));
    EXPECT_THAT(computed<int>(std::vector<unsigned int>{4000000000U}, ARITHMETIC_MINIMUM, std::vector<int>{-1}),
                ElementsAre(-1));
}

TEST(ArithmeticImageProcessingLiteral, dividesFloatsByZeroToZero)
{
    auto const quotients =
        computed<float>(F32{1, -1, 0, NAN, 1, INFINITY, 6}, ARITHMETIC_DIVIDE, F32{0, -0.0F, 0, 0, NAN, 2, 4});
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(quotients[i], 0) << i;
        EXPECT_FALSE(std::signbit(quotients[i])) << i;
    }
    EXPECT_TRUE(std::isnan(quotients[4]));
    EXPECT_EQ(quotients[5], INFINITY);
    EXPECT_EQ(quotients[6], 1.5F);
}

TEST(ArithmeticImageProcessingLiteral, keepsANaNOfTheFirstInput)
{
    for (int const op : {ARITHMETIC_MINIMUM, ARITHMETIC_MAXIMUM}) {
        auto const results = computed<float>(F32{NAN, 5, NAN}, op, F32{1, NAN, NAN});
        EXPECT_TRUE(std::isnan(results[0]));
        EXPECT_EQ(results[1], 5);
        EXPECT_TRUE(std::isnan(results[2]));
    }
}

/// Values at and around the limits of T and of narrower types, and some at random; each beside each other one.
std::unique_ptr<memory::InMemoryImage> interestingImage(VoxelTypes type, bool varyFast)
{
    constexpr unsigned int numOfValues = 40;
    std::unique_ptr<memory::InMemoryImage> image;
    dispatch(RealVoxels(), type, [&]<class T>() {
        using Limits = std::numeric_limits<T>;
        std::mt19937 random(7);
        auto values = randomVoxels<T>(random, numOfValues);
        std::size_t used = 0;
        for (T const value : {Limits::lowest(), Limits::max(), T(0), T(1), T(2), T(3), T(7), T(100), T(127)}) {
            values[used++] = value;
        }
        if constexpr (std::is_floating_point_v<T>) {
            for (T const value : {-T(0), T(-1), Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                                  Limits::denorm_min(), Limits::min(), T(2.5), T(16777216)}) {
                values[used++] = value;
            }
        } else {
            values[used++] = static_cast<T>(Limits::lowest() + 1);
            values[used++] = static_cast<T>(Limits::max() - 1);
            values[used++] = static_cast<T>(Limits::max() / 2 + 1);
            for (int64 const value : {-1LL, -2LL, -128LL, 128LL, 255LL, 32767LL, 32768LL, 46341LL, 65535LL, 65536LL,
                                      -32768LL, 2147483647LL, 2147483648LL, -2147483648LL, 4294967295LL}) {
                values[used++] = static_cast<T>(value);
            }
        }
        std::vector<T> voxels;
        for (std::size_t i = 0; i < numOfValues * numOfValues; ++i) {
            voxels.push_back(values[varyFast ? i % numOfValues : i / numOfValues]);
        }
        image = makeImage({numOfValues, numOfValues, 1, 1, 1}, voxels);
    });
    return image;
}

class ArithmeticOfTypes : public ::testing::TestWithParam<int> {};

TEST_P(ArithmeticOfTypes, equalsTheDefinitionForEveryPair)
{
    int const op = GetParam();
    int const kind = op < ARITHMETIC_MULTIPLY || op == ARITHMETIC_DIVIDE ? 0 : op == ARITHMETIC_MULTIPLY ? 1 : op - 2;
    for (int a = MOX_UINT8; a <= MOX_FLOAT64; ++a) {
        auto const first = interestingImage(static_cast<VoxelTypes>(a), false);
        auto const firstNumbers = numbersOf(*first);
        for (int b = MOX_UINT8; b <= MOX_FLOAT64; ++b) {
            auto const second = interestingImage(static_cast<VoxelTypes>(b), true);
            auto const secondNumbers = numbersOf(*second);
            memory::InMemoryImage output;
            run(*first, op, *second, output);
            auto const type = rules::promotedType(kind, first->getVoxelType(), second->getVoxelType()).value();
            auto const results = numbersOf(output);
            for (std::size_t i = 0; i < results.size(); ++i) {
                ASSERT_EQ(results[i], arithmeticReference(op, firstNumbers[i], secondNumbers[i], type))
                    << firstNumbers[i] << " with " << secondNumbers[i];
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfEveryOperator, ArithmeticOfTypes, ::testing::Range(0, 6));

TEST(ArithmeticImageProcessingRun, worksInPlaceWhereTheTypeStays)
{
    std::mt19937 random(3);
    Sizes const sizes{1030, 31, 3, 2, 2};
    auto const a = randomVoxels<short>(random, sizes.numOfVoxels());
    auto const b = randomVoxels<short>(random, sizes.numOfVoxels());
    std::vector<short> difference(a.size());
    std::vector<short> ofItself(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        difference[i] = static_cast<short>(a[i] - b[i]);
        ofItself[i] = static_cast<short>(a[i] * a[i]);
    }
    auto const first = makeImage(sizes, a);
    auto const second = makeImage(sizes, b);
    run(*first, ARITHMETIC_SUBTRACT, *second, *second);
    EXPECT_EQ(voxelsOf<short>(*second), difference);
    run(*first, ARITHMETIC_MULTIPLY, *first, *first);
    EXPECT_EQ(voxelsOf<short>(*first), ofItself);
}

TEST(ArithmeticImageProcessingRun, givesTheOutputSizesCalibrationAndType)
{
    auto const first = makeImage({3, 2, 2, 2, 2}, std::vector<unsigned char>(48, 7));
    auto const second = makeImage({3, 2, 2, 2, 2}, std::vector<unsigned short>(48, 70));
    for (auto const& image : {first.get(), second.get()}) {
        image->setCalibrationStep(PLANS, 2.5);
    }
    memory::InMemoryImage output;
    run(*first, ARITHMETIC_ADD, *second, output);
    EXPECT_EQ(Sizes::of(output), Sizes::of(*first));
    EXPECT_EQ(output.getVoxelType(), MOX_INT32);
    EXPECT_EQ(output.getCalibrationStep(PLANS), 2.5);
    EXPECT_EQ(voxelsOf<int>(output), std::vector<int>(48, 77));
}

} // namespace

} // namespace mox::testing

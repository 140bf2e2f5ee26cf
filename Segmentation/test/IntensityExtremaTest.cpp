#include <Moxelcore/Segmentation/IntensityExtrema.h>

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <Moxelcore/Core/AlgoInfo.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using analysis::IntensityExtrema;
using ::testing::HasSubstr;

struct Result {
    double minimum, maximum, mean;

    /// NaN equals itself here.
    bool operator==(Result const& other) const
    {
        return minimum == other.minimum && maximum == other.maximum &&
               (mean == other.mean || (std::isnan(mean) && std::isnan(other.mean)));
    }
    friend std::ostream& operator<<(std::ostream& out, Result const& result)
    {
        return out << result.minimum << " to " << result.maximum << ", mean " << result.mean;
    }
};

Result extremaOf(ImageModel const& image)
{
    auto const algorithm = IntensityExtrema::New();
    algorithm->input = &image;
    algorithm->run();
    return {algorithm->outputMinimum, algorithm->outputMaximum, algorithm->outputMean};
}

template <class T>
Result extremaOf(std::vector<T> const& voxels)
{
    return extremaOf(*makeImage(Sizes{static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels));
}

/// From the definition; the sum of floats in long double.
template <class T>
Result reference(std::vector<T> const& voxels)
{
    __extension__ using Wide = __int128;
    T minimum = std::numeric_limits<T>::max();
    T maximum = std::numeric_limits<T>::lowest();
    std::conditional_t<std::is_integral_v<T>, Wide, long double> sum = 0;
    for (T const voxel : voxels) {
        minimum = voxel < minimum ? voxel : minimum;
        maximum = voxel > maximum ? voxel : maximum;
        sum += voxel;
    }
    return {static_cast<double>(minimum), static_cast<double>(maximum),
            static_cast<double>(sum) / static_cast<double>(voxels.size())};
}

TEST(IntensityExtremaContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = IntensityExtrema::New();
    EXPECT_STREQ(algorithm->getInfo()->getName(), "IntensityExtrema");
    ASSERT_EQ(algorithm->getNumOfInputProperties(), 1U);
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 3U);
    EXPECT_EQ(algorithm->getInputProperty(0)->getName(), String("input"));
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("outputMinimum"));
    EXPECT_EQ(algorithm->getOutputProperty(1)->getName(), String("outputMaximum"));
    EXPECT_EQ(algorithm->getOutputProperty(2)->getName(), String("outputMean"));
    EXPECT_EQ(algorithm->input.get(), nullptr);
    EXPECT_EQ(algorithm->outputMinimum, 0.0);
    EXPECT_EQ(algorithm->outputMaximum, 0.0);
    EXPECT_EQ(algorithm->outputMean, 0.0);
    auto const influence = algorithm->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)), 0U);
    }
}

TEST(IntensityExtremaContract, refusesNullAndComplexImages)
{
    auto const refusal = [](ImageModel const* image) -> std::string {
        auto const algorithm = IntensityExtrema::New();
        algorithm->input = image;
        try {
            algorithm->run();
        } catch (RuleException const& exception) {
            return exception.getInfo().c_str();
        }
        return "nothing thrown";
    };
    memory::InMemoryImage complex;
    complex.allocate(MOX_COMPLEX_FLOAT64, 1, 1, 1, 1, 1);
    EXPECT_THAT(refusal(nullptr), HasSubstr("#1 Error : Parameter value cannot be null \n"));
    EXPECT_THAT(refusal(&complex), HasSubstr("Current voxel type is complex float64 \n"));
    EXPECT_THAT(refusal(&complex), HasSubstr("#2 From Rule error in property input \n"));
}

TEST(IntensityExtremaLiteral, ofOneVoxelIsThatVoxel)
{
    EXPECT_EQ(extremaOf<short>({-7}), (Result{-7, -7, -7}));
    EXPECT_EQ(extremaOf<double>({0.1}), (Result{0.1, 0.1, 0.1}));
}

TEST(IntensityExtremaLiteral, ofAllLowestIsTheLowest)
{
    EXPECT_EQ(extremaOf(std::vector<signed char>(50, -128)), (Result{-128, -128, -128}));
    EXPECT_EQ(extremaOf(std::vector<short>(50, -32768)), (Result{-32768, -32768, -32768}));
}

TEST(IntensityExtremaLiteral, nanIsNoExtremumAndSpoilsTheMean)
{
    for (std::size_t place = 0; place < 40; ++place) {
        std::vector<float> voxels(40, 2);
        voxels[(place + 1) % 40] = -3;
        voxels[(place + 2) % 40] = 9;
        voxels[place] = NAN;
        EXPECT_EQ(extremaOf(voxels), (Result{-3, 9, NAN})) << place;
        EXPECT_EQ(extremaOf(std::vector<double>(voxels.begin(), voxels.end())), (Result{-3, 9, NAN})) << place;
    }
    constexpr double largest = std::numeric_limits<double>::max();
    EXPECT_EQ(extremaOf<double>({NAN, NAN}), (Result{largest, -largest, NAN}));
}

TEST(IntensityExtremaLiteral, infinitiesDoNotMoveTheStartOfTheSearch)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(extremaOf(std::vector<float>(19, infinity)), (Result{largest, infinity, infinity}));
    EXPECT_EQ(extremaOf(std::vector<float>(19, -infinity)), (Result{-infinity, -largest, -infinity}));
    EXPECT_EQ(extremaOf<float>({infinity, -infinity, 1}), (Result{-infinity, infinity, NAN}));
}

TEST(IntensityExtremaLiteral, ofNoVoxelsIsTheStart)
{
    for (Sizes const& sizes : {Sizes{0, 2, 2, 1, 1}, Sizes{2, 0, 2, 1, 1}, Sizes{2, 2, 2, 1, 0}}) {
        EXPECT_EQ(extremaOf(*makeImage(sizes, std::vector<unsigned char>())), (Result{255, 0, NAN}));
        EXPECT_EQ(extremaOf(*makeImage(sizes, std::vector<signed char>())), (Result{127, -128, NAN}));
    }
}

TEST(IntensityExtremaLiteral, sumsOf64BitsDoNotOverflow)
{
    constexpr int64 lowest = std::numeric_limits<int64>::min();
    constexpr uint64 highest = std::numeric_limits<uint64>::max();
    EXPECT_EQ(extremaOf(std::vector<int64>(5, lowest)), (Result{-0x1p63, -0x1p63, -0x1p63}));
    EXPECT_EQ(extremaOf(std::vector<uint64>(5, highest)), (Result{0x1p64, 0x1p64, 0x1p64}));
    EXPECT_EQ(extremaOf<int64>({lowest, std::numeric_limits<int64>::max(), 4}).mean, 1.0);
}

template <class T>
class IntensityExtremaTyped : public ::testing::Test {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(IntensityExtremaTyped, RealTypes);

/// Voxels whose sum is exact in every type and order.
template <class T>
std::vector<T> tameVoxels(std::mt19937& random, std::size_t count)
{
    auto voxels = randomVoxels<T>(random, count);
    if constexpr (std::is_floating_point_v<T>) {
        for (T& voxel : voxels) {
            voxel = std::isfinite(voxel) ? std::round(voxel) : T(17);
        }
    }
    return voxels;
}

TYPED_TEST(IntensityExtremaTyped, equalsTheDefinitionForEveryLength)
{
    std::mt19937 random(1);
    for (std::size_t count = 1; count < 200; ++count) {
        auto const voxels = tameVoxels<TypeParam>(random, count);
        ASSERT_EQ(extremaOf(voxels), reference(voxels)) << count;
    }
}

TYPED_TEST(IntensityExtremaTyped, equalsTheDefinitionForEveryShape)
{
    std::mt19937 random(2);
    for (int round = 0; round < 40; ++round) {
        Sizes const sizes = round == 0 ? Sizes{70001, 3, 1, 1, 1} : randomSizes(random, {67, 40, 40, 3, 3});
        auto const voxels = tameVoxels<TypeParam>(random, sizes.numOfVoxels());
        ASSERT_EQ(extremaOf(*makeImage(sizes, voxels)), reference(voxels));
    }
}

TYPED_TEST(IntensityExtremaTyped, takesLongRowsOfTheLargestVoxels)
{
    constexpr TypeParam largest = std::is_integral_v<TypeParam> ? std::numeric_limits<TypeParam>::max() : 1 << 20;
    auto const voxels = std::vector<TypeParam>(300000, largest);
    EXPECT_EQ(extremaOf(voxels), reference(voxels));
    auto const image = makeImage({1000, 300, 1, 1, 1}, voxels);
    EXPECT_EQ(extremaOf(*image), reference(voxels));
}

TEST(IntensityExtremaRun, hasTheSameMeanOnAnyNumberOfThreadsAndForAnyImageClass)
{
    std::mt19937 random(3);
    for (unsigned int const columns : {1000U, 1001U, 3U}) {
        Sizes const sizes{columns, 300000 / columns, 2, 2, 1};
        std::vector<float> voxels(sizes.numOfVoxels());
        for (float& voxel : voxels) { // of many magnitudes, so that each order of sums rounds in its own way
            voxel = std::ldexp(static_cast<float>(random() % 1000), static_cast<int>(random() % 60));
        }
        auto const image = makeImage(sizes, voxels);
        Result const expected = extremaOf(*image);
        EXPECT_NEAR(expected.mean / reference(voxels).mean, 1, 1e-12);
        TestImage own;
        fill(own, sizes, voxels);
        for (std::size_t const threads : {1U, 2U, 3U, 8U}) {
            tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
            EXPECT_EQ(extremaOf(*image), expected) << threads;
            EXPECT_EQ(extremaOf(own), expected) << threads;
        }
    }
}

TEST(IntensityExtremaRun, keepsTheResultsOfTheRunBeforeWhenItFailsOrIsCancelled)
{
    TestImage input;
    fill(input, {4, 4, 1, 3, 1}, std::vector<short>(48, 5));
    auto const algorithm = IntensityExtrema::New();
    algorithm->input = &input;
    algorithm->run();
    fill(input, {4, 4, 1, 3, 1}, std::vector<short>(48, 6));
    input.failAt(7, TestImage::Fault::returnsFalse);
    EXPECT_THROW(algorithm->run(), UnexpectedError);
    EXPECT_EQ(algorithm->outputMean, 5.0);
    input.beforeRowOperation = [&] { algorithm->cancelExecution(); };
    algorithm->run();
    EXPECT_EQ(algorithm->outputMean, 5.0);
    input.beforeRowOperation = [] {};
    RecordingInteraction recording;
    algorithm->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
    EXPECT_EQ(algorithm->outputMean, 6.0);
    EXPECT_EQ(algorithm->outputMinimum, 6.0);
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/Segmentation/Threshold.h>

#include <gmock/gmock.h>

#include <Moxelcore/Core/AlgoInfo.h>

#include <limits>

#include "Core/private/Helper/raise.h"
#include "testing/Images.h"
#include "testing/TestImage.h"
#include "testing/references/threshold.h"

namespace mox::testing {

namespace {

using segmentation::Threshold;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

void run(ImageModel const& input, ImageModel& output, double low, double high)
{
    auto const algorithm = Threshold::New();
    algorithm->input = &input;
    algorithm->lowLevel = low;
    algorithm->highLevel = high;
    algorithm->output = &output;
    algorithm->run();
}

template <class In, class Out = unsigned char>
std::vector<Out> threshold(std::vector<In> const& voxels, double low, double high)
{
    auto const input = makeImage(Sizes{static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    memory::InMemoryImage output;
    output.allocate(voxelTypeOf<Out>, 1, 1, 1, 1, 1);
    run(*input, output, low, high);
    return voxelsOf<Out>(output);
}

std::string refusal(Threshold& algorithm)
{
    try {
        algorithm.run();
    } catch (RuleException const& exception) {
        return exception.getInfo().c_str();
    }
    return "nothing thrown";
}

// ---- contract

TEST(ThresholdContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = Threshold::New();
    EXPECT_STREQ(algorithm->getInfo()->getName(), "Threshold");
    EXPECT_STREQ(algorithm->getInfo()->getLibName(), "Moxelcore");
    ASSERT_EQ(algorithm->getNumOfInputProperties(), 3U);
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 1U);
    EXPECT_EQ(algorithm->getInputProperty(0)->getName(), String("input"));
    EXPECT_EQ(algorithm->getInputProperty(1)->getName(), String("lowLevel"));
    EXPECT_EQ(algorithm->getInputProperty(2)->getName(), String("highLevel"));
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("output"));
    EXPECT_EQ(algorithm->input.get(), nullptr);
    EXPECT_EQ(algorithm->lowLevel, 0.0);
    EXPECT_EQ(algorithm->highLevel, 255.0);
    EXPECT_EQ(algorithm->output.get(), nullptr);
}

TEST(ThresholdContract, readsNothingBeyondAVoxel)
{
    auto const influence = Threshold::New()->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)), 0U);
    }
}

TEST(ThresholdContract, runsAtTheScalarLevelOnly)
{
    auto const algorithm = Threshold::New();
    EXPECT_EQ(algorithm->getMostPerformantAvailableOptimLevel(), OptimLevelType::SCALAR);
    EXPECT_FALSE(algorithm->isOptimLevelSupported(OptimLevelType::VEC_SSE));
}

class ThresholdRefusal : public ::testing::Test {
protected:
    ThresholdRefusal()
    {
        fill(input, {2, 1, 1, 1, 1}, std::vector<short>{1, 2});
        fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
        algorithm->input = &input;
        algorithm->output = &output;
    }

    void expectRefusal(std::string const& property, std::string const& message)
    {
        std::string const text = refusal(*algorithm);
        EXPECT_THAT(text, HasSubstr("#1 Error : " + message + " \n"));
        EXPECT_THAT(text, HasSubstr("#2 From Rule error in property " + property +
                                    " \n"
                                    "#3 From Threshold of Moxelcore library \n"));
        EXPECT_FALSE(algorithm->input.isLocked());
        EXPECT_FALSE(algorithm->running());
    }

    memory::InMemoryImage input;
    TestImage output;
    boost::shared_ptr<Threshold> algorithm = Threshold::New();
};

TEST_F(ThresholdRefusal, ofNullImages)
{
    algorithm->output = nullptr;
    expectRefusal("output", "Parameter value cannot be null");
    algorithm->input = nullptr;
    expectRefusal("input", "Parameter value cannot be null");
}

TEST_F(ThresholdRefusal, ofComplexInputs)
{
    input.allocate(MOX_COMPLEX_FLOAT32, 1, 1, 1, 1, 1);
    expectRefusal("input", "Voxel type must be one of the following types : uint8, uint16, uint32, uint64, int8, "
                           "int16, int32, int64, float32, float64. Current voxel type is complex float32");
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
}

TEST_F(ThresholdRefusal, ofSeveralSpectralChannels)
{
    input.allocate(MOX_UINT8, 1, 1, 1, 1, 3);
    expectRefusal("input", "component 4 must have a size of 1. Current size is 3");
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
}

TEST_F(ThresholdRefusal, ofWideOutputsAfterTheyWereResized)
{
    output.allocate(MOX_FLOAT32, 1, 1, 1, 1, 1);
    expectRefusal("output", "Voxel type must be one of the following types : uint8, uint16, int8, int16. Current voxel "
                            "type is float32");
    EXPECT_EQ(output.getSize(COLUMNS), 2U);
}

TEST_F(ThresholdRefusal, ofOutputsThatCannotChange)
{
    output.allocates = false;
    expectRefusal("output", "Image cannot be resized");
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
    output.allocates = true;
    output.interprets = false;
    expectRefusal("output", "Image cannot be re-interpreted from value to binary");
    output.interprets = true;
    EXPECT_EQ(refusal(*algorithm), "nothing thrown");
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(1, 1));
}

// ---- literal

TEST(ThresholdLiteral, bothEndsAreInside)
{
    EXPECT_THAT(threshold<unsigned char>({0, 1, 2, 3}, 1, 2), ElementsAre(0, 1, 1, 0));
}

TEST(ThresholdLiteral, equalEndsSelectOneValue)
{
    EXPECT_THAT(threshold<short>({-2, -1, 0, 1}, -1, -1), ElementsAre(0, 1, 0, 0));
    EXPECT_THAT(threshold<float>({0.5F, 0.25F}, 0.25, 0.25), ElementsAre(0, 1));
}

TEST(ThresholdLiteral, nanVoxelsGiveOne)
{
    EXPECT_THAT(threshold<float>({NAN, 1, 300}, 0, 255), ElementsAre(1, 1, 0));
    EXPECT_THAT(threshold<double>({nan, 1, 300}, 500, 400), ElementsAre(1, 0, 0));
}

TEST(ThresholdLiteral, nanEndsBoundNothing)
{
    EXPECT_THAT(threshold<int>({-5, 5, 50}, nan, 5), ElementsAre(1, 1, 0));
    EXPECT_THAT(threshold<int>({-5, 5, 50}, 5, nan), ElementsAre(0, 1, 1));
    EXPECT_THAT(threshold<double>({-infinity, 5, infinity}, nan, nan), ElementsAre(1, 1, 1));
}

TEST(ThresholdLiteral, emptyIntervalsGiveZero)
{
    EXPECT_THAT(threshold<unsigned char>({0, 128, 255}, 200, 100), ElementsAre(0, 0, 0));
    EXPECT_THAT(threshold<unsigned char>({0, 128, 255}, 0.25, 0.75), ElementsAre(0, 0, 0));
    EXPECT_THAT(threshold<unsigned char>({0, 128, 255}, infinity, infinity), ElementsAre(0, 0, 0));
    EXPECT_THAT(threshold<unsigned char>({0, 128, 255}, -infinity, -1), ElementsAre(0, 0, 0));
}

TEST(ThresholdLiteral, wholeIntegersBeyond53BitsCountAsTheirNearestDouble)
{
    constexpr uint64 power = 1ULL << 53;
    constexpr double next = 9007199254740994.0; // 2^53 + 2
    // 2^53 + 1 lies halfway and rounds to even, 2^53; 2^53 + 3 rounds up to 2^53 + 4.
    EXPECT_THAT(threshold<uint64>({power, power + 1, power + 2, power + 3}, next, next), ElementsAre(0, 0, 1, 0));
}

// ---- typed

template <class T>
std::vector<double> interestingLevels()
{
    using Limits = std::numeric_limits<T>;
    auto const lowest = static_cast<double>(Limits::lowest());
    auto const highest = static_cast<double>(Limits::max());
    return {lowest,
            std::nextafter(lowest, -infinity),
            std::nextafter(lowest, infinity),
            highest,
            std::nextafter(highest, -infinity),
            std::nextafter(highest, infinity),
            -1,
            -0.5,
            -0.0,
            0,
            0.5,
            1,
            100.25,
            127,
            128,
            255,
            1e300,
            -1e300,
            1e-300,
            infinity,
            -infinity,
            nan};
}

template <class T>
class ThresholdTyped : public ::testing::Test {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(ThresholdTyped, RealTypes);

TYPED_TEST(ThresholdTyped, equalsTheDefinitionForInterestingLevels)
{
    std::mt19937 random(1);
    auto voxels = randomVoxels<TypeParam>(random, 500);
    for (double const level : interestingLevels<TypeParam>()) { // voxels around the levels, where the type holds them
        for (double const near : {level - 1, std::nextafter(level, -infinity), level, level + 1}) {
            if (near >= -1e9 && near <= 1e9) {
                voxels.push_back(static_cast<TypeParam>(static_cast<int64>(near)));
            }
        }
    }
    for (double const low : interestingLevels<TypeParam>()) {
        for (double const high : interestingLevels<TypeParam>()) {
            ASSERT_EQ((threshold<TypeParam>(voxels, low, high)),
                      (thresholdReference<TypeParam, unsigned char>(voxels, low, high)))
                << low << " to " << high;
        }
    }
}

TYPED_TEST(ThresholdTyped, equalsTheDefinitionForEveryOutputTypeAndShape)
{
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        Sizes const sizes = randomSizes(random, {67, 23, 21, 3, 1});
        auto const voxels = randomVoxels<TypeParam>(random, sizes.numOfVoxels());
        auto const input = makeImage(sizes, voxels);
        double const low = std::uniform_real_distribution<double>(-150, 150)(random);
        double const high = low + static_cast<double>(random() % 100);
        dispatch(NarrowVoxels(), voxelTypesOf(NarrowVoxels())[static_cast<std::size_t>(round) % 4], [&]<class Out>() {
            memory::InMemoryImage output;
            output.allocate(voxelTypeOf<Out>, 1, 1, 1, 1, 1);
            run(*input, output, low, high);
            ASSERT_EQ(Sizes::of(output), sizes);
            ASSERT_EQ(voxelsOf<Out>(output), (thresholdReference<TypeParam, Out>(voxels, low, high)));
        });
    }
}

/// All values of a type of 8 or 16 bits, over all pairs of levels of a coarse grid and around its ends.
template <class T>
void compareAllValues()
{
    std::vector<T> values;
    for (int v = std::numeric_limits<T>::min(); v <= std::numeric_limits<T>::max(); ++v) {
        values.push_back(static_cast<T>(v));
    }
    std::vector<double> levels;
    for (int i = -3; i <= 3; ++i) {
        for (double const around : {static_cast<double>(std::numeric_limits<T>::min()), 0.0,
                                    static_cast<double>(std::numeric_limits<T>::max())}) {
            levels.push_back(around + i * 0.5);
        }
    }
    for (double const low : levels) {
        for (double const high : levels) {
            ASSERT_EQ((threshold<T>(values, low, high)), (thresholdReference<T, unsigned char>(values, low, high)));
        }
    }
}

TEST(ThresholdTyped, equalsTheDefinitionForAllSmallIntegers)
{
    compareAllValues<unsigned char>();
    compareAllValues<signed char>();
    compareAllValues<unsigned short>();
    compareAllValues<short>();
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/Miscellaneous/BorderConditionExtrapole.h>

#include <gmock/gmock.h>

#include <Moxelcore/Core/AlgoInfo.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/Refusal.h"
#include "testing/RuleImages.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using miscellaneous::BorderConditionExtrapole;
using miscellaneous::BorderConditionType;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

void run(ImageModel const& input, ImageModel& output, int condition, double zoomFactor, double value = 0)
{
    auto const algorithm = BorderConditionExtrapole::New();
    algorithm->input = &input;
    algorithm->bctype = condition;
    algorithm->value = value;
    algorithm->zoomFactor = zoomFactor;
    algorithm->output = &output;
    algorithm->run();
}

template <class T>
std::vector<T> extrapolated(Sizes const& sizes, std::vector<T> const& voxels, int condition, double zoomFactor,
                            double value = 0)
{
    auto const input = makeImage(sizes, voxels);
    memory::InMemoryImage output;
    run(*input, output, condition, zoomFactor, value);
    return voxelsOf<T>(output);
}

// ---- contract

TEST(BorderConditionExtrapoleContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = BorderConditionExtrapole::New();
    EXPECT_STREQ(algorithm->getInfo()->getName(), "BorderConditionExtrapole");
    ASSERT_EQ(algorithm->getNumOfInputProperties(), 4U);
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 1U);
    EXPECT_EQ(algorithm->getInputProperty(0)->getName(), String("input"));
    EXPECT_EQ(algorithm->getInputProperty(1)->getName(), String("bctype"));
    EXPECT_EQ(algorithm->getInputProperty(2)->getName(), String("value"));
    EXPECT_EQ(algorithm->getInputProperty(3)->getName(), String("zoomFactor"));
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("output"));
    EXPECT_EQ(algorithm->bctype, 0);
    EXPECT_EQ(algorithm->value, 0.0);
    EXPECT_EQ(algorithm->zoomFactor, 0.0);
}

TEST(BorderConditionExtrapoleContract, hasNoBorderInfluence)
{
    auto const influence = BorderConditionExtrapole::New()->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)), 0U);
    }
}

class BorderConditionExtrapoleRefusal : public ::testing::Test {
protected:
    BorderConditionExtrapoleRefusal()
    {
        fill(input, {4, 4, 1, 1, 1}, std::vector<short>(16, 3));
        fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
        algorithm->input = &input;
        algorithm->zoomFactor = 2;
        algorithm->output = &output;
    }

    void expectRefusal(std::string const& message)
    {
        EXPECT_THAT(refusalOf(*algorithm), HasSubstr("#1 Error : " + message + " \n"));
        EXPECT_FALSE(algorithm->input.isLocked());
        EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
    }

    memory::InMemoryImage input;
    TestImage output;
    boost::shared_ptr<BorderConditionExtrapole> algorithm = BorderConditionExtrapole::New();
};

TEST_F(BorderConditionExtrapoleRefusal, ofNullImages)
{
    algorithm->output = nullptr;
    expectRefusal("Parameter value cannot be null");
    algorithm->output = &output;
    algorithm->input = nullptr;
    expectRefusal("Parameter value cannot be null");
}

TEST_F(BorderConditionExtrapoleRefusal, ofAComplexInput)
{
    input.allocate(MOX_COMPLEX_FLOAT64, 1, 1, 1, 1, 1);
    EXPECT_THAT(refusalOf(*algorithm), HasSubstr("Current voxel type is complex float64"));
}

TEST_F(BorderConditionExtrapoleRefusal, ofAnUnknownCondition)
{
    for (int const condition : {-1, 4, std::numeric_limits<int>::max()}) {
        algorithm->bctype = condition;
        EXPECT_THROW(algorithm->run(), InvalidCall);
        expectRefusal("The provided bctype is unknow (value=" + std::to_string(condition) + ")");
    }
}

TEST_F(BorderConditionExtrapoleRefusal, ofAnOutputThatCannotBeResized)
{
    output.allocates = false;
    EXPECT_THROW(algorithm->run(), RuleException);
    expectRefusal("Image cannot be resized");
}

TEST_F(BorderConditionExtrapoleRefusal, ofAnOutputBeyondAllCoordinates)
{
    for (double const zoomFactor : {1e9, 1e300, infinity}) {
        algorithm->zoomFactor = zoomFactor;
        expectRefusal("Image cannot be resized");
    }
}

TEST_F(BorderConditionExtrapoleRefusal, ofTheInputAsOutputUnlessZoomedByOne)
{
    algorithm->output = &input;
    for (double const zoomFactor : {2.0, 0.99, 0.0}) { // 0.99 would give the same sizes
        algorithm->zoomFactor = zoomFactor;
        expectRefusal("Image cannot be resized");
        EXPECT_EQ(voxelsOf<short>(input), std::vector<short>(16, 3));
    }
    algorithm->zoomFactor = 1;
    algorithm->run();
    EXPECT_EQ(voxelsOf<short>(input), std::vector<short>(16, 3));
}

// ---- literal

TEST(BorderConditionExtrapole, showsAMarginOfTheFixedValue)
{
    EXPECT_THAT(extrapolated<short>({2, 2, 1, 1, 1}, {1, 2, 3, 4}, BorderConditionType::FIXED, 2, 9),
                ElementsAre(9, 9, 9, 9, //
                            9, 1, 2, 9, //
                            9, 3, 4, 9, //
                            9, 9, 9, 9));
    std::vector<short> voxels(16);
    std::iota(voxels.begin(), voxels.end(), short{10});
    EXPECT_THAT(extrapolated<short>({4, 4, 1, 1, 1}, voxels, BorderConditionType::FIXED, 2, 9),
                ElementsAre(9, 9, 9, 9, 9, 9, 9, 9,     //
                            9, 9, 9, 9, 9, 9, 9, 9,     //
                            9, 9, 10, 11, 12, 13, 9, 9, //
                            9, 9, 14, 15, 16, 17, 9, 9, //
                            9, 9, 18, 19, 20, 21, 9, 9, //
                            9, 9, 22, 23, 24, 25, 9, 9, //
                            9, 9, 9, 9, 9, 9, 9, 9,     //
                            9, 9, 9, 9, 9, 9, 9, 9));
}

TEST(BorderConditionExtrapole, reflectsOrContinuesTheImage)
{
    Sizes const row{4, 1, 1, 1, 1};
    std::vector<short> const voxels = {1, 2, 3, 4};
    EXPECT_THAT(extrapolated(row, voxels, BorderConditionType::MIRROR, 2),
                ElementsAre(2, 1, 1, 2, 3, 4, 4, 3, 2, 1, 1, 2, 3, 4, 4, 3)); // two rows, both from row 0
    EXPECT_THAT(extrapolated(row, voxels, BorderConditionType::CONTINUE, 2),
                ElementsAre(1, 1, 1, 2, 3, 4, 4, 4, 1, 1, 1, 2, 3, 4, 4, 4));
}

TEST(BorderConditionExtrapole, makesAnOddMarginWiderAtTheEnd)
{
    EXPECT_THAT(extrapolated<short>({5, 1, 1, 1, 1}, {1, 2, 3, 4, 5}, BorderConditionType::FIXED, 1.5, 9),
                ElementsAre(9, 1, 2, 3, 4, 5, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9));
}

TEST(BorderConditionExtrapole, showsTheCentreBelowOne)
{
    std::vector<short> voxels(16);
    std::iota(voxels.begin(), voxels.end(), short{0});
    EXPECT_THAT(extrapolated({4, 4, 1, 1, 1}, voxels, BorderConditionType::MIRROR, 0.5), ElementsAre(5, 6, 9, 10));
}

TEST(BorderConditionExtrapole, roundsSizesUpAsDoubles)
{
    auto const input = makeImage({100, 10, 1, 1, 1}, std::vector<unsigned char>(1000));
    memory::InMemoryImage output;
    run(*input, output, BorderConditionType::FIXED, 1.1);
    EXPECT_EQ(Sizes::of(output), (Sizes{111, 11, 1, 1, 1})); // 100 * 1.1 is a little above 110
}

TEST(BorderConditionExtrapole, hasNoVoxelsWithoutAZoom)
{
    for (double const zoomFactor : {0.0, -1.0, -infinity, nan}) {
        auto const input = makeImage({3, 2, 1, 1, 1}, std::vector<short>(6));
        memory::InMemoryImage output;
        run(*input, output, BorderConditionType::MIRROR, zoomFactor);
        EXPECT_EQ(Sizes::of(output), (Sizes{0, 0, 1, 1, 1}));
    }
}

TEST(BorderConditionExtrapole, holdsTheValueWithinTheVoxelType)
{
    auto const margin = [](auto voxel, double value) {
        using T = decltype(voxel);
        return extrapolated<T>({1, 1, 1, 1, 1}, {voxel}, BorderConditionType::FIXED, 3, value)[0];
    };
    EXPECT_EQ(margin(short{1}, -2.9), -2);
    EXPECT_EQ(margin(static_cast<unsigned char>(1), 300), 255);
    EXPECT_EQ(margin(static_cast<unsigned char>(1), -1), 0);
    EXPECT_EQ(margin(static_cast<signed char>(1), -infinity), -128);
    EXPECT_EQ(margin(uint64{1}, 1e30), std::numeric_limits<uint64>::max());
    EXPECT_EQ(margin(int64{1}, 9223372036854775807.0), std::numeric_limits<int64>::max());
    EXPECT_EQ(margin(int64{1}, -1e30), std::numeric_limits<int64>::min());
    EXPECT_EQ(margin(int64{1}, -9223372036854774784.0), -9223372036854774784LL);
    EXPECT_EQ(margin(7, nan), 0);
    EXPECT_EQ(margin(1.0F, infinity), std::numeric_limits<float>::infinity());
    EXPECT_EQ(margin(1.0F, -0.5), -0.5F);
    EXPECT_TRUE(std::isnan(margin(1.0, nan)));
}

// ---- typed

/// The coordinate that a condition reads for one outside, -1 for the fixed value.
int inside(int x, int size, int condition)
{
    if (x >= 0 && x < size) {
        return x;
    }
    if (condition == BorderConditionType::FIXED) {
        return -1;
    }
    if (condition == BorderConditionType::CONTINUE) {
        return std::clamp(x, 0, size - 1);
    }
    int const period = ((x % (2 * size)) + 2 * size) % (2 * size);
    return period < size ? period : 2 * size - 1 - period;
}

/// The edge row is not repeated along the direction of the rows.
int rowInside(int y, int size, int condition)
{
    if (condition != BorderConditionType::DIRECTIONAL_MIRROR) {
        return inside(y, size, condition);
    }
    int const period = 2 * (size - 1);
    int const phase = ((y % period) + period) % period;
    return std::min(phase, period - phase);
}

/// From the definition.
template <class T>
std::vector<T> reference(Sizes const& sizes, std::vector<T> const& voxels, int condition, double zoomFactor)
{
    int const width = static_cast<int>(sizes.columns);
    int const height = static_cast<int>(sizes.rows);
    int const newWidth = static_cast<int>(std::ceil(width * zoomFactor));
    int const newHeight = static_cast<int>(std::ceil(height * zoomFactor));
    int const left = static_cast<int>((1 - zoomFactor) * 0.5 * width);
    int const top = static_cast<int>((1 - zoomFactor) * 0.5 * height);
    int const planes = static_cast<int>(sizes.plans * sizes.timeSeries * sizes.spectralSeries);
    std::vector<T> result;
    for (int plane = 0; plane < planes; ++plane) {
        for (int y = 0; y < newHeight; ++y) {
            for (int x = 0; x < newWidth; ++x) {
                int const column = inside(left + x, width, condition);
                int const row = rowInside(top + y, height, condition);
                result.push_back(column < 0 || row < 0
                                     ? T(3)
                                     : voxels[static_cast<std::size_t>((plane * height + row) * width + column)]);
            }
        }
    }
    return result;
}

template <class T>
class BorderConditionExtrapoleOfType : public ::testing::Test {
};

using Types = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                               float, double>;
TYPED_TEST_SUITE(BorderConditionExtrapoleOfType, Types);

TYPED_TEST(BorderConditionExtrapoleOfType, equalsItsDefinition)
{
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        Sizes sizes = randomSizes(random, {12, 9, 3, 2, 2});
        int const condition = static_cast<int>(random() % 4);
        if (condition == BorderConditionType::DIRECTIONAL_MIRROR) {
            sizes.rows = std::max(sizes.rows, 2U); // one row has a test of its own
        }
        std::vector<TypeParam> voxels(sizes.numOfVoxels());
        std::iota(voxels.begin(), voxels.end(), TypeParam(4));
        double const zooms[] = {1, 0.3, 0.75, 1.5, 2, 4.2};
        double const zoomFactor = zooms[round % 6];
        TestImage input;
        TestImage output;
        input.givesPointers = round % 2 == 0;
        output.givesPointers = round % 3 == 0;
        fill(input, sizes, voxels);
        run(input, output, condition, zoomFactor, 3);
        ASSERT_EQ(output.getVoxelType(), voxelTypeOf<TypeParam>);
        ASSERT_EQ(voxelsOf<TypeParam>(output), reference(sizes, voxels, condition, zoomFactor));
    }
}

TEST(BorderConditionExtrapole, readsTheNearestVoxelWhereReflectionsAlongTheRowsLeadNowhere)
{
    EXPECT_THAT(extrapolated<short>({3, 1, 1, 1, 1}, {1, 2, 3}, BorderConditionType::DIRECTIONAL_MIRROR, 3),
                ElementsAre(1, 1, 1, 1, 2, 3, 3, 3, 3, //
                            3, 2, 1, 1, 2, 3, 3, 2, 1, //
                            1, 1, 1, 1, 2, 3, 3, 3, 3));
}

// ---- run

TEST(BorderConditionExtrapoleRun, copiesWithAZoomOfOneAndGivesTheOutputTheCalibration)
{
    std::mt19937 random(3);
    Sizes const sizes{7, 5, 3, 2, 2};
    auto const voxels = randomVoxels<unsigned short>(random, sizes.numOfVoxels());
    auto const input = makeImage(sizes, voxels);
    calibrate(*input);
    for (int condition = 0; condition < 4; ++condition) {
        memory::InMemoryImage output;
        run(*input, output, condition, 1);
        EXPECT_EQ(voxelsOf<unsigned short>(output), voxels);
        expectSameCalibration(output, *input);
    }
}

TEST(BorderConditionExtrapoleRun, takesEmptyImages)
{
    for (Sizes const& sizes : {Sizes{0, 3, 1, 1, 1}, Sizes{3, 0, 1, 1, 1}, Sizes{3, 3, 0, 1, 1}, Sizes()}) {
        auto const input = makeImage(sizes, std::vector<float>());
        for (double const zoomFactor : {2.0, infinity}) {
            if (zoomFactor == infinity && (sizes.columns > 0 || sizes.rows > 0)) {
                continue;
            }
            memory::InMemoryImage output;
            run(*input, output, BorderConditionType::MIRROR, zoomFactor);
            EXPECT_EQ(Sizes::of(output),
                      (Sizes{2 * sizes.columns, 2 * sizes.rows, sizes.plans, sizes.timeSeries, sizes.spectralSeries}));
        }
    }
}

TEST(BorderConditionExtrapoleRun, reportsProgressUpToTheEnd)
{
    auto const input = makeImage({20, 10, 2, 2, 2}, std::vector<unsigned char>(1600));
    memory::InMemoryImage output;
    RecordingInteraction recording;
    auto const algorithm = BorderConditionExtrapole::New();
    algorithm->input = input.get();
    algorithm->zoomFactor = 2;
    algorithm->output = &output;
    algorithm->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
}

TEST(BorderConditionExtrapoleRun, stopsWhenCancelledAndCanBeRunAgain)
{
    TestImage input;
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
    fill(input, {4, 80, 1, 10, 1}, std::vector<unsigned char>(3200, 5));
    memory::InMemoryImage output;
    auto const algorithm = BorderConditionExtrapole::New();
    algorithm->input = &input;
    algorithm->zoomFactor = 1;
    algorithm->output = &output;
    RecordingInteraction recording;
    recording.cancelAtPoll = 2;
    algorithm->run(&recording);
    EXPECT_LT(recording.notified.back(), 100.0);
    input.beforeRowOperation = [] {};
    algorithm->run();
    EXPECT_THAT(voxelsOf<unsigned char>(output), Each(5));
}

TEST(BorderConditionExtrapoleRun, failsWithARowOfItsImages)
{
    for (bool const failsOnOutput : {false, true}) {
        TestImage input;
        TestImage output;
        fill(input, {4, 4, 1, 1, 1}, std::vector<unsigned char>(16, 5));
        auto const algorithm = BorderConditionExtrapole::New();
        algorithm->input = &input;
        algorithm->zoomFactor = 1;
        algorithm->output = &output;
        (failsOnOutput ? output : input).failAt(3, TestImage::Fault::returnsFalse);
        EXPECT_THROW(algorithm->run(), UnexpectedError);
        algorithm->run();
        EXPECT_THAT(voxelsOf<unsigned char>(output), Each(5));
    }
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/PointOperations/Anamorphosis.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "PointOperations/private/AnamorphosisScalarGeneric.h"
#include "testing/AlgorithmTests.h"
#include "testing/Images.h"

namespace mox::testing {

namespace {

using point_operations::Anamorphosis;
using point_operations::AnamorphosisTable;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct Parameters {
    double begin = 0;
    double end = 255;
    double step = 1;
    std::vector<double> lut = {};
    double low = 0;
    double high = 0;
};

void give(Anamorphosis& algorithm, Parameters const& parameters)
{
    Vector<double> lut;
    for (double const entry : parameters.lut) {
        lut.push_back(entry);
    }
    algorithm.inputRange = math::Vector2<double>(parameters.begin, parameters.end);
    algorithm.step = parameters.step;
    algorithm.lut = lut;
    algorithm.lowIntensity = parameters.low;
    algorithm.highIntensity = parameters.high;
}

template <class T>
std::vector<T> remapped(std::vector<T> const& voxels, Parameters const& parameters)
{
    auto const image = makeImage(Sizes{static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    auto const algorithm = Anamorphosis::New();
    algorithm->input = image.get();
    algorithm->output = image.get();
    give(*algorithm, parameters);
    algorithm->run();
    return voxelsOf<T>(*image);
}

std::string refusalOf(Parameters const& parameters)
{
    auto const image = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned char>{9});
    auto const algorithm = Anamorphosis::New();
    algorithm->input = image.get();
    algorithm->output = image.get();
    give(*algorithm, parameters);
    auto const text = refusal(*algorithm);
    EXPECT_FALSE(algorithm->lut.isLocked());
    EXPECT_TRUE(text == "nothing thrown" || voxelsOf<unsigned char>(*image)[0] == 9);
    return text;
}

std::vector<double> ramp(std::size_t count, double first = 0, double step = 1)
{
    std::vector<double> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = first + step * static_cast<double>(i);
    }
    return values;
}

TEST(AnamorphosisContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = Anamorphosis::New();
    EXPECT_THAT(propertyNames(*algorithm),
                ElementsAre("input", "inputRange", "step", "lut", "lowIntensity", "highIntensity", "output"));
    EXPECT_EQ(algorithm->inputRange.get(), math::Vector2<double>(0.0, 255.0));
    EXPECT_EQ(algorithm->step, 1.0);
    EXPECT_TRUE(algorithm->lut.get().empty());
    EXPECT_EQ(algorithm->lowIntensity, 0.0);
    EXPECT_EQ(algorithm->highIntensity, 0.0);
}

TEST(AnamorphosisContract, refusesTablesThatAreTooShort)
{
    EXPECT_THAT(refusalOf({}),
                HasSubstr("#1 Error : The lut property must have a minimal size of 256. This current size "
                          "is 0 \n    (at \"Anamorphosis\""));
    EXPECT_THAT(refusalOf({.lut = ramp(255)}), HasSubstr("size of 256. This current size is 255 \n"));
    EXPECT_EQ(refusalOf({.lut = ramp(256)}), "nothing thrown");
    EXPECT_EQ(refusalOf({.lut = ramp(300)}), "nothing thrown");
    EXPECT_THAT(refusalOf({.begin = 100, .end = 200, .lut = ramp(100)}), HasSubstr("size of 101."));
    EXPECT_EQ(refusalOf({.begin = 100, .end = 200, .lut = ramp(101)}), "nothing thrown");
    EXPECT_THAT(refusalOf({.end = 9.9, .step = 2, .lut = ramp(4)}), HasSubstr("size of 5."));
}

TEST(AnamorphosisContract, refusesRangesOfNoFiniteNumberOfEntries)
{
    for (double const step : {0.0, nan}) {
        EXPECT_THAT(refusalOf({.step = step, .lut = ramp(256)}),
                    HasSubstr("size of 4294967295. This current size is 256 \n"));
    }
    EXPECT_THAT(refusalOf({.end = infinity}), HasSubstr("size of 4294967295."));
    EXPECT_THAT(refusalOf({.begin = nan}), HasSubstr("size of 4294967295."));
    EXPECT_THAT(refusalOf({.begin = 10, .end = 5, .step = 0}), HasSubstr("size of 4294967295."));
    EXPECT_THAT(refusalOf({.end = 1e12}), HasSubstr("size of 4294967295."));
}

TEST(AnamorphosisContract, takesAnyTableForARangeWithoutEntries)
{
    EXPECT_EQ(refusalOf({.begin = 10, .end = 5}), "nothing thrown");
    EXPECT_EQ(refusalOf({.step = -1}), "nothing thrown");
}

TEST(AnamorphosisContract, tellsANullOutputBeforeAShortTable)
{
    auto const image = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned char>{9});
    auto const algorithm = Anamorphosis::New();
    algorithm->input = image.get();
    EXPECT_THAT(refusal(*algorithm), HasSubstr("#1 Error : Parameter value cannot be null \n"));
    auto const channels = makeImage({1, 1, 1, 1, 2}, std::vector<unsigned char>{9, 8});
    algorithm->input = channels.get();
    EXPECT_THAT(refusal(*algorithm), HasSubstr("component 4 must have a size of 1. Current size is 2 \n"));
}

TEST(AnamorphosisLiteral, readsTheEntryOfTheIntensity)
{
    EXPECT_THAT(remapped<unsigned char>({7, 0, 255}, {.lut = ramp(256, 255, -1)}), ElementsAre(248, 255, 0));
    EXPECT_THAT(remapped<short>({7, 8, 9}, {.step = 4, .lut = ramp(64, 1000)}), ElementsAre(1001, 1002, 1002));
}

TEST(AnamorphosisLiteral, takesBothEndsOfTheRangeAndCountsFromZero)
{
    Parameters const parameters{.begin = 100, .end = 200, .lut = ramp(201, 5), .low = 1, .high = 2};
    EXPECT_THAT(remapped<unsigned char>({99, 100, 150, 200, 201}, parameters), ElementsAre(1, 105, 155, 205, 2));
}

TEST(AnamorphosisLiteral, takesTheNearestEntryWhereThereIsNone)
{
    EXPECT_THAT(remapped<short>({101, 150, 200}, {.begin = 100, .end = 200, .lut = ramp(101, 5)}),
                ElementsAre(105, 105, 105));
    EXPECT_THAT(remapped<short>({-4, -1, 0, 1}, {.begin = -5, .end = 1, .lut = ramp(7, 10)}),
                ElementsAre(10, 10, 10, 11));
    EXPECT_THAT(remapped<short>({6}, {.begin = 5, .end = 6, .step = -1, .lut = {}}), ElementsAre(0));
}

TEST(AnamorphosisLiteral, givesNaNVoxelsTheFirstEntry)
{
    EXPECT_THAT(remapped<float>({NAN, 1, 300, -1}, {.lut = ramp(256, 42), .low = -7, .high = 7}),
                ElementsAre(42, 43, 7, -7));
}

TEST(AnamorphosisLiteral, truncatesResultsAndWrapsThem)
{
    EXPECT_THAT(remapped<float>({0, 1, 2, 3}, {.end = 3, .lut = {2.7, -2.7, 1e300, nan}}),
                ElementsAre(2, -2, 0x1p63F, 0));
    EXPECT_THAT(remapped<unsigned char>({0, 1, 2, 3}, {.end = 3, .lut = {256.9, -1.2, 1e300, nan}}),
                ElementsAre(0, 255, 255, 0));
    EXPECT_THAT(remapped<int64>({0, 1, 2}, {.end = 2, .lut = {infinity, -infinity, -0x1p63}}),
                ElementsAre(std::numeric_limits<int64>::max(), std::numeric_limits<int64>::min(),
                            std::numeric_limits<int64>::min()));
}

/// From the definition, one voxel at a time.
template <class T>
T reference(T voxel, Parameters const& parameters)
{
    auto const v = static_cast<double>(voxel);
    double result = 0;
    if (parameters.begin > v) {
        result = parameters.low;
    } else if (v > parameters.end) {
        result = parameters.high;
    } else {
        double const last = static_cast<double>(parameters.lut.size()) - 1;
        double const place = std::isnan(v) ? 0 : std::clamp(std::trunc(v / parameters.step), 0.0, last);
        result = parameters.lut[static_cast<std::size_t>(place)];
    }
    return static_cast<T>(static_cast<int64>(result));
}

template <class T>
class AnamorphosisTyped : public ::testing::Test {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(AnamorphosisTyped, RealTypes);

TYPED_TEST(AnamorphosisTyped, equalsTheDefinition)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> entries(-1e6, 1e6);
    for (std::size_t const count : {0U, 1U, 3U, 7U, 8U, 9U, 1000U, 60000U}) { // the longest folds 16-bit tables
        Parameters parameters{.begin = -20, .end = 90.5, .step = 0.75, .low = -3, .high = 1234.5};
        for (int i = 0; i < 150; ++i) {
            parameters.lut.push_back(entries(random));
        }
        auto const voxels = randomVoxels<TypeParam>(random, count);
        auto const results = remapped(voxels, parameters);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(results[i], reference(voxels[i], parameters));
        }
    }
}

template <class T>
void compareAllVoxels()
{
    std::vector<T> voxels;
    for (int v = std::numeric_limits<T>::min(); v <= std::numeric_limits<T>::max(); ++v) {
        voxels.push_back(static_cast<T>(v));
    }
    Parameters parameters{.begin = -100, .end = 30000, .step = 3, .lut = ramp(10035, -7.5, 3.3), .low = 1, .high = 2};
    auto const table = AnamorphosisTable{parameters.begin,      parameters.end, parameters.step, parameters.lut.data(),
                                         parameters.lut.size(), parameters.low, parameters.high};
    std::vector<T> plain(voxels.size()), folded(voxels.size());
    point_operations::AnamorphosisScalarGeneric<T>(table).row(voxels.data(), plain.data(), voxels.size());
    point_operations::FoldedAnamorphosis<T>(table).row(voxels.data(), folded.data(), voxels.size());
    EXPECT_EQ(plain, folded);
}

TEST(AnamorphosisTyped, isTheSameThroughAFoldedTable)
{
    compareAllVoxels<unsigned char>();
    compareAllVoxels<signed char>();
    compareAllVoxels<unsigned short>();
    compareAllVoxels<short>();
}

} // namespace

} // namespace mox::testing

#include "apps/moxel/Statistics.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <gtest/gtest.h>

#include <limits>

#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

template <class T>
std::unique_ptr<Statistics> statisticsOf(std::vector<T> const& voxels)
{
    mox::memory::InMemoryImage image;
    fill(image, {static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    auto statistics = Statistics::create(image.getVoxelType());
    statistics->add(image);
    return statistics;
}

template <class T>
class StatisticsOf : public ::testing::Test {
};

using RealTypes = ::testing::Types<std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, std::int8_t, std::int16_t,
                                   std::int32_t, std::int64_t, float, double>;
TYPED_TEST_SUITE(StatisticsOf, RealTypes);

TYPED_TEST(StatisticsOf, FindsTheEndsOfTheType)
{
    using Limits = std::numeric_limits<TypeParam>;
    auto const statistics = statisticsOf<TypeParam>({Limits::lowest(), 0, Limits::max()});
    EXPECT_EQ(statistics->minimum()->json, Json(Limits::lowest()));
    EXPECT_EQ(statistics->maximum()->json, Json(Limits::max()));
}

TYPED_TEST(StatisticsOf, FindsTheMean)
{
    EXPECT_EQ(statisticsOf<TypeParam>({1, 2, 3, 8})->mean()->json, Json(3.5));
    EXPECT_EQ(statisticsOf<TypeParam>({7})->minimum()->text, "7");
}

TEST(Statistics, AreExactFor64Bits)
{
    auto const statistics = statisticsOf<std::uint64_t>({(1ULL << 53U) + 1, (1ULL << 53U) + 3});
    EXPECT_EQ(statistics->minimum()->text, "9007199254740993");
    EXPECT_EQ(statistics->mean()->json, Json(9007199254740994.0));
}

TEST(Statistics, GatherOverImages)
{
    mox::memory::InMemoryImage image;
    fill<std::int16_t>(image, {2, 1, 1, 1, 2}, {-5, 1, 2, 4});
    auto const statistics = Statistics::create(mox::MOX_INT16);
    statistics->add(image);
    fill<std::int16_t>(image, {1, 1, 1, 1, 1}, {8});
    statistics->add(image);
    EXPECT_EQ(statistics->minimum()->text, "-5");
    EXPECT_EQ(statistics->maximum()->text, "8");
    EXPECT_EQ(statistics->mean()->text, "2");
}

TEST(Statistics, PassOverNaN)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    auto const statistics = statisticsOf<float>({nan, 0.1F, nan, 3});
    EXPECT_EQ(statistics->minimum()->text, "0.1");
    EXPECT_EQ(statistics->maximum()->text, "3");
    EXPECT_EQ(statistics->numOfNaN(), 2U);
    EXPECT_NEAR(statistics->mean()->json.get<double>(), 1.55, 1e-6);
}

TEST(Statistics, TellNothingOfNaNAlone)
{
    auto const statistics = statisticsOf<double>({std::numeric_limits<double>::quiet_NaN()});
    EXPECT_FALSE(statistics->minimum());
    EXPECT_FALSE(statistics->mean());
    EXPECT_EQ(statistics->numOfNaN(), 1U);
}

} // namespace
} // namespace moxel::testing

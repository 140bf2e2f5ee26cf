#include "apps/moxel/Statistics.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

template <class T>
Statistics statisticsOf(std::vector<T> const& voxels)
{
    mox::memory::InMemoryImage image;
    fill(image, {static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    Statistics statistics;
    statistics.add(image);
    return statistics;
}

template <class T>
class StatisticsOf : public ::testing::Test {
};

using RealTypes = ::testing::Types<std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, std::int8_t, std::int16_t,
                                   std::int32_t, std::int64_t, float, double>;
TYPED_TEST_SUITE(StatisticsOf, RealTypes);

TYPED_TEST(StatisticsOf, FindsExtremaAndMean)
{
    using Limits = std::numeric_limits<TypeParam>;
    auto const ends = statisticsOf<TypeParam>({Limits::lowest(), 0, Limits::max()});
    EXPECT_EQ(ends.minimum(), static_cast<double>(Limits::lowest()));
    EXPECT_EQ(ends.maximum(), static_cast<double>(Limits::max()));
    EXPECT_EQ(statisticsOf<TypeParam>({1, 2, 3, 8}).mean(), 3.5);
}

TEST(Statistics, GatherOverPages)
{
    mox::memory::InMemoryImage page;
    Statistics statistics;
    fill<std::int16_t>(page, {2, 1, 1, 1, 2}, {3, 1, 2, 4});
    statistics.add(page);
    fill<std::int16_t>(page, {2, 1, 1, 1, 2}, {-5, 8, 7, 3});
    statistics.add(page);
    fill<std::int16_t>(page, {2, 1, 1, 1, 2}, {1, 1, 1, 1});
    statistics.add(page);
    EXPECT_EQ(statistics.minimum(), -5);
    EXPECT_EQ(statistics.maximum(), 8);
    EXPECT_EQ(statistics.mean(), 2.25);
}

TEST(Statistics, PassOverNaNButForTheMean)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    auto const statistics = statisticsOf<float>({nan, 0.5F, nan, 3});
    EXPECT_EQ(statistics.minimum(), 0.5);
    EXPECT_EQ(statistics.maximum(), 3);
    EXPECT_TRUE(std::isnan(statistics.mean().value()));
}

TEST(Statistics, TellNoExtremaOfNaNAlone)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    auto statistics = statisticsOf<double>({nan});
    EXPECT_FALSE(statistics.minimum());
    EXPECT_FALSE(statistics.maximum());
    EXPECT_TRUE(std::isnan(statistics.mean().value()));
    mox::memory::InMemoryImage page;
    fill<double>(page, {2, 1, 1, 1, 1}, {7, nan});
    statistics.add(page);
    EXPECT_EQ(statistics.minimum(), 7);
    EXPECT_EQ(statistics.maximum(), 7);
}

TEST(Statistics, TellNothingWithoutVoxels)
{
    EXPECT_FALSE(Statistics().minimum());
    EXPECT_FALSE(Statistics().maximum());
    EXPECT_FALSE(Statistics().mean());
}

} // namespace
} // namespace moxel::testing

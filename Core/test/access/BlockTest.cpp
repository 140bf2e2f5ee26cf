#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <gtest/gtest.h>

#include "Core/private/access/Region.h"

namespace mox::testing {

namespace {

using access::Block;
using access::Block2d;
using access::Block3d;
using access::GrainedRange;
using access::Region;

void expectBounds(Block const& block, unsigned int rowsBegin, unsigned int rowsEnd, unsigned int columnsBegin,
                  unsigned int columnsEnd, unsigned int plansBegin, unsigned int plansEnd)
{
    EXPECT_EQ(block.getBeginRow(), rowsBegin);
    EXPECT_EQ(block.getEndRow(), rowsEnd);
    EXPECT_EQ(block.getNumOfRows(), rowsEnd - rowsBegin);
    EXPECT_EQ(block.getBeginColumn(), columnsBegin);
    EXPECT_EQ(block.getEndColumn(), columnsEnd);
    EXPECT_EQ(block.getNumOfColumns(), columnsEnd - columnsBegin);
    EXPECT_EQ(block.getBeginPlan(), plansBegin);
    EXPECT_EQ(block.getEndPlan(), plansEnd);
    EXPECT_EQ(block.getNumOfPlans(), plansEnd - plansBegin);
}

GrainedRange range(unsigned int begin, unsigned int end, unsigned int grain)
{
    return {end, begin, grain};
}

TEST(Block2d, isEmptyByDefault)
{
    Block2d const block;
    EXPECT_TRUE(block.empty());
    EXPECT_FALSE(block.is_divisible());
    expectBounds(block, 0, 0, 0, 0, 0, 1);
}

TEST(Block2d, hasFixedIndices)
{
    Block2d const block(range(1, 5, 10), range(2, 8, 1024), 3, 4, 5);
    expectBounds(block, 1, 5, 2, 8, 3, 4);
    EXPECT_EQ(block.getBeginTimeSeries(), 4U);
    EXPECT_EQ(block.getEndTimeSeries(), 5U);
    EXPECT_EQ(block.getNumOfTimeSeries(), 1U);
    EXPECT_EQ(block.getBeginSpectralSeries(), 5U);
    EXPECT_EQ(block.getEndSpectralSeries(), 6U);
    EXPECT_EQ(block.getNumOfSpectralSeries(), 1U);
}

TEST(Block2d, isDivisibleWhenARangeExceedsItsGrain)
{
    EXPECT_FALSE(Block2d(range(0, 10, 10), range(0, 1024, 1024), 0, 0, 0).is_divisible());
    EXPECT_TRUE(Block2d(range(0, 11, 10), range(0, 1024, 1024), 0, 0, 0).is_divisible());
    EXPECT_TRUE(Block2d(range(0, 10, 10), range(0, 1025, 1024), 0, 0, 0).is_divisible());
}

TEST(Block2d, splitsRowsUnlessColumnsAreRelativelyLonger)
{
    Block2d lower(range(0, 21, 10), range(0, 2048, 1024), 7, 8, 9);
    Block2d const upper(lower, tbb::split());
    expectBounds(lower, 0, 10, 0, 2048, 7, 8);
    expectBounds(upper, 10, 21, 0, 2048, 7, 8);
    EXPECT_EQ(upper.getBeginTimeSeries(), 8U);
    EXPECT_EQ(upper.getBeginSpectralSeries(), 9U);

    Block2d left(range(0, 20, 10), range(0, 2049, 1024), 0, 0, 0);
    Block2d const right(left, tbb::split());
    expectBounds(left, 0, 20, 0, 1024, 0, 1);
    expectBounds(right, 0, 20, 1024, 2049, 0, 1);
}

TEST(Block2d, splitsRowsOnATie)
{
    Block2d lower(range(0, 20, 10), range(0, 2048, 1024), 0, 0, 0);
    Block2d const upper(lower, tbb::split());
    expectBounds(upper, 10, 20, 0, 2048, 0, 1);
}

TEST(Block3d, isEmptyByDefault)
{
    Block3d const block;
    EXPECT_TRUE(block.empty());
    EXPECT_FALSE(block.is_divisible());
    expectBounds(block, 0, 0, 0, 0, 0, 0);
}

TEST(Block3d, isDivisibleWhenARangeExceedsItsGrain)
{
    EXPECT_FALSE(Block3d(range(0, 10, 10), range(0, 10, 10), range(0, 1024, 1024), 0, 0).is_divisible());
    EXPECT_TRUE(Block3d(range(0, 11, 10), range(0, 10, 10), range(0, 1024, 1024), 0, 0).is_divisible());
    EXPECT_TRUE(Block3d(range(0, 10, 10), range(0, 11, 10), range(0, 1024, 1024), 0, 0).is_divisible());
    EXPECT_TRUE(Block3d(range(0, 10, 10), range(0, 10, 10), range(0, 1025, 1024), 0, 0).is_divisible());
}

TEST(Block3d, splitsTheRelativelyLongestRange)
{
    Block3d plans(range(0, 41, 10), range(0, 40, 10), range(0, 1024, 1024), 2, 3);
    Block3d const upperPlans(plans, tbb::split());
    expectBounds(plans, 0, 40, 0, 1024, 0, 20);
    expectBounds(upperPlans, 0, 40, 0, 1024, 20, 41);
    EXPECT_EQ(upperPlans.getBeginTimeSeries(), 2U);
    EXPECT_EQ(upperPlans.getBeginSpectralSeries(), 3U);

    Block3d rows(range(0, 40, 10), range(0, 41, 10), range(0, 1024, 1024), 0, 0);
    Block3d const upperRows(rows, tbb::split());
    expectBounds(upperRows, 20, 41, 0, 1024, 0, 40);

    Block3d columns(range(0, 40, 10), range(0, 40, 10), range(0, 4097, 1024), 0, 0);
    Block3d const upperColumns(columns, tbb::split());
    expectBounds(upperColumns, 0, 40, 2048, 4097, 0, 40);

    Block3d columnsAfterRows(range(0, 10, 10), range(0, 40, 10), range(0, 4097, 1024), 0, 0);
    Block3d const upperColumnsAfterRows(columnsAfterRows, tbb::split());
    expectBounds(upperColumnsAfterRows, 0, 40, 2048, 4097, 0, 10);
}

TEST(Block3d, prefersPlansThenRowsOnATie)
{
    Block3d all(range(0, 20, 10), range(0, 20, 10), range(0, 2048, 1024), 0, 0);
    Block3d const upper(all, tbb::split());
    expectBounds(upper, 0, 20, 0, 2048, 10, 20);

    Block3d rows(range(0, 10, 10), range(0, 20, 10), range(0, 2048, 1024), 0, 0);
    Block3d const upperRows(rows, tbb::split());
    expectBounds(upperRows, 10, 20, 0, 2048, 0, 10);
}

TEST(Region, holdsFiveRanges)
{
    Region const region({1, 3}, {4, 9}, {10, 20}, {0, 2}, {5, 6});
    expectBounds(region, 1, 3, 4, 9, 10, 20);
    EXPECT_EQ(region.getNumOfTimeSeries(), 2U);
    EXPECT_EQ(region.getBeginTimeSeries(), 0U);
    EXPECT_EQ(region.getEndTimeSeries(), 2U);
    EXPECT_EQ(region.getNumOfSpectralSeries(), 1U);
    EXPECT_EQ(region.getBeginSpectralSeries(), 5U);
    EXPECT_EQ(region.getEndSpectralSeries(), 6U);
}

} // namespace

} // namespace mox::testing

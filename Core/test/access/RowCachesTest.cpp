#include "Core/private/access/RowCaches.h"

#include <Moxelcore/Core/access/Block3d.h>

#include <gmock/gmock.h>

#include <numeric>

#include "Core/private/access/FixedBorderCondition.h"
#include "testing/Images.h"

namespace mox::testing {

namespace {

using access::Block3d;
using access::FixedBorderCondition;
using access::GrainedRange;
using access::Position;
using ::testing::ElementsAre;

using ShortView = access::View<short>;
using ReadCache = access::RowCacheRead<ShortView>;
using WriteCache = access::RowCacheReadWrite<ShortView>;

class RowCaches : public ::testing::Test {
protected:
    static std::vector<short> ascending()
    {
        std::vector<short> voxels(4 * 3 * 2 * 2);
        std::iota(voxels.begin(), voxels.end(), short(0));
        return voxels;
    }

    std::unique_ptr<memory::InMemoryImage> const image = makeImage({4, 3, 2, 2, 1}, ascending());
    ShortView const view{*image, FixedBorderCondition<short>::create(-1)};
    /// Columns 1 to 3, rows 1 to 2, plan 1, time 1.
    Block3d const block{GrainedRange{2, 1, 10}, GrainedRange{3, 1, 10}, GrainedRange{4, 1, 10}, 1, 0};
};

TEST_F(RowCaches, positionsAreRelativeToTheBlock)
{
    ReadCache cache(view);
    auto const& row = cache.getRow(0, 5, block, -1, 1, -1, 0, 0);
    EXPECT_EQ(row.position(), (Position{0, 2, 0, 1, 0}));
    EXPECT_THAT(std::vector<short>(row.voxels(), row.voxels() + 5), ElementsAre(32, 33, 34, 35, -1));
}

TEST_F(RowCaches, slotsKeepTheirRows)
{
    ReadCache cache(view, ReadCache::Row::Source::copied);
    short const* const first = cache.getRow(3, 2, block, 0, 0, 0, 0, 0).voxels();
    short const* const second = cache.getRow(0, 2, block, 0, 1, 0, 0, 0).voxels();
    EXPECT_THAT(std::vector<short>(first, first + 2), ElementsAre(41, 42));
    EXPECT_THAT(std::vector<short>(second, second + 2), ElementsAre(45, 46));
}

TEST_F(RowCaches, writesWhatIsFlushed)
{
    WriteCache cache(view);
    auto& row = cache.getRow(0, 4, block, -1, 0, 0, 0, 0);
    std::fill_n(row.voxels(), 4, short(7));
    cache.flush(row);
    short voxels[4] = {};
    image->readRowAt(4, voxels, 0, 1, 1, 1, 0);
    EXPECT_THAT(voxels, ElementsAre(7, 7, 7, 7));
}

TEST_F(RowCaches, readsPresentVoxelsWhereAsked)
{
    WriteCache cache(view);
    auto& row = cache.getRow(0, 6, block, -2, 0, 0, 0, 0, WriteCache::Row::ReadBack::yes);
    EXPECT_THAT(std::vector<short>(row.voxels(), row.voxels() + 6), ElementsAre(-1, 40, 41, 42, 43, -1));
}

TEST_F(RowCaches, holdsBackWhatLiesOutsideTheBox)
{
    WriteCache cache(view);
    access::SafeBox const box{2, 3, 1, 2, 1, 1};
    auto& row = cache.getRow(0, 3, block, 0, 0, 0, 0, 0, WriteCache::Row::ReadBack::no, &box);
    std::fill_n(row.voxels(), 3, short(7));
    cache.flush(row, &box);
    EXPECT_TRUE(cache.hasQueuedVoxels());
    short voxels[4] = {};
    image->readRowAt(4, voxels, 0, 1, 1, 1, 0);
    EXPECT_THAT(voxels, ElementsAre(40, 41, 7, 7));
    cache.flushQueue();
    EXPECT_FALSE(cache.hasQueuedVoxels());
    image->readRowAt(4, voxels, 0, 1, 1, 1, 0);
    EXPECT_THAT(voxels, ElementsAre(40, 7, 7, 7));
}

TEST_F(RowCaches, planCachesHaveRowsPerPlanSlot)
{
    access::PlanCacheRead<ShortView> cache(3, view);
    short const* const front = cache[0].getRow(0, 1, block, 0, 0, -1, 0, 0).voxels();
    short const* const back = cache[2].getRow(0, 1, block, 0, 0, 0, 0, 0).voxels();
    EXPECT_EQ(*front, 29);
    EXPECT_EQ(*back, 41);
    access::PlanCacheReadWrite<ShortView> output(2, view);
    auto& row = output[1].getRow(0, 1, block, 0, 0, 0, 0, 0);
    *row.voxels() = 5;
    output[1].flush(row);
    EXPECT_EQ(*back, 5);
}

} // namespace

} // namespace mox::testing

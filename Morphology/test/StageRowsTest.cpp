#include "Morphology/private/StageRows.h"

#include <gmock/gmock.h>

#include <map>

namespace mox::testing {

namespace {

using kernel::Offset3D;
using morphology::StageExtent;
using morphology::StageRows;

constexpr filters::Bounds everywhere{-100, 200, -100, 200, -100, 200};

StageExtent extentOf(Offset3D const& least, Offset3D const& most)
{
    StageExtent extent;
    extent.around = {least, most};
    extent.isReadBesideImage = true;
    return extent;
}

/// Makes rows as a sweep over a leaf does, each at an address of its own, and looks back at all that are kept.
void expectKeptRows(StageExtent const& extent, int leafRows, int leafPlans)
{
    StageRows<int> rows(extent, 10, leafRows, everywhere);
    std::map<std::pair<int, int>, int const*> made;
    std::vector<int> memory(10000);
    int const* next = memory.data();
    for (int z = rows.startPlan(); z < leafPlans; ++z) {
        for (int y = rows.startRow(); y < leafRows; ++y) {
            if (!rows.hasRowFor(y, z)) {
                continue;
            }
            int const row = rows.rowFor(y);
            int const plan = rows.planFor(z);
            rows.moveTo(row, plan);
            rows.setRow(rows.slot(row, plan), next);
            made[{row, plan}] = next++;
            bool const isInPlane = extent.plansKept == 1;
            for (int back = 0; isInPlane && back < extent.rowsKept && row - back >= extent.around.least.row; ++back) {
                ASSERT_EQ(rows.row(row - back, plan), (made[{row - back, plan}])) << row << " - " << back;
            }
            for (int back = 0; !isInPlane && back < extent.plansKept && plan - back >= extent.around.least.plan;
                 ++back) {
                ASSERT_EQ(rows.row(row, plan - back), (made[{row, plan - back}])) << plan << " - " << back;
            }
        }
    }
}

TEST(StageRows, keepTheLastRowsInThePlane)
{
    for (int kept = 1; kept <= 5; ++kept) {
        StageExtent extent = extentOf({0, -3, 0}, {0, 2, 0});
        extent.rowsKept = kept;
        expectKeptRows(extent, 12, 1);
        expectKeptRows(extent, 1, 1);
        expectKeptRows(extent, 12, 3);
    }
}

TEST(StageRows, keepTheLastPlansInSpace)
{
    for (int kept = 2; kept <= 4; ++kept) {
        StageExtent extent = extentOf({0, -1, -2}, {0, 2, 1});
        extent.rowsKept = 4;
        extent.plansKept = kept;
        expectKeptRows(extent, 7, 9);
        expectKeptRows(extent, 1, 1);
    }
}

TEST(StageRows, areMadeWhereTheyAreNotTheValueOutside)
{
    filters::Bounds const image{-1, 12, 0, 10, 0, 1}; // a leaf of 10 columns, with one before it and two after it
    StageExtent extent = extentOf({-5, 0, 0}, {4, 0, 0});
    StageRows<int> const made(extent, 10, 10, image);
    EXPECT_EQ(made.firstMade(), -5);
    EXPECT_EQ(made.endMade(), 14);
    EXPECT_FALSE(made.keepsMoreThanIsMade());
    extent.isOutsideBesideImage = true;
    StageRows<int> const inside(extent, 10, 10, image);
    EXPECT_EQ(inside.firstMade(), -1);
    EXPECT_EQ(inside.endMade(), 12);
    EXPECT_EQ(inside.firstKept(), -5);
    EXPECT_EQ(inside.widthKept(), 19U);
    extent.isReadBesideImage = false;
    StageRows<int> const insideAlone(extent, 10, 10, image);
    EXPECT_EQ(insideAlone.firstKept(), -1);
    EXPECT_EQ(insideAlone.widthKept(), 13U);
}

} // namespace

} // namespace mox::testing

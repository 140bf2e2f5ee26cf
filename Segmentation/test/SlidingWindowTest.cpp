#include "Segmentation/private/SlidingWindow.h"

#include <gmock/gmock.h>

#include <limits>
#include <set>
#include <utility>

namespace mox::segmentation {

namespace {

using ::testing::ElementsAre;
using Offsets = std::set<std::pair<int, int>>;

Offsets offsetsOf(Window const& window)
{
    Offsets offsets;
    for (WindowRow const& row : window) {
        for (int x = row.first; x <= row.last; ++x) {
            offsets.insert({x, row.y});
        }
    }
    return offsets;
}

Offsets diskReference(int radius)
{
    auto const limit = static_cast<int>((radius + 0.5) * (radius + 0.5));
    Offsets offsets;
    for (int y = -radius; y <= radius; ++y) {
        for (int x = -radius; x <= radius; ++x) {
            if (x * x + y * y < limit) {
                offsets.insert({x, y});
            }
        }
    }
    return offsets;
}

TEST(SlidingWindow, isADigitalDisk)
{
    EXPECT_THAT(diskWindow(1), ElementsAre(WindowRow{-1, 0, 0}, WindowRow{0, -1, 1}, WindowRow{1, 0, 0}));
    for (int radius = 1; radius < 40; ++radius) {
        EXPECT_EQ(offsetsOf(diskWindow(radius)), diskReference(radius)) << radius;
        EXPECT_EQ(numOfPositions(diskWindow(radius)), diskReference(radius).size());
    }
}

TEST(SlidingWindow, holdsThePairsOfEveryDirection)
{
    for (int radius = 1; radius < 7; ++radius) {
        Offsets const disk = diskReference(radius);
        for (int dy = -2 * radius - 1; dy <= 2 * radius + 1; ++dy) {
            for (int dx = -2 * radius - 1; dx <= 2 * radius + 1; ++dx) {
                Offsets wanted;
                for (auto const& [x, y] : disk) {
                    if (disk.contains({x + dx, y + dy})) {
                        wanted.insert({x, y});
                    }
                }
                ASSERT_EQ(offsetsOf(pairWindow(radius, {dx, dy})), wanted) << dx << ' ' << dy;
            }
        }
    }
}

TEST(SlidingWindow, hasNoPairsBeyondTheDisk)
{
    EXPECT_EQ(pairWindow(1, {2, 0}).size(), 1U);
    EXPECT_TRUE(pairWindow(1, {3, 0}).empty());
    int const least = std::numeric_limits<int>::min();
    int const most = std::numeric_limits<int>::max();
    EXPECT_TRUE(pairWindow(5, {least, most}).empty());
    EXPECT_TRUE(pairWindow(5, {most, 0}).empty());
}

} // namespace

} // namespace mox::segmentation

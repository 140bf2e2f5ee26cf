#include "Segmentation/private/SlidingWindow.h"

#include <algorithm>
#include <cmath>

namespace mox::segmentation {

namespace {

/// The widest offset of the disk in a row; the row must be one of the disk's.
int64 halfWidth(int radius, int64 y)
{
    int64 const limit = int64{radius} * radius + radius; // trunc((radius + 0.5)^2)
    return static_cast<int64>(std::sqrt(static_cast<double>(limit - y * y - 1)));
}

} // namespace

std::size_t numOfPositions(Window const& window)
{
    std::size_t count = 0;
    for (WindowRow const& row : window) {
        count += row.size();
    }
    return count;
}

Window diskWindow(int radius)
{
    return pairWindow(radius, {0, 0});
}

Window pairWindow(int radius, math::Vector2<int> const& direction)
{
    int64 const dx = direction[0];
    int64 const dy = direction[1];
    Window window;
    for (int y = -radius; y <= radius; ++y) {
        if (y + dy < -radius || y + dy > radius) {
            continue;
        }
        int64 const here = halfWidth(radius, y);
        int64 const there = halfWidth(radius, y + dy);
        int64 const first = std::max(-here, -there - dx);
        int64 const last = std::min(here, there - dx);
        if (first <= last) {
            window.push_back({y, static_cast<int>(first), static_cast<int>(last)});
        }
    }
    return window;
}

} // namespace mox::segmentation

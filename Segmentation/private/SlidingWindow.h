#pragma once

#include <Moxelcore/Core/Integers.h>
#include <Moxelcore/Math/Vector2.h>

#include <cstddef>
#include <vector>

namespace mox::segmentation {

/// The part of a window that lies in one row: a run of offsets from the centre, both ends included.
struct WindowRow {
    int y;
    int first;
    int last;

    std::size_t size() const { return static_cast<std::size_t>(last - first + 1); }
    bool operator==(WindowRow const&) const = default;
};

using Window = std::vector<WindowRow>;

std::size_t numOfPositions(Window const& window);

/// The digital disk: offsets with x^2 + y^2 < trunc((radius + 0.5)^2).
Window diskWindow(int radius);

/// The positions of the disk from which a step in the direction stays in the disk; none when there are none. The disk
/// is convex, so that each row has one run of them.
Window pairWindow(int radius, math::Vector2<int> const& direction);

} // namespace mox::segmentation

#pragma once

namespace mox::access {

/// A voxel position, which may lie outside the image.
struct Position {
    int x = 0;
    int y = 0;
    int z = 0;
    int t = 0;
    int s = 0;

    bool operator==(Position const&) const = default;
};

} // namespace mox::access

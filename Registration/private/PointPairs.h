#pragma once

#include <cstddef>

namespace mox::registration {

/// Points, and where they should come to lie.
template <class Point>
struct PointPairs {
    Point const* data;
    Point const* model;
    std::size_t count;
};

template <class Point>
PointPairs(Point const*, Point const*, std::size_t) -> PointPairs<Point>;

} // namespace mox::registration

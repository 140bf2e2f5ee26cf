#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "Core/private/access/Sizes.h"

// Erosion and dilation written from their definitions, voxel by voxel.

namespace mox::testing {

using Offset = std::array<int, 3>; ///< column, row, plan

/// An element as the order of comparison has it: groups of columns of offsets. Each column is reduced, then the columns
/// of a group, then the groups.
using OrderedElement = std::vector<std::vector<std::vector<Offset>>>;

inline OrderedElement listed(std::vector<Offset> const& offsets)
{
    return {{offsets}};
}

inline OrderedElement cross4()
{
    return listed({{0, -1, 0}, {-1, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
}

inline OrderedElement squareOf9(int plan = 0)
{
    OrderedElement element(1);
    for (int x = -1; x <= 1; ++x) {
        element[0].push_back({{x, -1, plan}, {x, 0, plan}, {x, 1, plan}});
    }
    return element;
}

inline OrderedElement cubeOf27()
{
    OrderedElement element;
    for (int z = -1; z <= 1; ++z) {
        element.push_back(squareOf9(z)[0]);
    }
    return element;
}

inline OrderedElement cross6()
{
    return listed({{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
}

inline OrderedElement edged18()
{
    std::vector<Offset> offsets;
    for (int z = -1; z <= 1; ++z) {
        for (int y = -1; y <= 1; ++y) {
            for (int x = -1; x <= 1; ++x) {
                if (std::abs(x) + std::abs(y) + std::abs(z) <= 2) {
                    offsets.push_back({x, y, z});
                }
            }
        }
    }
    return listed(offsets);
}

enum class Extremum { minimum, maximum };

/// One pass: of each voxel the extremum under the element, in order; outside reads the worst finite value.
template <class T>
std::vector<T> extremumReference(std::vector<T> const& voxels, access::Sizes const& sizes,
                                 OrderedElement const& element, Extremum extremum)
{
    bool const isMaximum = extremum == Extremum::maximum;
    auto const keep = [&](T running, T candidate) {
        bool const replaces = isMaximum ? running < candidate : candidate < running;
        return replaces ? candidate : running;
    };
    auto const reduce = [&](auto const& list, auto const& valueOf) {
        T running = valueOf(list.front());
        for (std::size_t i = 1; i < list.size(); ++i) {
            running = keep(running, valueOf(list[i]));
        }
        return running;
    };
    int const size[] = {static_cast<int>(sizes.columns), static_cast<int>(sizes.rows), static_cast<int>(sizes.plans)};
    std::vector<T> result(voxels.size());
    std::size_t const volume = std::size_t{sizes.columns} * sizes.rows * sizes.plans;
    for (std::size_t start = 0; start < voxels.size(); start += volume) {
        std::size_t i = start;
        for (int z = 0; z < size[2]; ++z) {
            for (int y = 0; y < size[1]; ++y) {
                for (int x = 0; x < size[0]; ++x, ++i) {
                    auto const read = [&](Offset const& o) {
                        int const p[] = {x + o[0], y + o[1], z + o[2]};
                        for (int axis = 0; axis < 3; ++axis) {
                            if (p[axis] < 0 || p[axis] >= size[axis]) {
                                return isMaximum ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
                            }
                        }
                        auto const u = [](int value) { return static_cast<std::size_t>(value); };
                        return voxels[start + (u(p[2]) * sizes.rows + u(p[1])) * sizes.columns + u(p[0])];
                    };
                    auto const column = [&](std::vector<Offset> const& offsets) { return reduce(offsets, read); };
                    result[i] = reduce(element, [&](auto const& group) { return reduce(group, column); });
                }
            }
        }
    }
    return result;
}

struct ReferenceStep {
    OrderedElement element;
    unsigned int iterations;
};

template <class T>
std::vector<T> extremumReference(std::vector<T> voxels, access::Sizes const& sizes,
                                 std::vector<ReferenceStep> const& steps, Extremum extremum)
{
    for (ReferenceStep const& step : steps) {
        for (unsigned int i = 0; i < step.iterations; ++i) {
            voxels = extremumReference(voxels, sizes, step.element, extremum);
        }
    }
    return voxels;
}

/// The element mirrored at its origin, in the same order.
inline OrderedElement mirrored(OrderedElement element)
{
    for (auto& group : element) {
        for (auto& column : group) {
            for (Offset& o : column) {
                o = {-o[0], -o[1], -o[2]};
            }
        }
    }
    return element;
}

} // namespace mox::testing

#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "Core/private/filters/Reach.h"

namespace mox {

namespace kernel {

struct Offset2D {
    int column;
    int row;

    bool operator==(Offset2D const&) const = default;
};

struct Offset3D {
    int column;
    int row;
    int plan;

    bool operator==(Offset3D const&) const = default;
};

/// An offset and n steps from there.
constexpr Offset3D plus(Offset3D const& offset, Offset3D const& step, int n)
{
    return {offset.column + n * step.column, offset.row + n * step.row, offset.plan + n * step.plan};
}

constexpr Offset3D inSpace(Offset2D const& offset)
{
    return {offset.column, offset.row, 0};
}
constexpr Offset3D inSpace(Offset3D const& offset)
{
    return offset;
}

} // namespace kernel

namespace access {

// Tags of elements. The order of the offsets is the order of comparison.

struct Neighborhood2D_4Tag {
    static constexpr std::array<kernel::Offset2D, 5> offsets = {{{0, -1}, {-1, 0}, {0, 0}, {1, 0}, {0, 1}}};
};

struct Neighborhood3D_6Tag {
    static constexpr std::array<kernel::Offset3D, 7> offsets = {
        {{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
};

struct Neighborhood3D_18Tag {
    static constexpr std::array<kernel::Offset3D, 19> offsets = {{{0, -1, -1},
                                                                  {-1, 0, -1},
                                                                  {0, 0, -1},
                                                                  {1, 0, -1},
                                                                  {0, 1, -1}, //
                                                                  {-1, -1, 0},
                                                                  {0, -1, 0},
                                                                  {1, -1, 0},
                                                                  {-1, 0, 0},
                                                                  {0, 0, 0},
                                                                  {1, 0, 0},
                                                                  {-1, 1, 0},
                                                                  {0, 1, 0},
                                                                  {1, 1, 0}, //
                                                                  {0, -1, 1},
                                                                  {-1, 0, 1},
                                                                  {0, 0, 1},
                                                                  {1, 0, 1},
                                                                  {0, 1, 1}}};
};

/// Any list of offsets, held by the kernel.
struct Neighborhood2D_GenTag {};
struct Neighborhood3D_GenTag {};

} // namespace access

namespace morphology {

/// What the tags with a list of their own have in the place of the list.
struct NoDataType {};

/// Leaves so large that little of them lies at the rim, where rows are held back when they run in place.
inline constexpr filters::LeafShape leafOfSmallElement{64, 128, 4096};

/// The bounds of an element, inclusive.
struct OffsetBox {
    kernel::Offset3D least{0, 0, 0};
    kernel::Offset3D most{0, 0, 0};

    filters::Reach reach() const
    {
        auto const below = [](int bound) { return static_cast<unsigned int>(std::max(-bound, 0)); };
        auto const above = [](int bound) { return static_cast<unsigned int>(std::max(bound, 0)); };
        return {below(least.column), above(most.column), below(least.row),
                above(most.row),     below(least.plan),  above(most.plan)};
    }
};

constexpr OffsetBox unionOf(OffsetBox const& a, OffsetBox const& b)
{
    return {
        {std::min(a.least.column, b.least.column), std::min(a.least.row, b.least.row),
         std::min(a.least.plan, b.least.plan)},
        {std::max(a.most.column, b.most.column), std::max(a.most.row, b.most.row), std::max(a.most.plan, b.most.plan)}};
}

template <class Offsets>
constexpr OffsetBox boxOf(Offsets const& offsets)
{
    OffsetBox box;
    for (auto const& offset : offsets) {
        kernel::Offset3D const o = kernel::inSpace(offset);
        box = unionOf(box, {o, o});
    }
    return box;
}

} // namespace morphology
} // namespace mox

#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <array>

#include "Morphology/private/ElementRows.h"

namespace mox::morphology {

namespace details {

/// The reduction of a square of 3 x 3 voxels that moves along three rows: of the columns from left to right, each
/// reduced from top to bottom. A step reduces one new column.
template <class Functor, class T>
class MovingSquare {
public:
    /// Rows that begin one voxel before the first centre.
    explicit MovingSquare(std::array<T const*, 3> const& rows)
        : rows_(rows)
        , left_(column(0))
        , middle_(column(1))
    {
    }

    /// To be called for x = 0, 1, ... in order.
    T at(unsigned int x)
    {
        T const right = column(x + 2);
        T const value = keep(keep(left_, middle_), right);
        left_ = middle_;
        middle_ = right;
        return value;
    }

private:
    static constexpr Functor keep{};

    T column(unsigned int x) const { return keep(keep(rows_[0][x], rows_[1][x]), rows_[2][x]); }

    std::array<T const*, 3> rows_;
    T left_;
    T middle_;
};

/// Visits the rows of a leaf with the rows around them, which begin one voxel before the leaf.
template <class Source, class Visit>
void forEachRow(access::Block const& leaf, OffsetBox const& box, Source& source, Visit&& visit)
{
    ElementRows rows(box, leaf.getNumOfRows(), [&](std::size_t slot, int y, int z) {
        return source.row(slot, -1, y, z, leaf.getNumOfColumns() + 2);
    });
    for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
        for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
            rows.moveTo(y, z);
            visit(y, z, [&](int plan) { return std::array{rows.at(-1, plan), rows.at(0, plan), rows.at(1, plan)}; });
        }
    }
}

} // namespace details

/// 8-neighbourhood: the square of 3 x 3 voxels.
template <class Functor>
class Neighborhood8ColumnsReduction {
public:
    static filters::Use use() { return {box.reach()}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        details::forEachRow(leaf, box, source, [&](int y, int z, auto&& rowsOf) {
            details::MovingSquare<Functor, T> square(rowsOf(0));
            target.writeRow(y, z, [&](T* out) {
                for (unsigned int x = 0; x < leaf.getNumOfColumns(); ++x) {
                    out[x] = square.at(x);
                }
            });
        });
    }

private:
    static constexpr OffsetBox box{{-1, -1, 0}, {1, 1, 0}};
};

/// 26-neighbourhood: the cube of 3 x 3 x 3 voxels, square by square from front to back.
template <class Functor>
class Neighborhood26PlansReduction {
public:
    static filters::Use use() { return {box.reach()}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        using Square = details::MovingSquare<Functor, T>;
        details::forEachRow(leaf, box, source, [&](int y, int z, auto&& rowsOf) {
            Square front(rowsOf(-1));
            Square middle(rowsOf(0));
            Square back(rowsOf(1));
            target.writeRow(y, z, [&](T* out) {
                constexpr Functor keep;
                for (unsigned int x = 0; x < leaf.getNumOfColumns(); ++x) {
                    out[x] = keep(keep(front.at(x), middle.at(x)), back.at(x));
                }
            });
        });
    }

private:
    static constexpr OffsetBox box{{-1, -1, -1}, {1, 1, 1}};
};

} // namespace mox::morphology

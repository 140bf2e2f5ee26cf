#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <utility>

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/Lane.h"
#include "Morphology/private/neighborhoods.h"

namespace mox::morphology {

namespace details {

/// Where the reductions of a row go: to another row. The row after it may be fetched from memory meanwhile.
template <class T>
struct RowSink {
    T* out;
    T const* ahead;

    MOX_SSE41 void expect(unsigned int x) const { fetchToWrite(ahead, x); }
    MOX_SSE41 void put(unsigned int x, __m128i reduced) const { Lane<T>::store(out + x, reduced); }
    MOX_SSE41 void put(unsigned int x, __m128i reduced, unsigned int count) const
    {
        Lane<T>::store(out + x, reduced, count);
    }
};

/// The same for the last of three plans: to the output with those of the two plans before, of which they then take
/// the place of the first.
template <class Functor, class T>
struct PlansSink {
    T* front;
    T const* middle;
    T* out;
    T const* ahead;

    MOX_SSE41 void expect(unsigned int x) const { fetchToWrite(ahead, x); }
    MOX_SSE41 void put(unsigned int x, __m128i reduced) const
    {
        using L = Lane<T>;
        __m128i const before = reduce<T>(Functor(), L::load(front + x), L::load(middle + x));
        L::store(out + x, reduce<T>(Functor(), before, reduced));
        L::store(front + x, reduced);
    }
    MOX_SSE41 void put(unsigned int x, __m128i reduced, unsigned int count) const
    {
        using L = Lane<T>;
        __m128i const before = reduce<T>(Functor(), L::load(front + x, count), L::load(middle + x, count));
        L::store(out + x, reduce<T>(Functor(), before, reduced), count);
        L::store(front + x, reduced, count);
    }
};

/// The reduction of the squares of 3 x 3 voxels along the rows of a plan, each row a run of registers that are read
/// once. It keeps the reduction of the last two rows and never returns to a row, so that it works in place.
template <class Functor, class T>
class MovingSquareSimd {
public:
    /// Memory for a row.
    MovingSquareSimd(T* pair, unsigned int columns)
        : pair_(pair)
        , columns_(columns)
        , lastVector_((columns - 1) / L::size * L::size)
    {
    }

    /// The two rows above the first centre's lower neighbours.
    MOX_SSE41 void begin(filters::Line<T> const& above, filters::Line<T> const& centre)
    {
        for (unsigned int x = 0; x < lastVector_; x += L::size) {
            L::store(pair_ + x, keep(L::load(above.voxels + x), L::load(centre.voxels + x)));
        }
        unsigned int const rest = columns_ - lastVector_;
        L::store(pair_ + lastVector_,
                 keep(L::load(above.voxels + lastVector_, rest), L::load(centre.voxels + lastVector_, rest)), rest);
        left_ = Functor()(above.left, centre.left);
        right_ = Functor()(above.right, centre.right);
    }

    /// The reductions around the row `centre`; `next` is the row two below, to be fetched from memory meanwhile. The
    /// output may be the row `centre` itself.
    template <class Sink>
    MOX_SSE41 void row(filters::Line<T> const& centre, filters::Line<T> const& below, T const* next, Sink const& sink)
    {
        T const right = Functor()(right_, below.right);
        __m128i before = L::splat(Functor()(left_, below.left));
        left_ = Functor()(centre.left, below.left);
        right_ = Functor()(centre.right, below.right);
        if (lastVector_ > 0) {
            __m128i present = column(centre, below, 0);
            unsigned int x = 0;
            for (; x + L::size < lastVector_; x += L::size) {
                fetchToRead(next, x);
                sink.expect(x);
                __m128i const after = column(centre, below, x + L::size);
                sink.put(x, square(before, present, after));
                before = present;
                present = after;
            }
            __m128i const last = lastColumns(centre, below, right);
            sink.put(x, square(before, present, last));
            sink.put(lastVector_, square(present, last, L::splat(right)), columns_ - lastVector_);
        } else {
            __m128i const last = lastColumns(centre, below, right);
            sink.put(0, square(before, last, L::splat(right)), columns_);
        }
    }

private:
    using L = Lane<T>;

    MOX_SSE41 static __m128i keep(__m128i running, __m128i candidate)
    {
        return reduce<T>(Functor(), running, candidate);
    }

    MOX_SSE41 static __m128i square(__m128i before, __m128i present, __m128i after)
    {
        return keep(keep(L::earlier(before, present), present), L::later(present, after));
    }

    MOX_SSE41 __m128i column(filters::Line<T> const& centre, filters::Line<T> const& below, unsigned int x)
    {
        __m128i const low = L::load(below.voxels + x);
        __m128i const reduced = keep(L::load(pair_ + x), low);
        L::store(pair_ + x, keep(L::load(centre.voxels + x), low));
        return reduced;
    }

    /// The columns of the last register, which the row may leave partly empty, and the one beside the row.
    MOX_SSE41 __m128i lastColumns(filters::Line<T> const& centre, filters::Line<T> const& below, T right)
    {
        unsigned int const x = lastVector_;
        unsigned int const count = columns_ - x;
        __m128i const low = L::load(below.voxels + x, count);
        __m128i const reduced = keep(L::load(pair_ + x, count), low);
        L::store(pair_ + x, keep(L::load(centre.voxels + x, count), low), count);
        if (count == L::size) {
            return reduced;
        }
        T all[L::size];
        L::store(all, reduced);
        all[count] = right;
        return L::load(all);
    }

    T* pair_;
    unsigned int columns_;
    unsigned int lastVector_; ///< its first column
    T left_{};                ///< the pair's reduction beside the row
    T right_{};
};

/// Runs a moving square down a plan of a leaf; `put(y, write)` calls `write(sink)`.
template <class Functor, class Source, class Put>
void reducePlan(Source& source, int z, unsigned int rows, unsigned int columns, typename Source::Voxel* pair, Put&& put)
{
    using T = typename Source::Voxel;
    constexpr std::size_t numOfSlots = 4;
    auto const line = [&](int y) { return source.line(static_cast<std::size_t>(y + 1) % numOfSlots, y, z); };
    MovingSquareSimd<Functor, T> square(pair, columns);
    filters::Line<T> centre = line(0);
    square.begin(line(-1), centre);
    filters::Line<T> below = line(1);
    for (int y = 0; y < static_cast<int>(rows); ++y) {
        filters::Line<T> const next = y + 1 < static_cast<int>(rows) ? line(y + 2) : below;
        put(y, [&](auto const& sink) { square.row(centre, below, next.voxels, sink); });
        centre = below;
        below = next;
    }
}

} // namespace details

/// Twin of `Neighborhood8ColumnsReduction`.
template <class Functor>
class Neighborhood8ColumnsReductionSimd {
public:
    static filters::Use use() { return {{1, 1, 1, 1, 0, 0}, true, leafOfSmallElement}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        unsigned int const columns = leaf.getNumOfColumns();
        T* const pair = source.scratch(columns);
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            details::reducePlan<Functor>(source, z, leaf.getNumOfRows(), columns, pair, [&](int y, auto&& write) {
                target.writeRow(y, z, [&](T* out) { write(details::RowSink<T>{out, target.ahead(y + 1, z)}); });
            });
        }
    }
};

/// Twin of `Neighborhood26PlansReduction`. Each plan is reduced once; the reductions of two plans are kept.
template <class Functor>
class Neighborhood26PlansReductionSimd {
public:
    static filters::Use use() { return {{1, 1, 1, 1, 1, 1}, true, leafOfSmallElement}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        unsigned int const columns = leaf.getNumOfColumns();
        unsigned int const rows = leaf.getNumOfRows();
        std::size_t const voxelsOfPlan = std::size_t{rows} * columns;
        T* const pair = source.scratch(2 * voxelsOfPlan + columns);
        T* front = pair + columns;
        T* middle = front + voxelsOfPlan;
        auto const rowOf = [&](T* plan, int y) { return plan + static_cast<std::size_t>(y) * columns; };
        auto const keep = [&](T* plan, int z) {
            details::reducePlan<Functor>(source, z, rows, columns, pair, [&](int y, auto&& write) {
                write(details::RowSink<T>{rowOf(plan, y), nullptr});
            });
        };
        keep(front, -1);
        keep(middle, 0);
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            details::reducePlan<Functor>(source, z + 1, rows, columns, pair, [&](int y, auto&& write) {
                target.writeRow(y, z, [&](T* out) {
                    write(
                        details::PlansSink<Functor, T>{rowOf(front, y), rowOf(middle, y), out, target.ahead(y + 1, z)});
                });
            });
            std::swap(front, middle);
        }
    }
};

} // namespace mox::morphology

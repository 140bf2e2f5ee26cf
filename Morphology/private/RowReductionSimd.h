#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <numeric>
#include <span>
#include <type_traits>

#include "Morphology/private/Lane.h"

namespace mox::morphology {

/// Rows to be fetched from memory meanwhile, or null.
template <class T>
struct Ahead {
    T const* toRead = nullptr;
    T const* toWrite = nullptr;

    /// With a row that is in the cache anyway in place of null, so that no loop has to ask.
    Ahead orElse(T const* row) const { return {toRead != nullptr ? toRead : row, toWrite != nullptr ? toWrite : row}; }

    /// A line of the cache.
    MOX_SSE41 void fetch(std::size_t x) const
    {
        __builtin_prefetch(toRead + x, 0);
        __builtin_prefetch(toWrite + x, 1);
    }
};

/// One row more of a run: what it was before is reduced with an older row, and kept.
template <class T>
struct Rung {
    T const* older;
    T* out;
};

/// Reduces to each voxel of a row the voxels that the pointers see from there, in their order. The output is no row
/// that is read: the last register of a row may be made twice.
template <class Functor>
class RowReductionSimd {
public:
    template <class T>
    MOX_SSE41 static void row(T const* const* rows, std::size_t numOfRows, T* out, std::size_t count,
                              Ahead<T> const& ahead = {})
    {
        switch (numOfRows) {
        case 2:
            return reduceTo(Few<T, 2>(rows), out, count, ahead);
        case 3:
            return reduceTo(Few<T, 3>(rows), out, count, ahead);
        case 4:
            return reduceTo(Few<T, 4>(rows), out, count, ahead);
        case 5:
            return reduceTo(Few<T, 5>(rows), out, count, ahead);
        case 6:
            return reduceTo(Few<T, 6>(rows), out, count, ahead);
        case 7:
            return reduceTo(Few<T, 7>(rows), out, count, ahead);
        case 8:
            return reduceTo(Few<T, 8>(rows), out, count, ahead);
        default:
            return reduceTo(Many<T>{{rows, numOfRows}}, out, count, ahead);
        }
    }

    /// Of two rows, the first of which is passed over where it is NaN.
    template <class T>
    MOX_SSE41 static void pairOverNan(T const* const* rows, T* out, std::size_t count, Ahead<T> const& ahead)
    {
        reduceTo(PairOverNan<T>{rows[0], rows[1]}, out, count, ahead);
    }

    /// Doubles runs down the rows, rung by rung: each row that is made is the older one and then the one made before
    /// it, which stays in registers. The first older row may be passed over where it is NaN. An older row may be the
    /// one made before.
    template <bool passesOverNan, class T>
    MOX_SSE41 static void climb(T const* newest, std::span<Rung<T> const> rungs, std::size_t count,
                                Ahead<T> const& ahead)
    {
        switch (rungs.size()) {
        case 1:
            return climbOf<1, passesOverNan>(newest, rungs, count, ahead);
        case 2:
            return climbOf<2, passesOverNan>(newest, rungs, count, ahead);
        case 3:
            return climbOf<3, passesOverNan>(newest, rungs, count, ahead);
        case 4:
            return climbOf<4, passesOverNan>(newest, rungs, count, ahead);
        case 5:
            return climbOf<5, passesOverNan>(newest, rungs, count, ahead);
        default:
            assert(rungs.size() == mostRungs);
            return climbOf<6, passesOverNan>(newest, rungs, count, ahead);
        }
    }

    static constexpr std::size_t mostRungs = 6;

    /// Of the run of voxels from each one on, none of which is NaN. Runs double within registers, so that each voxel is
    /// loaded once; their order is kept, so that of equal voxels the first one stays. Of the row, more may be readable
    /// than the runs see; then its end needs nothing special.
    template <class T>
    MOX_SSE41 static void run(std::span<T const> row, std::size_t length, T* out, std::size_t count,
                              Ahead<T> const& ahead)
    {
        switch (length) {
        case 3:
            return runOf<3>(row, out, count, ahead);
        case 4:
            return runOf<4>(row, out, count, ahead);
        case 5:
            return runOf<5>(row, out, count, ahead);
        case 6:
            return runOf<6>(row, out, count, ahead);
        case 7:
            return runOf<7>(row, out, count, ahead);
        case 8:
            return runOf<8>(row, out, count, ahead);
        case 16:
            return runOf<16>(row, out, count, ahead);
        default:
            assert(length == 32);
            return runOf<32>(row, out, count, ahead);
        }
    }

private:
    /// Registers: a line of the cache.
    static constexpr std::size_t atOnce = 4;

    template <class T>
    MOX_SSE41 static __m128i keep(__m128i running, __m128i candidate)
    {
        return reduce<T>(Functor(), running, candidate);
    }

    /// A known number of rows, whose addresses stay in registers.
    template <class T, std::size_t numOfRows>
    struct Few {
        T const* rows[numOfRows];

        explicit Few(T const* const* all) { std::copy_n(all, numOfRows, rows); }

        MOX_SSE41 __m128i at(std::size_t x) const
        {
            __m128i running = Lane<T>::load(rows[0] + x);
#pragma GCC unroll 8
            for (std::size_t k = 1; k < numOfRows; ++k) {
                running = keep<T>(running, Lane<T>::load(rows[k] + x));
            }
            return running;
        }

        template <std::size_t n>
        MOX_SSE41 void at(std::size_t x, __m128i (&running)[n]) const
        {
            for (std::size_t i = 0; i < n; ++i) {
                running[i] = at(x + i * Lane<T>::size);
            }
        }

        T voxel(std::size_t x) const
        {
            return Many<T>{rows}.voxel(x);
        }
    };

    template <class T>
    struct Many {
        std::span<T const* const> rows;

        template <std::size_t n>
        MOX_SSE41 void at(std::size_t x, __m128i (&running)[n]) const
        {
            for (std::size_t i = 0; i < n; ++i) {
                running[i] = Lane<T>::load(rows[0] + x + i * Lane<T>::size);
            }
            for (T const* const row : rows.subspan(1)) {
                for (std::size_t i = 0; i < n; ++i) {
                    running[i] = keep<T>(running[i], Lane<T>::load(row + x + i * Lane<T>::size));
                }
            }
        }

        T voxel(std::size_t x) const
        {
            T running = rows[0][x];
            for (T const* const row : rows.subspan(1)) {
                running = Functor()(running, row[x]);
            }
            return running;
        }
    };

    template <class T>
    struct PairOverNan {
        T const* first;
        T const* second;

        template <std::size_t n>
        MOX_SSE41 void at(std::size_t x, __m128i (&running)[n]) const
        {
            __m128i const worst = Lane<T>::splat(Functor::template worst<T>);
            for (std::size_t i = 0; i < n; ++i) {
                std::size_t const begin = x + i * Lane<T>::size;
                running[i] = keep<T>(keep<T>(worst, Lane<T>::load(first + begin)), Lane<T>::load(second + begin));
            }
        }

        T voxel(std::size_t x) const { return Functor()(Functor()(Functor::template worst<T>, first[x]), second[x]); }
    };

    template <std::size_t numOfRungs, bool passesOverNan, class T>
    struct Ladder {
        T const* newest;
        T const* older[numOfRungs];
        T* out[numOfRungs];

        Ladder(T const* row, std::span<Rung<T> const> rungs)
            : newest(row)
        {
            for (std::size_t k = 0; k < numOfRungs; ++k) {
                older[k] = rungs[k].older;
                out[k] = rungs[k].out;
            }
        }

        MOX_SSE41 void climb(std::size_t x) const
        {
            __m128i made = Lane<T>::load(newest + x);
#pragma GCC unroll 8
            for (std::size_t k = 0; k < numOfRungs; ++k) {
                __m128i first = Lane<T>::load(older[k] + x);
                if (k == 0 && passesOverNan) {
                    first = keep<T>(Lane<T>::splat(Functor::template worst<T>), first);
                }
                made = keep<T>(first, made);
                Lane<T>::store(out[k] + x, made);
            }
        }

        void climbVoxel(std::size_t x) const
        {
            T made = newest[x];
            for (std::size_t k = 0; k < numOfRungs; ++k) {
                T first = older[k][x];
                if (k == 0 && passesOverNan) {
                    first = Functor()(Functor::template worst<T>, first);
                }
                made = Functor()(first, made);
                out[k][x] = made;
            }
        }
    };

    template <std::size_t numOfRungs, bool passesOverNan, class T>
    MOX_SSE41 static void climbOf(T const* newest, std::span<Rung<T> const> rungs, std::size_t count,
                                  Ahead<T> const& ahead)
    {
        constexpr std::size_t size = Lane<T>::size;
        Ladder<numOfRungs, passesOverNan, T> const ladder(newest, rungs);
        Ahead<T> const fetched = ahead.orElse(ladder.out[0]);
        std::size_t x = 0;
        for (; x + atOnce * size <= count; x += atOnce * size) {
            fetched.fetch(x);
            for (std::size_t i = x; i < x + atOnce * size; i += size) {
                ladder.climb(i);
            }
        }
        for (; x + size <= count; x += size) {
            ladder.climb(x);
        }
        if (x < count && count >= size) {
            ladder.climb(count - size);
            return;
        }
        for (; x < count; ++x) {
            ladder.climbVoxel(x);
        }
    }

    /// Makes runs of `length` voxels of runs of `made`, fed register by register: what comes out begins `delay`
    /// registers before what went in.
    template <class T, int made, int length>
    class Doubling {
    public:
        static constexpr int delay = (std::min(made, length - made) - 1) / int{Lane<T>::size} + 1 +
                                     Doubling<T, std::min(2 * made, length), length>::delay;

        MOX_SSE41 __m128i feed(__m128i next)
        {
            __m128i const later =
                _mm_alignr_epi8(next, past_[numOfPast - 1], distance % size * static_cast<int>(sizeof(T)));
            __m128i const joined = keep<T>(past_[0], distance % size == 0 ? next : later);
            for (int i = 1; i < numOfPast; ++i) {
                past_[i - 1] = past_[i];
            }
            past_[numOfPast - 1] = next;
            return longer_.feed(joined);
        }

    private:
        static constexpr int size = Lane<T>::size;
        static constexpr int distance = std::min(made, length - made); // of the second half
        static constexpr int numOfPast = (distance - 1) / size + 1;

        __m128i past_[numOfPast] = {};
        Doubling<T, made + distance, length> longer_;
    };

    template <class T, int length>
    class Doubling<T, length, length> {
    public:
        static constexpr int delay = 0;

        MOX_SSE41 __m128i feed(__m128i next) { return next; }
    };

    template <int length, class T>
    MOX_SSE41 static void runOf(std::span<T const> row, T* out, std::size_t count, Ahead<T> const& ahead)
    {
        using Runs = Doubling<T, 1, length>;
        constexpr std::size_t size = Lane<T>::size;
        constexpr std::size_t delay = Runs::delay * size;
        Ahead<T> const fetched = ahead.orElse(out);
        T const* const first = row.data();
        std::size_t x = 0;
        if (delay + size <= row.size()) {
            Runs runs;
            for (std::size_t i = 0; i < delay; i += size) {
                runs.feed(Lane<T>::load(first + i));
            }
            std::size_t const end = std::min(count, row.size() - delay);
            for (; x + atOnce * size <= end; x += atOnce * size) {
                fetched.fetch(x);
                for (std::size_t i = x; i < x + atOnce * size; i += size) {
                    Lane<T>::store(out + i, runs.feed(Lane<T>::load(first + i + delay)));
                }
            }
            for (; x + size <= end; x += size) {
                Lane<T>::store(out + x, runs.feed(Lane<T>::load(first + x + delay)));
            }
            if (x < count && x + delay + size <= row.size()) {
                Lane<T>::store(out + x, runs.feed(Lane<T>::load(first + x + delay)),
                               static_cast<unsigned int>(count - x));
                return;
            }
        }
        T const* rows[length];
        std::iota(rows, rows + length, first);
        finish(Many<T>{rows}, x, out, count);
    }

    template <class Rows, class T>
    MOX_SSE41 static void reduceTo(Rows const& rows, T* out, std::size_t count, Ahead<T> const& ahead)
    {
        Ahead<T> const fetched = ahead.orElse(out);
        std::size_t x = 0;
        if constexpr (std::is_same_v<Rows, Many<T>>) { // two lines, as the loop over rows has its price too
            x = putLines<2>(rows, x, out, count, fetched);
        }
        x = putLines<1>(rows, x, out, count, fetched);
        finish(rows, x, out, count);
    }

    /// A number of lines of the cache at a time, as long as there are so many.
    template <std::size_t n, class Rows, class T>
    MOX_SSE41 static std::size_t putLines(Rows const& rows, std::size_t x, T* out, std::size_t count,
                                          Ahead<T> const& fetched)
    {
        constexpr std::size_t line = atOnce * Lane<T>::size;
        for (; x + n * line <= count; x += n * line) {
            for (std::size_t i = 0; i < n; ++i) {
                fetched.fetch(x + i * line);
            }
            put<n * atOnce>(rows, x, out);
        }
        return x;
    }

    /// The voxels from x on.
    template <class Rows, class T>
    MOX_SSE41 static void finish(Rows const& rows, std::size_t x, T* out, std::size_t count)
    {
        constexpr std::size_t size = Lane<T>::size;
        for (; x + size <= count; x += size) {
            put<1>(rows, x, out);
        }
        if (x == count) {
            return;
        }
        if (count >= size) {
            put<1>(rows, count - size, out);
            return;
        }
        for (; x < count; ++x) {
            out[x] = rows.voxel(x);
        }
    }

    template <std::size_t n, class Rows, class T>
    MOX_SSE41 static void put(Rows const& rows, std::size_t x, T* out)
    {
        __m128i running[n];
        rows.at(x, running);
        for (std::size_t i = 0; i < n; ++i) {
            Lane<T>::store(out + x + i * Lane<T>::size, running[i]);
        }
    }
};

} // namespace mox::morphology

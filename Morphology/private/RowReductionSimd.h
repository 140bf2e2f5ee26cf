#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>

#include "Morphology/private/Lane.h"

namespace mox::morphology {

/// Rows to be fetched from memory meanwhile, or null.
template <class T>
struct Ahead {
    T const* toRead = nullptr;
    T const* toWrite = nullptr;
};

/// Reduces to each voxel of a row the voxels that the pointers see from there, in their order. The output is no row
/// that is read: the last register of a row may be made twice.
template <class Functor>
class RowReductionSimd {
public:
    template <class T>
    MOX_SSE41 static void row(T const* const* rows, std::size_t numOfRows, T* out, unsigned int count,
                              Ahead<T> const& ahead = {})
    {
        switch (numOfRows) {
        case 2:
            return reduceTo<2>(Few<T, 2>(rows), out, count, ahead);
        case 3:
            return reduceTo<2>(Few<T, 3>(rows), out, count, ahead);
        case 4:
            return reduceTo<2>(Few<T, 4>(rows), out, count, ahead);
        case 5:
            return reduceTo<2>(Few<T, 5>(rows), out, count, ahead);
        case 6:
            return reduceTo<2>(Few<T, 6>(rows), out, count, ahead);
        case 7:
            return reduceTo<2>(Few<T, 7>(rows), out, count, ahead);
        case 8:
            return reduceTo<2>(Few<T, 8>(rows), out, count, ahead);
        default:
            return reduceTo<4>(Many<T>{{rows, numOfRows}}, out, count, ahead);
        }
    }

    /// Of two rows, the first of which is passed over where it is NaN.
    template <class T>
    MOX_SSE41 static void pairOverNan(T const* const* rows, T* out, unsigned int count, Ahead<T> const& ahead)
    {
        reduceTo<2>(PairOverNan<T>{rows[0], rows[1]}, out, count, ahead);
    }

    /// Of the run of voxels from each one on, where any grouping gives the same: integers, or floats without NaN and
    /// -0. Runs double within registers, so that each voxel is loaded once.
    template <class T>
    MOX_SSE41 static void run(T const* first, std::size_t length, T* out, unsigned int count, Ahead<T> const& ahead)
    {
        switch (length) {
        case 3:
            return runOf<3>(first, out, count, ahead);
        case 4:
            return runOf<4>(first, out, count, ahead);
        case 5:
            return runOf<5>(first, out, count, ahead);
        case 6:
            return runOf<6>(first, out, count, ahead);
        case 7:
            return runOf<7>(first, out, count, ahead);
        default:
            return runOf<8>(first, out, count, ahead);
        }
    }

    /// Whether `run` takes rows that are seen so.
    template <class T>
    static bool isRun(std::span<T const* const> rows)
    {
        if (sizeof(T) > 4 || rows.size() < 3 || rows.size() > 8) {
            return false;
        }
        return std::adjacent_find(rows.begin(), rows.end(), [](T const* a, T const* b) { return b != a + 1; }) ==
               rows.end();
    }

private:
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

        MOX_SSE41 __m128i at(unsigned int x) const
        {
            __m128i running = Lane<T>::load(rows[0] + x);
#pragma GCC unroll 8
            for (std::size_t k = 1; k < numOfRows; ++k) {
                running = keep<T>(running, Lane<T>::load(rows[k] + x));
            }
            return running;
        }

        template <unsigned int n>
        MOX_SSE41 void at(unsigned int x, __m128i (&running)[n]) const
        {
            for (unsigned int i = 0; i < n; ++i) {
                running[i] = at(x + i * Lane<T>::size);
            }
        }

        T voxel(unsigned int x) const
        {
            return Many<T>{rows}.voxel(x);
        }
    };

    template <class T>
    struct Many {
        std::span<T const* const> rows;

        template <unsigned int n>
        MOX_SSE41 void at(unsigned int x, __m128i (&running)[n]) const
        {
            for (unsigned int i = 0; i < n; ++i) {
                running[i] = Lane<T>::load(rows[0] + x + i * Lane<T>::size);
            }
            for (T const* const row : rows.subspan(1)) {
                for (unsigned int i = 0; i < n; ++i) {
                    running[i] = keep<T>(running[i], Lane<T>::load(row + x + i * Lane<T>::size));
                }
            }
        }

        T voxel(unsigned int x) const
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

        template <unsigned int n>
        MOX_SSE41 void at(unsigned int x, __m128i (&running)[n]) const
        {
            __m128i const worst = Lane<T>::splat(Functor::template worst<T>);
            for (unsigned int i = 0; i < n; ++i) {
                unsigned int const begin = x + i * Lane<T>::size;
                running[i] = keep<T>(keep<T>(worst, Lane<T>::load(first + begin)), Lane<T>::load(second + begin));
            }
        }

        T voxel(unsigned int x) const { return Functor()(Functor()(Functor::template worst<T>, first[x]), second[x]); }
    };

    /// The run twice as long or less: its second half begins `distance` voxels later.
    template <class T, int distance>
    MOX_SSE41 static __m128i joined(__m128i present, __m128i next)
    {
        return keep<T>(present, _mm_alignr_epi8(next, present, distance * static_cast<int>(sizeof(T))));
    }

    /// A register is done when those of shorter runs behind it are.
    template <int length, class T>
    MOX_SSE41 static void runOf(T const* first, T* out, unsigned int count, Ahead<T> const& ahead)
    {
        if constexpr (sizeof(T) <= 4) {
            constexpr unsigned int size = Lane<T>::size;
            constexpr int second = length == 3 ? 1 : 2;
            unsigned int x = 0;
            if (4 * size <= count) {
                __m128i voxels = Lane<T>::load(first + 2 * size);
                __m128i pairs = joined<T, 1>(Lane<T>::load(first + size), voxels);
                __m128i fours =
                    joined<T, second>(joined<T, 1>(Lane<T>::load(first), Lane<T>::load(first + size)), pairs);
                for (; x + 4 * size <= count; x += size) {
                    fetchToRead(ahead.toRead, x);
                    fetchToWrite(ahead.toWrite, x);
                    __m128i const nextVoxels = Lane<T>::load(first + x + 3 * size);
                    __m128i const nextPairs = joined<T, 1>(voxels, nextVoxels);
                    __m128i const nextFours = joined<T, second>(pairs, nextPairs);
                    if constexpr (length > 4) {
                        Lane<T>::store(out + x, joined<T, length - 4>(fours, nextFours));
                    } else {
                        Lane<T>::store(out + x, fours);
                    }
                    voxels = nextVoxels;
                    pairs = nextPairs;
                    fours = nextFours;
                }
            }
            T const* rows[length];
            std::iota(rows, rows + length, first);
            finish(Few<T, length>(rows), x, out, count);
        }
    }

    /// n registers at a time.
    template <unsigned int n, class Rows, class T>
    MOX_SSE41 static void reduceTo(Rows const& rows, T* out, unsigned int count, Ahead<T> const& ahead)
    {
        constexpr unsigned int size = Lane<T>::size;
        unsigned int x = 0;
        for (; x + n * size <= count; x += n * size) {
            fetchToRead(ahead.toRead, x);
            fetchToWrite(ahead.toWrite, x);
            put<n>(rows, x, out);
        }
        finish(rows, x, out, count);
    }

    /// The voxels from x on.
    template <class Rows, class T>
    MOX_SSE41 static void finish(Rows const& rows, unsigned int x, T* out, unsigned int count)
    {
        constexpr unsigned int size = Lane<T>::size;
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

    template <unsigned int n, class Rows, class T>
    MOX_SSE41 static void put(Rows const& rows, unsigned int x, T* out)
    {
        __m128i running[n];
        rows.at(x, running);
        for (unsigned int i = 0; i < n; ++i) {
            Lane<T>::store(out + x + i * Lane<T>::size, running[i]);
        }
    }
};

} // namespace mox::morphology

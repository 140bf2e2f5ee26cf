#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <type_traits>

#include "Morphology/private/Lane.h"

namespace mox::morphology {

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
        constexpr std::size_t line = Lane<T>::perLine * Lane<T>::size;
        for (; x + n * line <= count; x += n * line) {
            for (std::size_t i = 0; i < n; ++i) {
                fetched.fetch(x + i * line);
            }
            put<n * Lane<T>::perLine>(rows, x, out);
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

#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <numeric>
#include <span>

#include "Morphology/private/Lane.h"
#include "Morphology/private/RowReductionSimd.h"

namespace mox::morphology {

/// Makes runs of voxels side by side.
template <class Functor>
class RunSimd {
public:
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
    template <class T>
    MOX_SSE41 static __m128i keep(__m128i running, __m128i candidate)
    {
        return reduce<T>(Functor(), running, candidate);
    }

    /// Makes runs of `length` voxels of runs of `made`, fed register by register: what comes out begins `delay`
    /// registers before what went in. Runs of 5 voxels a, b, c, ... in registers of four:
    ///
    ///     fed                 abcd   efgh   ijkl   mnop
    ///     runs of 2                  ab ..  ef ..  ij ..     each voxel with the one at distance 1
    ///     runs of 4                         a-d .. e-h ..    each run with the one at distance 2
    ///     runs of 5                                a-e ..    distance 1 again: they overlap
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
            for (; x + Lane<T>::perLine * size <= end; x += Lane<T>::perLine * size) {
                fetched.fetch(x);
                for (std::size_t i = x; i < x + Lane<T>::perLine * size; i += size) {
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
        std::iota(rows, rows + length, first + x);
        RowReductionSimd<Functor>::row(rows, length, out + x, count - x);
    }
};

} // namespace mox::morphology

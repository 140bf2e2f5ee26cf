#pragma once

#include <cassert>
#include <cstddef>
#include <span>

#include "Morphology/private/Lane.h"

namespace mox::morphology {

/// One row more of a run: what it was before is reduced with an older row, and kept.
template <class T>
struct Rung {
    T const* older;
    T* out;
};

/// Doubles runs down the rows.
template <class Functor>
class LadderSimd {
public:
    static constexpr std::size_t mostRungs = 6;

    /// Rung by rung: each row that is made is the older one and then the one made before it, which stays in registers.
    /// The first older row may be passed over where it is NaN. An older row may be the one made before.
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

private:
    template <class T>
    MOX_SSE41 static __m128i keep(__m128i running, __m128i candidate)
    {
        return reduce<T>(Functor(), running, candidate);
    }

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
        for (; x + Lane<T>::perLine * size <= count; x += Lane<T>::perLine * size) {
            fetched.fetch(x);
            for (std::size_t i = x; i < x + Lane<T>::perLine * size; i += size) {
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
};

} // namespace mox::morphology

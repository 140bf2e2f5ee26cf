#pragma once

#include <smmintrin.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "Morphology/private/functors.h"

/// Marks a function that may use SSE 4.1, and the instruction that fetches memory to be written, which older processors
/// pass over. Only such functions call each other, up to the kernel that the runner of that level starts; no file is
/// compiled for it, or the linker might choose its inline functions for all processors.
#define MOX_SSE41 [[gnu::target("sse4.1,prfchw")]]

namespace mox::morphology {

/// Has a voxel fetched that is to be read soon, of a row that lies in another page than those before it, where the
/// processor would not do so by itself. Null is passed over.
template <class T>
MOX_SSE41 inline void fetchToRead(T const* row, unsigned int x)
{
    if (row != nullptr) {
        __builtin_prefetch(row + x, 0);
    }
}

template <class T>
MOX_SSE41 inline void fetchToWrite(T const* row, unsigned int x)
{
    if (row != nullptr) {
        __builtin_prefetch(row + x, 1);
    }
}

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

/// A register of voxels of type T.
template <class T>
struct Lane {
    using Register = __m128i;
    static constexpr unsigned int size = 16 / sizeof(T);
    /// Registers to a line of the cache.
    static constexpr std::size_t perLine = 4;

    MOX_SSE41 static Register load(T const* voxels)
    {
        return _mm_loadu_si128(reinterpret_cast<Register const*>(voxels));
    }

    /// The rest of the register is zero.
    MOX_SSE41 static Register load(T const* voxels, unsigned int count)
    {
        if (count == size) {
            return load(voxels);
        }
        T all[size] = {};
        std::copy_n(voxels, count, all);
        return load(all);
    }

    MOX_SSE41 static void store(T* voxels, Register r) { _mm_storeu_si128(reinterpret_cast<Register*>(voxels), r); }

    MOX_SSE41 static void store(T* voxels, Register r, unsigned int count)
    {
        if (count == size) {
            store(voxels, r);
            return;
        }
        T all[size];
        store(all, r);
        std::copy_n(all, count, voxels);
    }

    MOX_SSE41 static Register splat(T voxel)
    {
        T all[size];
        std::fill_n(all, size, voxel);
        return load(all);
    }

    /// The register as it would have been loaded one voxel earlier, `before` being what was loaded a register earlier.
    MOX_SSE41 static Register earlier(Register before, Register r)
    {
        return _mm_alignr_epi8(r, before, 16 - int{sizeof(T)});
    }

    MOX_SSE41 static Register later(Register r, Register after) { return _mm_alignr_epi8(after, r, int{sizeof(T)}); }
};

/// Lane by lane the larger voxel; the running one where they are equal or unordered.
template <class T>
MOX_SSE41 inline __m128i reduce(details::DilationFunctor, __m128i running, __m128i candidate)
{
    if constexpr (std::is_same_v<T, unsigned char>) {
        return _mm_max_epu8(candidate, running);
    } else if constexpr (std::is_same_v<T, unsigned short>) {
        return _mm_max_epu16(candidate, running);
    } else if constexpr (std::is_same_v<T, unsigned int>) {
        return _mm_max_epu32(candidate, running);
    } else if constexpr (std::is_same_v<T, signed char>) {
        return _mm_max_epi8(candidate, running);
    } else if constexpr (std::is_same_v<T, short>) {
        return _mm_max_epi16(candidate, running);
    } else if constexpr (std::is_same_v<T, int>) {
        return _mm_max_epi32(candidate, running);
    } else if constexpr (std::is_same_v<T, float>) {
        return _mm_castps_si128(_mm_max_ps(_mm_castsi128_ps(candidate), _mm_castsi128_ps(running)));
    } else {
        static_assert(std::is_same_v<T, double>);
        return _mm_castpd_si128(_mm_max_pd(_mm_castsi128_pd(candidate), _mm_castsi128_pd(running)));
    }
}

/// Lane by lane the smaller voxel; the running one where they are equal or unordered.
template <class T>
MOX_SSE41 inline __m128i reduce(details::ErosionFunctor, __m128i running, __m128i candidate)
{
    if constexpr (std::is_same_v<T, unsigned char>) {
        return _mm_min_epu8(candidate, running);
    } else if constexpr (std::is_same_v<T, unsigned short>) {
        return _mm_min_epu16(candidate, running);
    } else if constexpr (std::is_same_v<T, unsigned int>) {
        return _mm_min_epu32(candidate, running);
    } else if constexpr (std::is_same_v<T, signed char>) {
        return _mm_min_epi8(candidate, running);
    } else if constexpr (std::is_same_v<T, short>) {
        return _mm_min_epi16(candidate, running);
    } else if constexpr (std::is_same_v<T, int>) {
        return _mm_min_epi32(candidate, running);
    } else if constexpr (std::is_same_v<T, float>) {
        return _mm_castps_si128(_mm_min_ps(_mm_castsi128_ps(candidate), _mm_castsi128_ps(running)));
    } else {
        static_assert(std::is_same_v<T, double>);
        return _mm_castpd_si128(_mm_min_pd(_mm_castsi128_pd(candidate), _mm_castsi128_pd(running)));
    }
}

} // namespace mox::morphology

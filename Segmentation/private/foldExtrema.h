#pragma once

#include <Moxelcore/Core/Integers.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <numeric>

#include "Core/private/forEachRealVoxel.h"

namespace mox::analysis {

__extension__ using Int128 = __int128;

/// A sum of voxels: exact for integers, and hence the same in any order.
template <class T>
struct ExtremaSum {
    static constexpr std::size_t numOfLanes = 1;
    Int128 value = 0;

    void join(ExtremaSum const& other) { value += other.value; }
    double over(uint64 count) const { return static_cast<double>(value) / static_cast<double>(count); }
};

/// Several sums side by side, each in double and in the order of its voxels.
template <std::floating_point T>
struct ExtremaSum<T> {
    static constexpr std::size_t numOfLanes = 8;
    std::array<double, numOfLanes> lanes = {};

    void join(ExtremaSum const& other)
    {
        for (std::size_t i = 0; i < numOfLanes; ++i) {
            lanes[i] += other.lanes[i];
        }
    }
    double over(uint64 count) const
    {
        return std::accumulate(lanes.begin(), lanes.end(), 0.0) / static_cast<double>(count);
    }
};

/// Takes voxels into minimum, maximum and sum. A voxel replaces an extremum by a strict comparison. Voxel i belongs to
/// the sum's lane i modulo their number.
template <class T>
void foldExtrema(T const* voxels, std::size_t count, T& minimum, T& maximum, ExtremaSum<T>& sum);

#define MOX_DECLARE(T) extern template void foldExtrema(T const*, std::size_t, T&, T&, ExtremaSum<T>&);
MOX_FOR_EACH_REAL_VOXEL(MOX_DECLARE)
#undef MOX_DECLARE

} // namespace mox::analysis

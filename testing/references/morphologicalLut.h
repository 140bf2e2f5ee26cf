#pragma once

#include <cstddef>
#include <vector>

#include "Core/private/access/Sizes.h"

namespace mox::testing {

/// The index of the pattern around a voxel, from the definition: bits in raster order, 0 outside of the image.
/// `depth` is 1 in space and 0 in the plane.
template <class T>
unsigned int patternReference(access::Sizes const& sizes, std::vector<T> const& voxels, std::size_t volume, int x,
                              int y, int z, int depth)
{
    unsigned int index = 0;
    unsigned int bit = 0;
    for (int dz = -depth; dz <= depth; ++dz) {
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx, ++bit) {
                auto const isInside = [](int p, unsigned int size) { return p >= 0 && p < static_cast<int>(size); };
                if (!isInside(x + dx, sizes.columns) || !isInside(y + dy, sizes.rows) ||
                    !isInside(z + dz, sizes.plans)) {
                    continue;
                }
                std::size_t const plane = volume * sizes.plans + static_cast<std::size_t>(z + dz);
                std::size_t const row = plane * sizes.rows + static_cast<std::size_t>(y + dy);
                index |= voxels[row * sizes.columns + static_cast<std::size_t>(x + dx)] != 0 ? 1U << bit : 0U;
            }
        }
    }
    return index;
}

/// One pass of a look-up table; actions by their numbers.
template <class T, class Lut>
std::vector<T> lutPassReference(access::Sizes const& sizes, std::vector<T> const& voxels, Lut const& lut, int matching,
                                int noMatching, int depth)
{
    std::vector<T> result;
    std::size_t const volumes = std::size_t{sizes.timeSeries} * sizes.spectralSeries;
    for (std::size_t volume = 0; volume < volumes; ++volume) {
        for (int z = 0; z < static_cast<int>(sizes.plans); ++z) {
            for (int y = 0; y < static_cast<int>(sizes.rows); ++y) {
                for (int x = 0; x < static_cast<int>(sizes.columns); ++x) {
                    T const voxel = voxels[result.size()];
                    bool const isHit = lut[patternReference(sizes, voxels, volume, x, y, z, depth)] != 0;
                    int const action = isHit ? matching : noMatching;
                    result.push_back(action == 0   ? T(0)
                                     : action == 1 ? T(1)
                                     : action == 2 ? T(voxel != 0 ? 0 : 1)
                                                   : voxel);
                }
            }
        }
    }
    return result;
}

/// Passes until one changes nothing or brings back the image of two passes before.
template <class T, class Lut>
std::vector<T> lutReference(access::Sizes const& sizes, std::vector<T> voxels, Lut const& lut, int matching,
                            int noMatching, int depth)
{
    std::vector<T> before;
    for (std::size_t i = 0; i < voxels.size(); ++i) {
        std::vector<T> next = lutPassReference(sizes, voxels, lut, matching, noMatching, depth);
        if (next == voxels || next == before) {
            return voxels;
        }
        before = voxels;
        voxels = next;
    }
    return voxels;
}

} // namespace mox::testing

#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "Morphology/private/Lane.h"
#include "Morphology/private/neighborhoods.h"

namespace mox::morphology {

namespace details {

/// All bits of the lanes that hold NaN or -0.
template <class T>
MOX_SSE41 inline __m128i unorderedLanes(__m128i r)
{
    __m128i const negativeZero = Lane<T>::splat(T(-0.0));
    if constexpr (std::is_same_v<T, float>) {
        __m128 const voxels = _mm_castsi128_ps(r);
        return _mm_or_si128(_mm_castps_si128(_mm_cmpunord_ps(voxels, voxels)), _mm_cmpeq_epi32(r, negativeZero));
    } else {
        static_assert(std::is_same_v<T, double>);
        __m128d const voxels = _mm_castsi128_pd(r);
        return _mm_or_si128(_mm_castpd_si128(_mm_cmpunord_pd(voxels, voxels)), _mm_cmpeq_epi64(r, negativeZero));
    }
}

template <class T>
MOX_SSE41 bool holdsUnordered(T const* voxels, unsigned int count)
{
    __m128i found = _mm_setzero_si128();
    unsigned int x = 0;
    for (; x + Lane<T>::size <= count; x += Lane<T>::size) {
        found = _mm_or_si128(found, unorderedLanes<T>(Lane<T>::load(voxels + x)));
    }
    return _mm_testz_si128(found, found) == 0 || std::any_of(voxels + x, voxels + count, [](T voxel) {
               return std::isnan(voxel) || (voxel == 0 && std::signbit(voxel));
           });
}

} // namespace details

/// Whether the voxels of the image within a box around the voxels of a leaf hold NaN, which compares with nothing, or
/// -0, which is another value than the 0 that it equals.
template <class Source>
bool holdsUnordered(access::Block const& leaf, OffsetBox const& around, Source& source)
{
    filters::Bounds const image = source.image();
    auto const begin = [](int least, int first) { return std::max(least, first); };
    auto const end = [](unsigned int size, int most, int last) {
        return std::min(static_cast<int>(size) + most, last);
    };
    int const firstColumn = begin(around.least.column, image.firstColumn);
    int const endColumn = end(leaf.getNumOfColumns(), around.most.column, image.endColumn);
    for (int z = begin(around.least.plan, image.firstPlan);
         z < end(leaf.getNumOfPlans(), around.most.plan, image.endPlan); ++z) {
        for (int y = begin(around.least.row, image.firstRow);
             y < end(leaf.getNumOfRows(), around.most.row, image.endRow); ++y) {
            auto const width = static_cast<unsigned int>(endColumn - firstColumn);
            if (details::holdsUnordered(source.row(0, firstColumn, y, z, width), width)) {
                return true;
            }
        }
    }
    return false;
}

} // namespace mox::morphology

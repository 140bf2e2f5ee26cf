#pragma once

#include <algorithm>

#include "Core/private/access/Sizes.h"

namespace mox::access {

constexpr char const* readFailure = "Error in readRowAt implementation, return value is false";
constexpr char const* writeFailure = "Error in writeRowAt implementation, return value is false";

inline bool isInside(int coordinate, unsigned int size)
{
    return coordinate >= 0 && static_cast<unsigned int>(coordinate) < size;
}

/// An image without voxels has no spectral index either; 0 is accepted there, and nothing is read.
inline bool isSpectralIndex(int s, Sizes const& sizes)
{
    return isInside(s, sizes.empty() ? 1 : sizes.spectralSeries);
}

/// The part of a row that lies between the image's first and last column, counted in voxels of the row.
struct InsidePart {
    int64 left;  ///< voxels before the inside part
    int64 count; ///< voxels inside, 0 or more
    int64 right; ///< voxels behind the inside part

    InsidePart(int64 x, int64 length, unsigned int columns)
        : left(std::clamp<int64>(-x, 0, length))
        , count(std::max<int64>(std::min<int64>(x + length, columns) - std::max<int64>(x, 0), 0))
        , right(length - left - count)
    {
    }
};

} // namespace mox::access

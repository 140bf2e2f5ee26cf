#pragma once

#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Integers.h>

namespace mox::access {

/// Positions are numbers of type `int`, and so are those beside an image, as far from it as it is large. No image may
/// have more elements in a dimension.
constexpr unsigned int mostElements = 1U << 30U;

/// The five sizes of an image.
struct Sizes {
    unsigned int columns = 0;
    unsigned int rows = 0;
    unsigned int plans = 0;
    unsigned int timeSeries = 0;
    unsigned int spectralSeries = 0;

    static Sizes of(ImageModel const& image)
    {
        return {image.getSize(COLUMNS), image.getSize(ROWS), image.getSize(PLANS), image.getSize(TIME_SERIES),
                image.getSize(SPECTRAL_SERIES)};
    }

    uint64 numOfVoxels() const { return uint64{columns} * rows * plans * timeSeries * spectralSeries; }
    bool empty() const { return numOfVoxels() == 0; }

    bool operator==(Sizes const&) const = default;
};

inline bool allocate(ImageModel& image, VoxelTypes voxelType, Sizes const& sizes)
{
    return image.allocate(voxelType, sizes.columns, sizes.rows, sizes.plans, sizes.timeSeries, sizes.spectralSeries);
}

} // namespace mox::access

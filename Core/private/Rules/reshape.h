#pragma once

#include "Core/private/Rules/imageComparison.h"
#include "Core/private/access/Sizes.h"

namespace mox::rules {

/// Gives an image a voxel type and the sizes and calibration of another. The voxels survive when only the
/// calibration differs. What counts is the image's state afterwards, not what its operations return.
inline bool reshape(ImageModel& image, VoxelTypes voxelType, ImageModel const& other)
{
    if (&image == &other) {
        return true; // even with a NaN in its calibration, which equals nothing
    }
    access::Sizes const sizes = access::Sizes::of(other);
    auto const hasShape = [&] { return image.getVoxelType() == voxelType && access::Sizes::of(image) == sizes; };
    if (!hasShape()) {
        access::allocate(image, voxelType, sizes);
    }
    if (!haveSameCalibration(image, other)) {
        copyCalibration(other, image);
    }
    return hasShape() && haveSameCalibration(image, other);
}

} // namespace mox::rules

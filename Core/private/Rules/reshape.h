#pragma once

#include "Core/private/Rules/imageComparison.h"
#include "Core/private/access/Sizes.h"

namespace mox::rules {

/// Gives an image a voxel type, sizes, and the calibration of another. The voxels survive when only the calibration
/// differs. What counts is the image's state afterwards, not what its operations return.
inline bool reshape(ImageModel& image, VoxelTypes voxelType, access::Sizes const& sizes, ImageModel const& calibrated)
{
    auto const hasShape = [&] { return image.getVoxelType() == voxelType && access::Sizes::of(image) == sizes; };
    if (!hasShape()) {
        access::allocate(image, voxelType, sizes);
    }
    if (!haveSameCalibration(image, calibrated)) {
        copyCalibration(calibrated, image);
    }
    return hasShape() && haveSameCalibration(image, calibrated);
}

/// The same with the sizes of the other. An image that is the other is left alone, even with a NaN in its calibration,
/// which equals nothing.
inline bool reshape(ImageModel& image, VoxelTypes voxelType, ImageModel const& other)
{
    return &image == &other || reshape(image, voxelType, access::Sizes::of(other), other);
}

} // namespace mox::rules

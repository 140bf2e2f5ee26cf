#pragma once

#include <Moxelcore/Core/ImageModel.h>

namespace mox::access {

/// Copies all voxels of an image to another of the same voxel type and sizes, on the calling thread. Throws
/// `UnexpectedError` when one of them fails.
void copyVoxels(ImageModel const& from, ImageModel& to);

} // namespace mox::access

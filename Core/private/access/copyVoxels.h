#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <functional>

namespace mox::access {

/// Copies all voxels of an image to another of the same voxel type and sizes, on the calling thread, until it is
/// stopped. Throws `UnexpectedError` when one of them fails.
void copyVoxels(
    ImageModel const& from, ImageModel& to, std::function<bool()> const& isStopped = [] { return false; });

} // namespace mox::access

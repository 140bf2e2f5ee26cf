#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <vector>

#include "benchmarks/Cases.h"

namespace mox::benchmarks {

/// Gives the image random voxels of 0 to 255, always the same.
void fillWithNoise(memory::InMemoryImage& image, VoxelTypes type, Size const& size);

std::vector<double> voxelsOf(memory::InMemoryImage& image);

} // namespace mox::benchmarks

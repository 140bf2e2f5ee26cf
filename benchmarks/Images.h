#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <vector>

#include "benchmarks/Cases.h"

namespace mox::benchmarks {

/// Gives the image random whole numbers from 0 on, `levels` different ones, always the same.
void fillWithNoise(memory::InMemoryImage& image, VoxelTypes type, Size const& size, unsigned int levels);

/// Of all series.
std::size_t numOfVoxels(ImageModel const& image);

std::vector<double> voxelsOf(memory::InMemoryImage& image);

} // namespace mox::benchmarks

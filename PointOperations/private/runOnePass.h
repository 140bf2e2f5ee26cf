#pragma once

#include "Core/private/filters/ImageToImageFilter.h"

namespace mox::point_operations {

/// Runs a point kernel from the algorithm's "input" to its "output", which has the same voxel type.
template <class T, class Algorithm, class Kernel>
void runOnePass(Algorithm& algorithm, Kernel const& kernel)
{
    ImageToImageFilter3d<T, T, Kernel> filter(&algorithm, kernel);
    filter.setInput(*algorithm.input.get());
    filter.setOutput(*algorithm.output.get());
    filter.run();
}

} // namespace mox::point_operations

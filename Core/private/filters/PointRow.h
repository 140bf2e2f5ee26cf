#pragma once

#include <cstddef>
#include <utility>

#include "Core/private/filters/Store.h"

namespace mox::filters {

/// A point kernel without its types: makes `count` voxels of an output row of as many of each input row. The output
/// row may be one of the input rows.
struct PointRow {
    void const* kernel;
    void (*apply)(void const* kernel, void const* const* inputs, void* output, std::size_t count);

    void operator()(void const* const* inputs, void* output, std::size_t count) const
    {
        apply(kernel, inputs, output, count);
    }
};

/// The kernel must outlive the result.
template <class Kernel, class Out, class... In>
PointRow pointRow(Kernel const& kernel)
{
    return {&kernel, [](void const* erased, void const* const* inputs, void* output, std::size_t count) {
                [&]<std::size_t... I>(std::index_sequence<I...>)
                {
                    static_cast<Kernel const*>(erased)->row(static_cast<In const*>(inputs[I])...,
                                                            static_cast<Out*>(output), count);
                }
                (std::index_sequence_for<In...>());
            }};
}

/// Voxels side by side in memory.
struct Stretch {
    void const* voxels;
    std::size_t voxelSize;
};

constexpr std::size_t maxNumOfInputs = 3;

/// Applies a kernel to stretches of `count` voxels.
void applyToStretch(PointRow const& kernel, Stretch const* inputs, std::size_t numOfInputs, void* output,
                    std::size_t outputVoxelSize, std::size_t count, Store store);

} // namespace mox::filters

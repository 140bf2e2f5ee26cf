#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>
#include <Moxelcore/Core/Integers.h>

#include <array>
#include <cstddef>

#include "Core/private/filters/PointRow.h"

namespace mox::point_operations {

/// The operator of two images with the number in the place of the second: a short row of it serves again and again,
/// from the fastest cache.
class ArithmeticValueProcessingScalarGeneric {
public:
    /// `operation` takes voxels of the image's type and of the number's.
    ArithmeticValueProcessingScalarGeneric(filters::PointRow const& operation, VoxelTypes imageType,
                                           VoxelTypes outputType, VoxelTypes numberType, double number);

    /// The kernel without its types, for as long as this lives.
    filters::PointRow row() const;

private:
    static constexpr std::size_t rowLength = 512;

    void apply(char const* in, char* out, std::size_t count) const;

    filters::PointRow operation_;
    std::size_t inputVoxelSize_;
    std::size_t outputVoxelSize_;
    alignas(16) std::array<std::byte, rowLength * sizeof(double)> numbers_ = {};
};

} // namespace mox::point_operations

#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::point_operations {

/// The bitwise complement of an integer image.
///
/// | property | type                | default | |
/// |----------|---------------------|---------|-|
/// | "input"  | `ImageModel const*` | null    | any integer voxel type, any sizes |
/// | "output" | `ImageModel*`       | null    | takes the input's sizes, calibration, voxel type and interpretation |
///
/// The output may be the input. All bits are complemented, whatever the image's interpretation: 1 of a uint8 image
/// becomes 254 also when it is binary. `InvertImage` swaps the 0 and 1 of binary images.
///
/// Throws `RuleException` for a null or non-integer input and for a null or fixed output.
class MOXELCORE_API LogicalNotProcessing final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(LogicalNotProcessing)

    Property<ImageModel const*> input;
    Property<ImageModel*> output;
};

} // namespace mox::point_operations

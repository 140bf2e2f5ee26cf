#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::point_operations {

/// Inverts an integer image: swaps 0 and 1 of a binary image, and dark and bright of any other.
///
/// | property | type                | default | |
/// |----------|---------------------|---------|-|
/// | "input"  | `ImageModel const*` | null    | any integer voxel type, any sizes |
/// | "output" | `ImageModel*`       | null    | takes the input's sizes, calibration, voxel type and interpretation |
///
/// The output may be the input. Each voxel becomes its bitwise complement, of which an image interpreted as binary
/// keeps the lowest bit alone: an unsigned voxel v becomes its type's largest value minus v, a signed one -1 - v.
///
/// Throws `RuleException` for a null or non-integer input and for a null or fixed output.
class MOXELCORE_API InvertImage final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(InvertImage)

    Property<ImageModel const*> input;
    Property<ImageModel*> output;
};

} // namespace mox::point_operations

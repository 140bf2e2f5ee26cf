#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::point_operations {

/// Shifts the bits of every voxel of an integer image by one count.
///
/// | property | type                | default | |
/// |----------|---------------------|---------|-|
/// | "input"  | `ImageModel const*` | null    | any integer voxel type, any sizes |
/// | "output" | `ImageModel*`       | null    | takes the input's sizes, calibration, voxel type and interpretation |
///
/// | member           | type           | default | |
/// |------------------|----------------|---------|-|
/// | `shiftCount`     | `unsigned int` | 1       | bits |
/// | `shiftDirection` | `int`          | 0       | 0 left, 1 right |
///
/// The two members are not named properties: a host that goes by names does not see them, and a run reads them once,
/// when its rules have passed.
///
/// The output may be the input. Bits are shifted within the voxel's width. From the right 0 enters; from the left 0
/// enters unsigned voxels and the sign signed ones. A count of the width or more leaves nothing but what entered.
///
/// Throws `RuleException` for a null or non-integer input and for a null or fixed output, and `InvalidCall` for
/// another direction: "The provided shiftDirection is unknow (value=2)".
class MOXELCORE_API BitShift final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(BitShift)

    Property<ImageModel const*> input;
    Property<ImageModel*> output;

    Property<unsigned int> shiftCount;
    Property<int> shiftDirection;
};

} // namespace mox::point_operations

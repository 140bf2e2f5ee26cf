#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/BinaryLogicalOperatorType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::point_operations {

/// A logical operator on the bits of two integer images, voxel by voxel.
///
/// | property          | type                        | default       | |
/// |-------------------|-----------------------------|---------------|-|
/// | "input1"          | `ImageModel const*`         | null          | any integer voxel type, any sizes |
/// | "input2"          | `ImageModel const*`         | null          | of the same type, sizes and calibration |
/// | "logicalOperator" | `BinaryLogicalOperatorType` | `LOGICAL_AND` | see below |
/// | "output"          | `ImageModel*`               | null          | may be one of the inputs |
///
/// The output takes the first input's sizes, calibration, voxel type and interpretation. With a of the first image and
/// b of the second, each bit becomes
///
/// | operator       | |
/// |----------------|-|
/// | `LOGICAL_AND`  | a and b |
/// | `LOGICAL_OR`   | a or b |
/// | `LOGICAL_XOR`  | either a or b |
/// | `LOGICAL_NAND` | not (a and b) |
/// | `LOGICAL_NOR`  | not (a or b) |
/// | `LOGICAL_NXOR` | both or neither of a and b |
/// | `LOGICAL_SUB`  | a and not b |
///
/// in the voxel's width, whatever the image's interpretation: the negated operators set the upper bits of binary
/// images too.
///
/// Throws `RuleException` for a null or non-integer input, for inputs that do not match, for a number that is no
/// operator, and for a null or fixed output.
class MOXELCORE_API LogicalImageProcessing final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(LogicalImageProcessing)

    Property<ImageModel const*> input1;
    Property<ImageModel const*> input2;
    PropertyEnumeration logicalOperator;
    Property<ImageModel*> output;
};

} // namespace mox::point_operations

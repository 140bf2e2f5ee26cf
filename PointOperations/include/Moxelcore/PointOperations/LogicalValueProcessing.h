#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/BinaryLogicalOperatorType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::point_operations {

/// A logical operator on the bits of every voxel of an integer image and of a number.
///
/// | property          | type                        | default       | |
/// |-------------------|-----------------------------|---------------|-|
/// | "input"           | `ImageModel const*`         | null          | any integer voxel type, any sizes |
/// | "inputValue"      | `int64`                     | 0             | its lowest bits, as many as a voxel has |
/// | "logicalOperator" | `BinaryLogicalOperatorType` | `LOGICAL_AND` | see `LogicalImageProcessing` |
/// | "output"          | `ImageModel*`               | null          | may be the input |
///
/// The output takes the input's sizes, calibration, voxel type and interpretation. The operators are those of
/// `LogicalImageProcessing`, with the voxel first.
///
/// Throws `RuleException` for a null or non-integer input, for a number that is no operator, and for a null or fixed
/// output.
class MOXELCORE_API LogicalValueProcessing final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(LogicalValueProcessing)

    Property<ImageModel const*> input;
    Property<int64> inputValue;
    PropertyEnumeration logicalOperator;
    Property<ImageModel*> output;
};

} // namespace mox::point_operations

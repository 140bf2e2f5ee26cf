#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/ArithmeticOperatorType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::point_operations {

/// An arithmetic operator on every voxel of an image and a number.
///
/// | property             | type                     | default          | |
/// |----------------------|--------------------------|------------------|-|
/// | "input"              | `ImageModel const*`      | null             | any real voxel type, any sizes |
/// | "inputValue"         | `double`                 | 0.0              | the second operand |
/// | "arithmeticOperator" | `ArithmeticOperatorType` | `ARITHMETIC_ADD` | see `ArithmeticImageProcessing` |
/// | "output"             | `ImageModel*`            | null             | takes the input's sizes and calibration |
///
/// The number counts as a voxel of the first of these types that holds it exactly: int16, int32 and int64 for a whole
/// number, float32 and float64 for any other. With it, the voxel type of the output and its voxels are those of
/// `ArithmeticImageProcessing` with a second image of that type: 2.0 added to a uint8 image gives int16, 2.5 float32,
/// 0.1 float64.
///
/// Errors are those of `ArithmeticImageProcessing`.
class MOXELCORE_API ArithmeticValueProcessing final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ArithmeticValueProcessing)

    Property<ImageModel const*> input;
    Property<double> inputValue;
    PropertyEnumeration arithmeticOperator;
    Property<ImageModel*> output;

protected:
    void applyAllRules() override;
};

} // namespace mox::point_operations

#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/GradientMagnitudeOutputType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::point_operations {

/// The amplitude of a gradient that is given by its three components.
///
/// | property     | type                          | default | |
/// |--------------|-------------------------------|---------|-|
/// | "input1"     | `ImageModel const*`           | null    | any real voxel type, any sizes |
/// | "input2"     | `ImageModel const*`           | null    | of the first input's type, sizes and calibration |
/// | "input3"     | `ImageModel const*`           | null    | the same |
/// | "outputMode" | `GradientMagnitudeOutputType` | 0       | see below |
/// | "output"     | `ImageModel*`                 | null    | may be one of the inputs |
///
/// The output takes the first input's sizes, calibration, voxel type and interpretation.
/// `GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN`, 0, gives the square root of the sum
/// of squares, computed in double and truncated for integer voxels.
/// `GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS`, 1, gives the largest absolute value, exactly; of floats a NaN in
/// the first component stays, one in another is passed over. Integer results beyond the voxel type become its largest
/// value, as does 128 of three int8 components of -128.
///
/// Throws `RuleException` for a null or complex input, inputs that do not match and a null or fixed output, and
/// `InvalidCall` for another mode: "The provided gradient outputMode is an unknown (value=5).".
class MOXELCORE_API GradientMagnitude3D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(GradientMagnitude3D)

    Property<ImageModel const*> input1;
    Property<ImageModel const*> input2;
    Property<ImageModel const*> input3;
    PropertyEnumeration outputMode;
    Property<ImageModel*> output;
};

} // namespace mox::point_operations

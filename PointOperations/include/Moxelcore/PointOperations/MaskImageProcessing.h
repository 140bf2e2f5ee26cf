#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::point_operations {

/// Keeps the voxels of an image where a mask is not 0, and writes 0 elsewhere.
///
/// | property      | type                | default | |
/// |---------------|---------------------|---------|-|
/// | "input"       | `ImageModel const*` | null    | any real voxel type, any sizes |
/// | "inputBinary" | `ImageModel const*` | null    | the mask: uint8, uint16, int8 or int16, one spectral channel |
/// | "output"      | `ImageModel*`       | null    | |
///
/// The mask has the input's sizes but for the spectral channels, all of which it serves. The output takes the input's
/// sizes, calibration, voxel type and interpretation. It may be the input; it may be the mask only when that has the
/// voxel type and the sizes of the input, since it is retyped and resized before it is read otherwise.
///
/// Throws `RuleException` for a null or complex input, for a mask that is null, of another type or of other sizes, and
/// for a null or fixed output.
class MOXELCORE_API MaskImageProcessing final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(MaskImageProcessing)

    Property<ImageModel const*> input;
    Property<ImageModel const*> inputBinary;
    Property<ImageModel*> output;
};

} // namespace mox::point_operations

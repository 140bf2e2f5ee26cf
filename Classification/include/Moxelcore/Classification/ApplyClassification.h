#pragma once

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::classification {

/// Labels each voxel of an image with the class whose texture it shows, by a trained model.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes; nothing is done with complex ones |
/// | "classificationModel" | `TextureClassificationModel const*` | null | a finalized model |
/// | "classifiedImage" | `ImageModel*` | null | integer voxels, label or value; becomes label |
///
/// The label of a class is its index plus 1. Only the features that the model has selected are measured. The result
/// has the input's columns, rows, plans and time series, of its first spectral index; it may be the input itself. A
/// result of floating voxels is not written to.
///
/// Throws `RuleException` for null, a result that is interpreted as binary or cannot be resized; `InvalidCall` for a
/// model without classifier or that is not finalized, and for what the features refuse.
class MOXELCORE_API ApplyClassification final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ApplyClassification)

    Property<ImageModel const*> input;
    Property<TextureClassificationModel const*> classificationModel;
    Property<ImageModel*> classifiedImage;
};

} // namespace mox::classification

#pragma once

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::classification {

/// Trains a texture classification model with the labelled voxels of an image.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes; nothing is done with complex ones |
/// | "mask" | `ImageModel const*` | null | integer voxels, binary or label; sizes and calibration of the input |
/// | "finalizeTraining" | `bool` | true | false when other images are to follow |
/// | "classificationModel" | `TextureClassificationModel*` | null | the model that learns |
///
/// The label of a class is its index plus 1; 0 is no label. The features of each labelled voxel, measured as
/// `segmentation::TextureFeatureExtraction2D` does, are one sample of its class. The work is done in one thread, in the
/// order of the voxels in memory. A cancelled run does not finalize. A mask of floating voxels trains nothing.
///
/// Throws `RuleException` for null, for a mask of other sizes or that is interpreted as values; `InvalidCall` for a
/// model without classifier and for what the features refuse; `BadIndex` for a label above the number of classes or
/// below 0, before anything is learnt; `RuntimeError` for a labelled voxel when the model is finalized.
class MOXELCORE_API TextureTraining2D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(TextureTraining2D)

    Property<ImageModel const*> input;
    Property<ImageModel const*> mask;
    Property<bool> finalizeTraining;
    Property<TextureClassificationModel*> classificationModel;
};

} // namespace mox::classification

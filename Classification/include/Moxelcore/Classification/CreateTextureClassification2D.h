#pragma once

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Segmentation/TextureRecipeProperties.h>

namespace mox::classification {

/// Makes a texture classification model that has learnt nothing yet.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "numOfClasses" | `unsigned int` | 2 | 2 to 65536 |
/// | "classificationModel" | `TextureClassificationModel**` | null | where to put the model, which the caller owns |
///
/// The parameters between them are those of `segmentation::TextureRecipeProperties`. A user quantile that is not
/// greater than 0 is replaced, by its place, with 0.2, 0.3, 0.4, 0.6, 0.7, 0.8.
///
/// Throws `RuleException` for parameters out of range, an empty group, a list of ratios that is not of six, and null
/// for "classificationModel"; `InvalidCall` for a feature that does not exist and for more classes than there may be;
/// `RuntimeError` when the group makes no feature, as do per-direction features without directions; `MemoryError`.
class MOXELCORE_API CreateTextureClassification2D final : public BaseAlgorithm,
                                                          public segmentation::TextureRecipeProperties {
    MOX_DECLARE_ALGORITHM(CreateTextureClassification2D)

    Property<unsigned int> numOfClasses;
    Property<TextureClassificationModel**> classificationModel;
};

} // namespace mox::classification

#pragma once

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/BaseAlgorithm.h>

namespace mox::classification {

/// Reads a texture classification model from a file, as `TextureClassificationModel::read` does.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "pathClassificationFile" | `String` | empty | the extension tells the form |
/// | "newClassification" | `TextureClassificationModel**` | null | where to put the model, which the caller owns |
///
/// Throws `RuleException` for null, `InvalidCall` for an empty path, `MemoryError`, and what
/// `TextureClassificationModel::read` throws, damaged archives as `UnexpectedError`.
class MOXELCORE_API ReadTextureClassificationModel final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ReadTextureClassificationModel)

    Property<String> pathClassificationFile;
    Property<TextureClassificationModel**> newClassification;
};

} // namespace mox::classification

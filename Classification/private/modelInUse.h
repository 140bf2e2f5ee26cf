#pragma once

#include <Moxelcore/Core/AlgoBorderInfluence.h>
#include <Moxelcore/Core/Exception.h>

#include "Classification/private/TextureClassificationModelPrivate.h"
#include "Core/private/Helper/raise.h"

namespace mox::classification {

/// Throws `InvalidCall` for a model without one.
inline LDAClassifier& classifierOf(TextureClassificationModelPrivate const& model, char const* source)
{
    if (!model.classifier) {
        helper::raise<InvalidCall>(source, "The classifier is invalid.");
    }
    return *model.classifier;
}

/// The window of the model; nothing without a model.
inline AlgoBorderInfluence borderInfluenceOf(TextureClassificationModel const* model)
{
    unsigned int const radius = model != nullptr ? ModelAccess::get(*model).radius : 0;
    return {radius, radius, 0, 0, 0};
}

} // namespace mox::classification

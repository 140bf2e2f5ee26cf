#pragma once

#include <Moxelcore/Classification/TextureClassificationModel.h>

#include <boost/shared_ptr.hpp>

#include "Classification/private/LDAClassifier.h"
#include "Segmentation/private/TextureRecipe.h"

namespace mox::classification {

/// What a model holds: the recipe, and the classifier once there is one.
struct TextureClassificationModelPrivate : segmentation::TextureRecipe {
    unsigned int numOfClasses = 2;
    boost::shared_ptr<LDAClassifier> classifier;

    TextureClassificationModelPrivate() = default;
    TextureClassificationModelPrivate(TextureClassificationModelPrivate const& other)
        : TextureRecipe(other)
        , numOfClasses(other.numOfClasses)
        , classifier(other.classifier ? other.classifier->clone() : nullptr)
    {
    }
    TextureClassificationModelPrivate& operator=(TextureClassificationModelPrivate const&) = delete;

    template <class Archive>
    void serialize(Archive& archive, unsigned int version);
};

/// What the library may do with a model and an application may not.
struct ModelAccess {
    static TextureClassificationModelPrivate& get(TextureClassificationModel& model) { return *model.private_; }
    static TextureClassificationModelPrivate const& get(TextureClassificationModel const& model)
    {
        return *model.private_;
    }
};

} // namespace mox::classification

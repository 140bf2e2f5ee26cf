#pragma once

#include <boost/make_shared.hpp>
#include <boost/serialization/nvp.hpp>
#include <boost/serialization/shared_ptr.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>

#include <string>

#include "Classification/private/TextureClassificationModelPrivate.h"
#include "Core/private/Helper/raise.h"
#include "Core/private/Serialization/VectorSerialization.h"
#include "Math/private/MathSerialization.h"

// The layout of a model file, for writing and for reading. The names and their order are the format: they stay.

namespace mox::classification {

template <class Archive>
void serialize(Archive& archive, FeatureInfo& info, unsigned int)
{
    archive& boost::serialization::make_nvp("separation_power", info.separation_power);
    archive& boost::serialization::make_nvp("used", info.used);
}

/// An entry for each class, null where there is no model yet.
template <class Archive>
void serializeModels(Archive& archive, char const* name, int numOfClasses, LDAClassifier::Models& models)
{
    if constexpr (Archive::is_loading::value) {
        models.clear();
    }
    for (int i = 0; i < numOfClasses; ++i) {
        auto const index = static_cast<std::size_t>(i);
        auto model = index < models.size() ? models[index] : nullptr;
        archive& boost::serialization::make_nvp((name + std::to_string(i)).c_str(), model);
        if constexpr (Archive::is_loading::value) {
            models.push_back(model);
        }
    }
}

template <class Archive>
void LDAClassifier::serialize(Archive& archive, unsigned int)
{
    using boost::serialization::make_nvp;
    archive& make_nvp("status", status_);
    archive& make_nvp("learning_space_dim", learningSpaceDimension_);
    archive& make_nvp("num_of_classes", numOfClasses_);
    archive& make_nvp("nbUsedFeatures", nbUsedFeatures_);
    serializeModels(archive, "intra_model_", numOfClasses_, intraModels_);
    serializeModels(archive, "intra_model_normalized", numOfClasses_, intraModelsNormalized_);
    serializeModels(archive, "intraGaussianModelsNormalizedReduced", numOfClasses_, intraModelsNormalizedReduced_);
    archive& make_nvp("inter_model", interModel_);
    archive& make_nvp("features_info", featuresInfo_);
    archive& make_nvp("min", min_);
    archive& make_nvp("max", max_);
    archive& make_nvp("norm_offset", normOffset_);
    archive& make_nvp("norm_factor", normFactor_);
    archive& make_nvp("normalizationFactorReduced", normFactorReduced_);
    archive& make_nvp("normalizationFactorReduced", normFactor_); // once more, under that name
    archive& make_nvp("increase_ratio", increaseRatio_);
    archive& make_nvp("normalization_method", normalizationMethod_);
}

template <class Archive>
void TextureClassificationModelPrivate::serialize(Archive& archive, unsigned int)
{
    using boost::serialization::make_nvp;
    std::string const supported = "LDAClassifier";
    std::string classifierName = supported;
    archive& make_nvp("numOfClasses", numOfClasses);
    archive& make_nvp("radius", radius);
    archive& make_nvp("textureFeaturesGroup", textureFeaturesGroup);
    archive& make_nvp("minGreyLevelCooccurrence", minGreyLevelCooccurrence);
    archive& make_nvp("maxGreyLevelCooccurrence", maxGreyLevelCooccurrence);
    archive& make_nvp("binSizeCooccurrence", binSizeCooccurrence);
    archive& make_nvp("directionCollection", directionCollection);
    archive& make_nvp("minGreyLevelHistogram", minGreyLevelHistogram);
    archive& make_nvp("maxGreyLevelHistogram", maxGreyLevelHistogram);
    archive& make_nvp("binSizeHistogram", binSizeHistogram);
    archive& make_nvp("userQuantileRatioHistogram", userQuantileRatioHistogram);
    archive& make_nvp("classifierName", classifierName);
    if (classifierName != supported) {
        helper::raise<SerializationException>("Classification/private/TextureClassificationModelPrivate",
                                              "Unknown classifier.");
    }
    if constexpr (Archive::is_loading::value) {
        classifier = boost::make_shared<LDAClassifier>();
    }
    archive& make_nvp("LDAClassifier", *classifier);
}

} // namespace mox::classification

#include <Moxelcore/Classification/CreateTextureClassification2D.h>

#include <boost/make_shared.hpp>

#include "Classification/private/newModel.h"
#include "Core/private/Helper/raise.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleLimitedValue.h"
#include "Core/private/runners.h"
#include "Segmentation/private/TextureFeatures.h"
#include "Segmentation/private/declareTextureRecipe.h"

namespace mox::classification {

namespace {

constexpr char const* source = "Classification/src/CreateTextureClassification2D";
constexpr unsigned int mostClasses = 65536; // each takes memory for all features at once

void replaceUnsetQuantiles(Vector<double>& ratios)
{
    constexpr double defaults[] = {0.2, 0.3, 0.4, 0.6, 0.7, 0.8};
    for (std::size_t i = 0; i < ratios.size(); ++i) {
        if (!(ratios[i] > 0)) {
            ratios[i] = defaults[i];
        }
    }
}

class ScalarCreateTextureClassification2DRunner final : public ScalarRunner<CreateTextureClassification2D> {
private:
    void execute(CreateTextureClassification2D& algorithm) const override
    {
        if (algorithm.numOfClasses > mostClasses) {
            helper::raise<InvalidCall>(source, "There are too many classes.");
        }
        auto model = newModel(source);
        TextureClassificationModelPrivate& content = ModelAccess::get(*model);
        static_cast<segmentation::TextureRecipe&>(content) = segmentation::recipeOf(algorithm);
        content.numOfClasses = algorithm.numOfClasses;
        replaceUnsetQuantiles(content.userQuantileRatioHistogram);
        auto const features =
            segmentation::expandFeatures(content.textureFeaturesGroup, content.directionCollection.size());
        content.classifier = boost::make_shared<LDAClassifier>();
        content.classifier->init(static_cast<int>(features.size()), static_cast<int>(content.numOfClasses));
        *algorithm.classificationModel.get() = model.release();
    }
};

Registration<CreateTextureClassification2D, ScalarCreateTextureClassification2DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(CreateTextureClassification2D)

void CreateTextureClassification2D::init()
{
    constexpr int atLeast = 0;
    declareInput(numOfClasses, "numOfClasses", 2U, rule<RuleLimitedValue>(2U, atLeast));
    segmentation::declareTextureRecipe(
        *this, [this](auto& property, auto const&... rest) { declareInput(property, rest...); });
    declareOutput(classificationModel, "classificationModel", nullptr, rule<RuleAssertNotNull>());
}

AlgoBorderInfluence CreateTextureClassification2D::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::classification

#pragma once

#include <Moxelcore/Segmentation/TextureRecipeProperties.h>

#include <algorithm>

#include "Core/private/Rules/RuleAssertContainerNoEmpty.h"
#include "Core/private/Rules/RuleAssertContainerSize.h"
#include "Core/private/Rules/RuleAssertPositiveOnly.h"
#include "Core/private/declare.h"
#include "Segmentation/private/TextureRecipe.h"

namespace mox::segmentation {

/// The lines of an `init` for the recipe: `declare` does what `declareInput` does.
template <class Declare>
void declareTextureRecipe(TextureRecipeProperties& recipe, Declare&& declare)
{
    constexpr std::size_t numOfUserQuantiles = 6;
    Vector<double> unset(numOfUserQuantiles);
    std::fill(unset.begin(), unset.end(), -1.0);
    declare(recipe.radius, "radius", 5U, rule<RuleAssertPositiveOnly>());
    declare(recipe.textureFeaturesGroup, "textureFeaturesGroup", Vector<int>(), rule<RuleAssertContainerNoEmpty>());
    declare(recipe.minGreyLevelCooccurrence, "minGreyLevelCooccurrence", 0.0);
    declare(recipe.maxGreyLevelCooccurrence, "maxGreyLevelCooccurrence", 255.0);
    declare(recipe.binSizeCooccurrence, "binSizeCooccurrence", 16.0, rule<RuleAssertPositiveOnly>());
    declare(recipe.directionCollection, "directionCollection", Vector<math::Vector2<int>>());
    declare(recipe.minGreyLevelHistogram, "minGreyLevelHistogram", 0.0);
    declare(recipe.maxGreyLevelHistogram, "maxGreyLevelHistogram", 255.0);
    declare(recipe.binSizeHistogram, "binSizeHistogram", 1.0, rule<RuleAssertPositiveOnly>());
    declare(recipe.userQuantileRatioHistogram, "userQuantileRatioHistogram", unset,
            rule<RuleAssertContainerSize>(numOfUserQuantiles));
}

inline TextureRecipe recipeOf(TextureRecipeProperties const& properties)
{
    TextureRecipe recipe;
    recipe.radius = properties.radius;
    for (int const type : properties.textureFeaturesGroup.get()) {
        recipe.textureFeaturesGroup.push_back(static_cast<TextureFeatureTypes>(type));
    }
    recipe.minGreyLevelCooccurrence = properties.minGreyLevelCooccurrence;
    recipe.maxGreyLevelCooccurrence = properties.maxGreyLevelCooccurrence;
    recipe.binSizeCooccurrence = properties.binSizeCooccurrence;
    recipe.directionCollection = properties.directionCollection.get();
    recipe.minGreyLevelHistogram = properties.minGreyLevelHistogram;
    recipe.maxGreyLevelHistogram = properties.maxGreyLevelHistogram;
    recipe.binSizeHistogram = properties.binSizeHistogram;
    recipe.userQuantileRatioHistogram = properties.userQuantileRatioHistogram.get();
    return recipe;
}

} // namespace mox::segmentation

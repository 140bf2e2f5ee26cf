#include "Segmentation/private/TexturePlan.h"

#include <Moxelcore/Core/Exception.h>

#include <limits>
#include <stdexcept>
#include <utility>

#include "Core/private/Helper/raise.h"

namespace mox::segmentation {

namespace {

constexpr unsigned int largestRadius = 1024;
constexpr double mostLevels = 4096;
constexpr double mostBins = 65536;

[[noreturn]] void refuseMissingDirections(char const* source)
{
    helper::raise<InvalidCall>(source, "The direction collection is empty.");
}

void requireRadius(unsigned int radius, char const* source)
{
    if (radius > largestRadius) {
        helper::raise<InvalidCall>(source, "The radius must not be greater than ", largestRadius, ".");
    }
}

void requireFit(DirectionPlan const& plan, char const* source)
{
    if (plan.window.empty()) {
        helper::raise<InvalidCall>(source, "The <", plan.direction[0], ",", plan.direction[1],
                                   "> direction is imcompatible with the radius.");
    }
}

/// Sums over a window must fit into their integers.
void requireLevels(TexturePlan const& plan, std::size_t numOfPairs, char const* source)
{
    double const largestSum = 4 * static_cast<double>(numOfPairs) * (plan.levels.count - 1);
    if (plan.levels.count > mostLevels || largestSum * largestSum >= 0x1p63) {
        helper::raise<InvalidCall>(source, "There are too many grey levels for a co-occurrence matrix.");
    }
}

void requireHistogram(double binSize)
{
    if (!(binSize >= std::numeric_limits<double>::min())) {
        helper::raise<InvalidCall>("Math/src/Histogram", "The histogram isn't correctly initialized.");
    }
}

void requireBins(TexturePlan const& plan, char const* source)
{
    requireHistogram(plan.bins.binSize);
    double const largestSum = static_cast<double>(numOfPositions(plan.disk)) * plan.bins.count;
    bool const wantsHighMoments = plan.usesTypes(HISTO_Skewness, HISTO_Peak);
    if (!(plan.bins.count <= mostBins) ||
        (wantsHighMoments && largestSum * largestSum * largestSum * largestSum >= 0x1p123)) {
        helper::raise<InvalidCall>(source, "The histogram has too many classes.");
    }
}

/// What is asked of all of a recipe, whether or not its features use it.
void requireUsable(TextureRecipe const& recipe, char const* source)
{
    requireRadius(recipe.radius, source);
    for (auto const& direction : recipe.directionCollection) {
        requireFit({direction, pairWindow(static_cast<int>(recipe.radius), direction)}, source);
    }
    GreyLevels const levels(recipe.minGreyLevelCooccurrence, recipe.maxGreyLevelCooccurrence,
                            recipe.binSizeCooccurrence);
    if (!recipe.directionCollection.empty() && levels.empty()) {
        throw std::runtime_error("Cooccurrence matrix used but not initialized");
    }
    requireHistogram(recipe.binSizeHistogram);
}

} // namespace

TexturePlan::TexturePlan(TextureRecipe const& recipe, std::vector<TextureFeature> wantedFeatures, char const* source)
    : radius(static_cast<int>(recipe.radius))
    , features(std::move(wantedFeatures))
    , levels(recipe.minGreyLevelCooccurrence, recipe.maxGreyLevelCooccurrence, recipe.binSizeCooccurrence)
    , bins(recipe.minGreyLevelHistogram, recipe.maxGreyLevelHistogram, recipe.binSizeHistogram)
    , quantileRatios({0.1, 0.25, 0.5, 0.75, 0.9})
{
    if (usesCooccurrence() && recipe.directionCollection.empty()) {
        refuseMissingDirections(source);
    }
    requireRadius(recipe.radius, source);
    disk = diskWindow(radius);
    quantileRatios.insert(quantileRatios.end(), recipe.userQuantileRatioHistogram.begin(),
                          recipe.userQuantileRatioHistogram.end());
    for (auto const& direction : recipe.directionCollection) {
        directions.push_back({direction, {}});
    }
    for (TextureFeature const& feature : features) {
        for (std::size_t k = 0; feature.isCooccurrence() && k < directions.size(); ++k) {
            bool const needsAll = feature.across() != TextureFeature::Across::oneDirection;
            directions[k].wanted[feature.measure()] |= needsAll || feature.direction == k;
        }
    }
    std::size_t mostPairs = 0;
    for (DirectionPlan& plan : directions) {
        if (!plan.isWanted()) {
            continue;
        }
        plan.window = pairWindow(radius, plan.direction);
        requireFit(plan, source);
        mostPairs = std::max(mostPairs, numOfPositions(plan.window));
    }
    if (usesCooccurrence()) {
        requireLevels(*this, mostPairs, source);
        logarithm.emplace(2 * mostPairs);
    }
    if (usesHistogram()) {
        requireBins(*this, source);
    }
}

bool TexturePlan::usesTypes(int first, int end) const
{
    return std::any_of(features.begin(), features.end(),
                       [&](TextureFeature const& feature) { return feature.type >= first && feature.type < end; });
}

std::vector<TextureFeature> allFeatures(TextureRecipe const& recipe, char const* source)
{
    if (recipe.textureFeaturesGroup.empty()) {
        helper::raise<InvalidCall>(source, "The measures group is empty.");
    }
    auto features = expandFeatures(recipe.textureFeaturesGroup, recipe.directionCollection.size());
    auto const& group = recipe.textureFeaturesGroup;
    if (recipe.directionCollection.empty() &&
        std::any_of(group.begin(), group.end(), [](TextureFeatureTypes type) { return type < HISTO_Mean; })) {
        refuseMissingDirections(source);
    }
    requireUsable(recipe, source);
    return features;
}

} // namespace mox::segmentation

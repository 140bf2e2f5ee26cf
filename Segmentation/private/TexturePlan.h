#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "Segmentation/private/AdditiveLogarithm.h"
#include "Segmentation/private/GreyClasses.h"
#include "Segmentation/private/SlidingWindow.h"
#include "Segmentation/private/TextureFeatures.h"
#include "Segmentation/private/TextureRecipe.h"

namespace mox::segmentation {

constexpr std::size_t numOfCooccurrenceMeasures = 13;

/// The co-occurrence measures that are wanted of one direction.
struct DirectionPlan {
    math::Vector2<int> direction;
    Window window;
    std::array<bool, numOfCooccurrenceMeasures> wanted = {};

    bool isWanted() const { return std::find(wanted.begin(), wanted.end(), true) != wanted.end(); }
};

/// What a sweep computes: features in their order, and what can be found once per run. Read by all workers.
struct TexturePlan {
    /// Of a recipe and some of the features that its group makes. Failures are reported to come from the source:
    /// `InvalidCall` for co-occurrence features without directions, for a direction that does not fit into the window,
    /// for a radius above 1024 and for more classes than can be counted.
    TexturePlan(TextureRecipe const& recipe, std::vector<TextureFeature> wantedFeatures, char const* source);

    bool usesCooccurrence() const { return usesTypes(COOC_AngularSecondMoment, HISTO_Mean); }
    bool usesHistogram() const { return usesTypes(HISTO_Mean, HISTO_QuantileR6 + 1); }
    /// Whether a feature's type lies in [first, end).
    bool usesTypes(int first, int end) const;

    int radius;
    std::vector<TextureFeature> features;
    GreyLevels levels;
    HistogramBins bins;
    std::vector<DirectionPlan> directions; ///< all of the recipe, whether wanted or not
    Window disk;
    std::vector<double> quantileRatios;         ///< by type from `HISTO_Quantile10` on
    std::optional<AdditiveLogarithm> logarithm; ///< for twice the pairs of any direction
};

/// All features of a recipe's group. Throws `InvalidCall` for an empty group, for co-occurrence features without
/// directions, and for what `expandFeatures` refuses. Whether or not a feature uses them, all directions must fit into
/// the window and the histogram must have a width, or `InvalidCall`; and there must be grey levels where there are
/// directions, or `std::runtime_error`.
std::vector<TextureFeature> allFeatures(TextureRecipe const& recipe, char const* source);

} // namespace mox::segmentation

#pragma once

#include <vector>

#include "benchmarks/Cases.h"
#include "testing/references/texture.h"

namespace mox::benchmarks {

/// Four directions: along rows and columns, and both diagonals.
inline segmentation::TextureRecipe textureRecipe(std::vector<int> const& group, unsigned int radius, double binSize)
{
    segmentation::TextureRecipe recipe;
    recipe.radius = radius;
    recipe.binSizeCooccurrence = binSize;
    for (int const type : group) {
        recipe.textureFeaturesGroup.push_back(static_cast<segmentation::TextureFeatureTypes>(type));
    }
    for (auto const& direction : {math::Vector2(1, 0), {0, 1}, {1, 1}, {1, -1}}) {
        recipe.directionCollection.push_back(direction);
    }
    recipe.userQuantileRatioHistogram.resize(6);
    return recipe;
}

/// What the definition says of each feature at each voxel.
inline std::vector<std::vector<double>> texturePlanes(segmentation::TextureRecipe const& recipe,
                                                      std::vector<double> const& voxels, Size const& size)
{
    auto const mirrored = [](int i, unsigned int length) {
        auto const n = static_cast<int>(length);
        int const folded = (i < 0 ? -1 - i : i) % (2 * n);
        return static_cast<std::size_t>(folded < n ? folded : 2 * n - 1 - folded);
    };
    auto const grey = [&](int x, int y) {
        return voxels[mirrored(y, size.rows) * size.columns + mirrored(x, size.columns)];
    };
    std::vector<std::vector<double>> planes(recipe.textureFeaturesGroup.size(), std::vector<double>(voxels.size()));
    for (std::size_t i = 0; i < voxels.size(); ++i) {
        auto const features = testing::textureReference(recipe, grey, static_cast<int>(i % size.columns),
                                                        static_cast<int>(i / size.columns));
        for (std::size_t f = 0; f < features.size(); ++f) {
            planes[f][i] = features[f];
        }
    }
    return planes;
}

} // namespace mox::benchmarks

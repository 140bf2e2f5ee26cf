#pragma once

#include <Moxelcore/Core/Vector.h>
#include <Moxelcore/Math/MathProperty.h>

namespace mox::segmentation {

/// What a feature vector of a voxel is made of: the window, the features, and how grey levels are put into classes.
struct TextureRecipe {
    unsigned int radius = 5;
    Vector<TextureFeatureTypes> textureFeaturesGroup;
    double minGreyLevelCooccurrence = 0;
    double maxGreyLevelCooccurrence = 255;
    double binSizeCooccurrence = 16;
    Vector<math::Vector2<int>> directionCollection;
    double minGreyLevelHistogram = 0;
    double maxGreyLevelHistogram = 255;
    double binSizeHistogram = 1;
    Vector<double> userQuantileRatioHistogram; ///< six of them
};

} // namespace mox::segmentation

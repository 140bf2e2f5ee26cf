#pragma once

#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Math/MathProperty.h>

namespace mox::segmentation {

/// The parameters that tell which texture features of a voxel are measured, and how.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "radius" | `unsigned int` | 5 | of the disk about the voxel, in voxels, 1 to 1024 |
/// | "textureFeaturesGroup" | `Vector<int>` | empty | `TextureFeatureTypes`, in the order of the result |
/// | "minGreyLevelCooccurrence" | `double` | 0.0 | grey levels below count as of the first level |
/// | "maxGreyLevelCooccurrence" | `double` | 255.0 | grey levels from here on count as of the last level |
/// | "binSizeCooccurrence" | `double` | 16.0 | width of a level, above 0; at most 4096 levels |
/// | "directionCollection" | `Vector<Vector2<int>>` | empty | steps in columns and rows; for co-occurrence features |
/// | "minGreyLevelHistogram" | `double` | 0.0 | grey levels below are left out of the histogram |
/// | "maxGreyLevelHistogram" | `double` | 255.0 | grey levels above are left out of the histogram |
/// | "binSizeHistogram" | `double` | 1.0 | width of a bin, above 0; at most 65536 bins |
/// | "userQuantileRatioHistogram" | `Vector<double>` | 6 x -1.0 | ratios of `HISTO_QuantileR1` to `HISTO_QuantileR6` |
///
/// A type of feature that is measured for each direction makes as many features as there are directions.
struct MOXELCORE_API TextureRecipeProperties {
    Property<unsigned int> radius;
    Property<Vector<int>> textureFeaturesGroup;
    Property<double> minGreyLevelCooccurrence;
    Property<double> maxGreyLevelCooccurrence;
    Property<double> binSizeCooccurrence;
    Property<Vector<math::Vector2<int>>> directionCollection;
    Property<double> minGreyLevelHistogram;
    Property<double> maxGreyLevelHistogram;
    Property<double> binSizeHistogram;
    Property<Vector<double>> userQuantileRatioHistogram;
};

} // namespace mox::segmentation

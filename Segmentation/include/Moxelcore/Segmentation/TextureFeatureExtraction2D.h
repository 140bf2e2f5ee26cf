#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Segmentation/TextureRecipeProperties.h>

namespace mox::segmentation {

/// Measures texture features on a disk about each voxel of a plane: co-occurrence measures after Haralick, Shanmugam
/// and Dinstein (1973) in each direction, their mean, standard deviation and range over the directions, and measures
/// of the histogram.
///
/// | property | type                | default | |
/// |----------|---------------------|---------|-|
/// | "input"  | `ImageModel const*` | null    | any real voxel type, any sizes; nothing is done with complex ones |
/// | "output" | `ImageModel*`       | null    | float32 or float64 |
///
/// The parameters between them are those of `TextureRecipeProperties`.
///
/// The output has the input's columns, rows and plans, and the features as its time series: of an input of one time
/// and spectral index, plane f is feature f. In general the features of time index t and spectral index s begin at
/// plane s (t + 1) numOfFeatures; what several indices write to, the last time index keeps, and planes that none
/// writes to are 0.
///
/// Beyond the image the image is mirrored. A NaN voxel is of level 0 and left out of the histogram. A quantile of a
/// negative ratio is the centre of the first bin.
///
/// Throws `RuleException` for null images, an output of another voxel type or one that cannot be resized, parameters
/// that are not above 0, an empty group and a list of ratios that is not of six. Throws `InvalidCall` for co-occurrence
/// features without directions, a direction that does not fit into the disk, a feature that does not exist, too many
/// levels or bins, and for a window with no voxel in the histogram's range; throws `UnexpectedError` for
/// "maxGreyLevelCooccurrence" below "minGreyLevelCooccurrence".
class MOXELCORE_API TextureFeatureExtraction2D final : public BaseAlgorithm, public TextureRecipeProperties {
    MOX_DECLARE_ALGORITHM(TextureFeatureExtraction2D)

    Property<ImageModel const*> input;
    Property<ImageModel*> output;
};

} // namespace mox::segmentation

#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::analysis {

/// The minimum, the maximum and the mean of all voxels of an image.
///
/// | property        | type                | default | |
/// |-----------------|---------------------|---------|-|
/// | "input"         | `ImageModel const*` | null    | any real voxel type, any sizes |
/// | "outputMinimum" | `double`            | 0.0     | |
/// | "outputMaximum" | `double`            | 0.0     | |
/// | "outputMean"    | `double`            | 0.0     | |
///
/// One result is made over all plans, time series and spectral channels. Results are doubles: a 64-bit integer beyond
/// 2^53 is told by its nearest double.
///
/// The sum of integers is exact. Floats are added in double, in an order that depends on the image's sizes alone, so
/// that the mean is the same on any number of threads.
///
/// A NaN voxel is no minimum and no maximum, and makes the mean NaN. The search for the minimum begins at the largest
/// finite value of the voxel type and that for the maximum at the lowest: they stay there where no voxel is below and
/// above, as in an image without voxels, whose mean is NaN, and the minimum does where all voxels are +infinity.
///
/// Throws `RuleException` for a null or complex input.
class MOXELCORE_API IntensityExtrema final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(IntensityExtrema)

    Property<ImageModel const*> input;
    Property<double> outputMinimum;
    Property<double> outputMaximum;
    Property<double> outputMean;
};

} // namespace mox::analysis

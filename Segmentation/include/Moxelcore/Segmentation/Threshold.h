#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::segmentation {

/// Marks the voxels whose value lies in an interval: 1 inside, both ends included, 0 outside.
///
/// | property    | type                | default | |
/// |-------------|---------------------|---------|-|
/// | "input"     | `ImageModel const*` | null    | any real voxel type, any sizes, one spectral channel |
/// | "lowLevel"  | `double`            | 0.0     | lower end of the interval |
/// | "highLevel" | `double`            | 255.0   | upper end of the interval |
/// | "output"    | `ImageModel*`       | null    | uint8, uint16, int8 or int16; a fresh image is uint8 |
///
/// The output takes the input's sizes and calibration and is interpreted as binary. It may be the input itself when
/// that has one of the four types; a wider output is refused, not retyped.
///
/// Voxels are compared as doubles: a 64-bit integer beyond 2^53 by its nearest double. A voxel is outside when
/// "lowLevel" > v or v > "highLevel". A NaN voxel is neither and gives 1; an end that is NaN bounds nothing. An empty
/// interval is not refused and gives 0 everywhere but at NaN.
///
/// Throws `RuleException` for a null, complex or multichannel input and for a null, wider or fixed output.
class MOXELCORE_API Threshold final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(Threshold)

    Property<ImageModel const*> input;
    Property<double> lowLevel;
    Property<double> highLevel;
    Property<ImageModel*> output;
};

} // namespace mox::segmentation

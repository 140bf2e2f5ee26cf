#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/Vector.h>
#include <Moxelcore/Math/MathProperty.h>

namespace mox::point_operations {

/// Gives the voxels of an image new values from a look-up table.
///
/// | property        | type                    | default      | |
/// |-----------------|-------------------------|--------------|-|
/// | "input"         | `ImageModel const*`     | null         | any real voxel type, any sizes, one spectral channel |
/// | "inputRange"    | `math::Vector2<double>` | (0.0, 255.0) | values that the table is for, both ends included |
/// | "step"          | `double`                | 1.0          | voxel values per entry of the table |
/// | "lut"           | `Vector<double>`        | empty        | |
/// | "lowIntensity"  | `double`                | 0.0          | result below the range |
/// | "highIntensity" | `double`                | 0.0          | result above it |
/// | "output"        | `ImageModel*`           | null         | may be the input |
///
/// The output takes the input's sizes, calibration, voxel type and interpretation. A voxel v, as a double, takes the
/// entry trunc(v / "step"). Entries count from the intensity 0, not from the begin of the range: a range of 100 to 200
/// uses the entries 100 to 200 at step 1. Where the table has no such entry, its last one is taken, or its first for an
/// index below 0; without any entry the result is 0. A NaN voxel counts as index 0.
///
/// Results are truncated to whole numbers, in images of floats too, and wrap into the voxel type. A result beyond 64
/// bits counts as the nearest 64-bit integer, NaN as 0.
///
/// Throws `RuleException` for a null, complex or multichannel input, for a null or fixed output, and for a table of
/// fewer entries than trunc((end - begin) / "step" + 1): "The lut property must have a minimal size of 256. This
/// current size is 0". A number of entries that is not finite counts as 4294967295.
class MOXELCORE_API Anamorphosis final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(Anamorphosis)

    Property<ImageModel const*> input;
    Property<math::Vector2<double>> inputRange;
    Property<double> step;
    Property<Vector<double>> lut;
    Property<double> lowIntensity;
    Property<double> highIntensity;
    Property<ImageModel*> output;

protected:
    void applyAllRules() override;
};

} // namespace mox::point_operations

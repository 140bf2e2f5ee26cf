#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <optional>

namespace moxel {

/// Minimum, maximum and mean over the pages of a file, as `IntensityExtrema` finds them for each.
class Statistics {
public:
    /// Takes in all voxels of a page of one of the ten real types.
    void add(mox::ImageModel const& page);

    /// None while no voxel is a number.
    std::optional<double> minimum() const { return tell(minimum_); }
    std::optional<double> maximum() const { return tell(maximum_); }
    /// NaN when a voxel is; none without voxels.
    std::optional<double> mean() const;

private:
    std::optional<double> tell(double extremum) const
    {
        return minimum_ <= maximum_ ? std::optional(extremum) : std::nullopt;
    }

    double minimum_ = 0;
    double maximum_ = -1;
    double sum_ = 0;
    double numOfVoxels_ = 0;
};

} // namespace moxel

#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <memory>
#include <optional>
#include <string>

#include "apps/moxel/Json.h"

namespace moxel {

/// A number with its two forms.
struct Number {
    std::string text;
    Json json;
};

/// Minimum, maximum and mean of voxels, gathered row by row. A voxel that is not a number counts for none of them
/// and is counted by itself; without any other there is nothing to tell.
class Statistics {
public:
    /// Null for voxels of another than the ten real types.
    static std::unique_ptr<Statistics> create(mox::VoxelTypes voxelType);

    virtual ~Statistics() = default;
    /// Takes in all voxels of an image of that type.
    virtual void add(mox::ImageModel const& image) = 0;
    virtual std::optional<Number> minimum() const = 0;
    virtual std::optional<Number> maximum() const = 0;
    virtual std::optional<Number> mean() const = 0;
    virtual unsigned long long numOfNaN() const = 0;
};

} // namespace moxel

#pragma once

#include <Moxelcore/Core/BaseProperty.h>
#include <Moxelcore/Core/Enum/ImageDimension.h>
#include <Moxelcore/Core/Enum/ImageInterpretation.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <memory>
#include <optional>

#include "apps/moxel/TiffWriter.h"

namespace moxel {

/// What the options of a run say of one property.
struct BindingOptions {
    std::optional<mox::VoxelTypes> voxelType;
    std::optional<mox::ImageInterpretation> interpretation;
    std::optional<mox::ImageDimension> pages;
    Compression compression = Compression::deflate;
    bool inColours = false;
};

/// What a property points to during a run, and the file that it comes from or goes to. The steps are called in this
/// order; each throws `FileError` or `Cancelled`.
class PropertyBinding {
public:
    virtual ~PropertyBinding() = default;

    virtual void load() {}
    /// Whether the result can go to its file; called when the algorithm has given it its shape and not yet its voxels.
    virtual void check() const {}
    /// Writes the result under a temporary name, gone unless it is published.
    virtual void store() {}
    virtual void publish() {}
};

} // namespace moxel

#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/access/Sizes.h"

namespace mox::rules {

/// Gives an image a voxel type, its sizes kept, or fails.
inline void retype(ImageModel& image, VoxelTypes wanted, helper::Site site)
{
    if (image.getVoxelType() == wanted) {
        return;
    }
    access::allocate(image, wanted, access::Sizes::of(image));
    if (image.getVoxelType() != wanted) {
        helper::raise<RuleException>(site, "Image cannot be retyped");
    }
}

} // namespace mox::rules

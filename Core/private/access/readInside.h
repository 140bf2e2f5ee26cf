#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/access/rowExtent.h"

namespace mox::access {

/// Reads voxels that all lie inside, or throws with the given site.
template <class T>
void readInside(ImageModel const& image, T* buffer, int64 count, int64 x, int64 y, int z, int t, int s,
                helper::Site site)
{
    if (!image.readRowAt(static_cast<unsigned int>(count), buffer, static_cast<unsigned int>(x),
                         static_cast<unsigned int>(y), static_cast<unsigned int>(z), static_cast<unsigned int>(t),
                         static_cast<unsigned int>(s))) {
        helper::raise<UnexpectedError>(site, readFailure);
    }
}

} // namespace mox::access

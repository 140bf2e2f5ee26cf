#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/access/Position.h"
#include "Core/private/access/rowExtent.h"

namespace mox::access {

/// Reads `count` voxels from column x on of the row that `p` tells, all of them inside, or throws with the given site.
template <class T>
void readInside(ImageModel const& image, T* buffer, int64 count, int64 x, Position const& p, helper::Site site)
{
    auto const u = [](auto coordinate) { return static_cast<unsigned int>(coordinate); };
    if (!image.readRowAt(u(count), buffer, u(x), u(p.y), u(p.z), u(p.t), u(p.s))) {
        helper::raise<UnexpectedError>(site, readFailure);
    }
}

} // namespace mox::access

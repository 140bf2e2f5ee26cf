#pragma once

#include <Moxelcore/Core/Vector.h>

#include "Core/private/Helper/raise.h"

namespace mox::morphology {

/// The patterns that a kernel of a look-up table fits: those with the given bits where they matter.
struct LutPattern {
    unsigned int bits = 0;
    unsigned int care = 0;

    LutPattern(Vector<unsigned char> const& kernel, unsigned int numOfVoxels, helper::Site site)
    {
        if (kernel.size() != numOfVoxels) {
            helper::raise<InvalidCall>(site, "The kernel must have a size of ", numOfVoxels, ". This current size is ",
                                       kernel.size());
        }
        for (unsigned int k = 0; k < numOfVoxels; ++k) {
            bits |= kernel[k] == 1 ? 1U << k : 0U;
            care |= kernel[k] <= 1 ? 1U << k : 0U;
        }
    }

    bool fits(unsigned int pattern) const { return ((pattern ^ bits) & care) == 0; }
};

/// Refuses an array that is no whole table.
inline void requireWholeTable(void const* entries, unsigned int size, unsigned int wanted, helper::Site site)
{
    if (entries == nullptr || size != wanted) {
        helper::raise<InvalidCall>(site, "LUT array cannot be NULL and must have a size of ", wanted, " elements.");
    }
}

} // namespace mox::morphology

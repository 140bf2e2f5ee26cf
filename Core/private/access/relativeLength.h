#pragma once

#include <Moxelcore/Core/access/Block.h>

namespace mox::access {

/// Whether the first range is shorter than the second, both measured in their grains.
inline bool isRelativelyShorter(GrainedRange const& first, GrainedRange const& second)
{
    return static_cast<double>(first.size()) * static_cast<double>(second.grain) <
           static_cast<double>(second.size()) * static_cast<double>(first.grain);
}

} // namespace mox::access

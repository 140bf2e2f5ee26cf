#pragma once

#include <Moxelcore/Core/access/Block.h>

namespace mox::filters {

/// What is done to one leaf of a parallel loop. One virtual call per leaf keeps the scheduler out of the templates
/// over voxel types.
struct LeafWork {
    virtual void operator()(access::Block const& leaf) = 0;

protected:
    ~LeafWork() = default;
};

} // namespace mox::filters

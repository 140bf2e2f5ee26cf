#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <memory>

namespace mox::filters {

/// A result that a parallel loop gathers leaf by leaf. One virtual call per leaf keeps the scheduler out of the
/// templates over voxel types.
class Reduction {
public:
    virtual ~Reduction() = default;
    virtual void fold(access::Block const& leaf) = 0;
    /// A result of the same kind that has gathered nothing.
    virtual std::unique_ptr<Reduction> fresh() const = 0;
    /// Adds what was gathered from the leaves that follow.
    virtual void join(Reduction const& following) = 0;
};

} // namespace mox::filters

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
    /// A result of the same kind that has gathered nothing. Called while this one folds a leaf.
    virtual std::unique_ptr<Reduction> fresh() const = 0;
    /// Adds what was gathered from the leaves that follow, and may take it away there. The scheduler is in no state to
    /// see a join fail.
    virtual void join(Reduction& following) noexcept = 0;
};

} // namespace mox::filters

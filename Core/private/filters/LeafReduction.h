#pragma once

#include <memory>

#include "Core/private/filters/LeafWork.h"

namespace mox::filters {

/// Leaf work that gathers a value. The scheduler splits it for other threads and joins it again, so the value must
/// not depend on how the leaves were grouped.
struct LeafReduction : LeafWork {
    virtual ~LeafReduction() = default;

    /// The same work with nothing gathered yet. Called while this one works on a leaf.
    virtual std::unique_ptr<LeafReduction> split() const = 0;

    /// Takes over what work split off this one has gathered. Its leaves come after the own ones. The scheduler is in
    /// no state to see a join fail.
    virtual void join(LeafReduction& right) noexcept = 0;
};

} // namespace mox::filters

#pragma once

#include "Core/private/access/Rows.h"
#include "Core/private/access/Sizes.h"

#include <Moxelcore/Core/access/Block.h>

#include <optional>

namespace mox::filters {

/// How far a kernel reads beyond the voxel that it writes, on each side.
struct Reach {
    unsigned int columnsBegin = 0;
    unsigned int columnsEnd = 0;
    unsigned int rowsBegin = 0;
    unsigned int rowsEnd = 0;
    unsigned int plansBegin = 0;
    unsigned int plansEnd = 0;

    bool operator==(Reach const&) const = default;
};

/// Threads on which a parallel loop of the calling thread may run.
unsigned int numOfThreads();

/// Upper bounds for the sizes of the leaves of a parallel loop; in 2D a leaf has one plan.
struct LeafShape {
    unsigned int plans = 1;
    unsigned int rows = 1;
    unsigned int columns = 1;
};

/// How a kernel uses the voxels that it reads.
struct Use {
    Reach reach;
    /// Whether the kernel never reads a row through the image once it may have written it, so that it needs no
    /// copies of rows when input and output are one image.
    bool readsAhead = false;
    /// For kernels with leaves of their own; otherwise the scheduler chooses.
    std::optional<LeafShape> leaf = std::nullopt;
    /// Iterations of the run that one application of the kernel stands for.
    unsigned int iterations = 1;
};

/// The voxels of a leaf that no other leaf reads. A neighbour before the leaf reads into it as far as the kernel
/// reaches towards the end, and the other way round. There is no neighbour at a face of the image.
inline access::SafeBox safeBox(access::Block const& leaf, Reach const& reach, access::Sizes const& sizes)
{
    auto const first = [](unsigned int begin, unsigned int reachEnd) {
        return int64{begin} + (begin > 0 ? reachEnd : 0);
    };
    auto const last = [](unsigned int end, unsigned int size, unsigned int reachBegin) {
        return int64{end} - 1 - (end < size ? reachBegin : 0);
    };
    return {
        first(leaf.getBeginColumn(), reach.columnsEnd), last(leaf.getEndColumn(), sizes.columns, reach.columnsBegin),
        first(leaf.getBeginRow(), reach.rowsEnd),       last(leaf.getEndRow(), sizes.rows, reach.rowsBegin),
        first(leaf.getBeginPlan(), reach.plansEnd),     last(leaf.getEndPlan(), sizes.plans, reach.plansBegin)};
}

} // namespace mox::filters

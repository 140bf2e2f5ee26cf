#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <cstddef>
#include <optional>

#include "Core/private/access/RowCaches.h"

namespace mox::filters {

/// Where a neighbourhood kernel reads: rows relative to its leaf, in slots of its choice, extended beyond the image.
template <class InputCache>
class RowSource {
public:
    RowSource(InputCache& cache, access::Block const& leaf)
        : cache_(cache)
        , leaf_(leaf)
    {
    }

    /// `length` voxels from column x on. They stay valid until the slot is used again.
    auto const* row(std::size_t slot, int x, int y, int z, unsigned int length)
    {
        return cache_.getRow(slot, length, leaf_, x, y, z, 0, 0).voxels();
    }

    /// The same for a position in the image, for kernels whose images are not of one size.
    auto const* rowAt(std::size_t slot, access::Position const& position, unsigned int length)
    {
        return cache_.getRow(slot, length, position).voxels();
    }

private:
    InputCache& cache_;
    access::Block const& leaf_;
};

/// Where a neighbourhood kernel writes: the rows of its leaf, one after the other, each complete before the next.
/// Row y of plan z may be written once the kernel no longer reads that row through the image.
template <class OutputCache>
class RowTarget {
public:
    RowTarget(OutputCache& cache, access::Block const& leaf, std::optional<access::SafeBox> const& box)
        : cache_(cache)
        , leaf_(leaf)
        , box_(box)
    {
    }

    /// Calls `fill` with the memory for row (y, z), as long as the leaf is wide, then flushes it.
    template <class Fill>
    void writeRow(int y, int z, Fill&& fill)
    {
        using ReadBack = typename OutputCache::Row::ReadBack;
        access::SafeBox const* const box = box_ ? &*box_ : nullptr;
        auto& row = cache_.getRow(0, leaf_.getNumOfColumns(), leaf_, 0, y, z, 0, 0, ReadBack::no, box);
        fill(row.voxels());
        cache_.flush(row, box);
    }

private:
    OutputCache& cache_;
    access::Block const& leaf_;
    std::optional<access::SafeBox> const& box_;
};

} // namespace mox::filters

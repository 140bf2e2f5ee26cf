#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/Filter.h"
#include "Core/private/filters/Reach.h"

namespace mox::filters {

/// Memory that a thread keeps from leaf to leaf.
template <class View>
using Scratch = std::vector<typename View::Voxel, typename View::RowAllocator>;

/// A row of a leaf, and the voxels beside it.
template <class T>
struct Line {
    T const* voxels;
    T left;
    T right;
};

/// Ranges of columns, rows and plans; the ends are exclusive.
struct Bounds {
    int firstColumn, endColumn;
    int firstRow, endRow;
    int firstPlan, endPlan;
};

/// Where a neighbourhood kernel reads: rows relative to its leaf, in slots of its choice, extended beyond the image.
template <class InputCache>
class RowSource {
public:
    using View = std::remove_cvref_t<decltype(std::declval<InputCache&>().view())>;
    using Voxel = typename View::Voxel;

    RowSource(InputCache& cache, Scratch<View>& scratch, access::Block const& leaf)
        : cache_(cache)
        , scratch_(scratch)
        , origin_(access::detail::within(leaf, 0, 0, 0, 0, 0))
        , width_(leaf.getNumOfColumns())
        , beginsImage_(leaf.getBeginColumn() == 0)
        , endsImage_(leaf.getEndColumn() == cache.view().sizes().columns)
        , outside_(cache.view().border()->constant())
    {
    }

    /// `length` voxels from column x on. They stay valid until the slot is used again.
    Voxel const* row(std::size_t slot, int x, int y, int z, unsigned int length)
    {
        return cache_.getRow(slot, length, at(x, y, z)).voxels();
    }

    /// The same for a position in the image, for kernels whose images are not of one size.
    Voxel const* rowAt(std::size_t slot, access::Position const& position, unsigned int length)
    {
        return cache_.getRow(slot, length, position).voxels();
    }

    /// Where row (y, z) of the leaf lies in memory, for a kernel that has it fetched before it reads it; null where
    /// that is not known.
    Voxel const* ahead(int y, int z) const { return aheadAt(at(0, y, z), width_); }
    Voxel const* aheadAt(access::Position const& position, unsigned int length) const
    {
        View const& view = cache_.view();
        return view.isContiguous() ? view.pointer(position, length) : nullptr;
    }

    /// Row (y, z) as wide as the leaf, with one voxel to either side. Cheaper than a wider row where the leaf touches
    /// a side of the image: that would have to be put together.
    Line<Voxel> line(std::size_t slot, int y, int z)
    {
        if (auto const inPlace = lineInImage(y, z)) {
            return *inPlace;
        }
        Voxel const* const extended = row(slot, -1, y, z, width_ + 2);
        return {extended + 1, extended[0], extended[width_ + 1]};
    }

    /// The bounds of the image, relative to the leaf.
    Bounds image() const
    {
        access::Sizes const& sizes = cache_.view().sizes();
        auto const end = [](unsigned int size, int begin) { return static_cast<int>(size) - begin; };
        return {-origin_.x, end(sizes.columns, origin_.x), -origin_.y, end(sizes.rows, origin_.y),
                -origin_.z, end(sizes.plans, origin_.z)};
    }

    /// Room for that many voxels, which hold nothing in particular.
    Voxel* scratch(std::size_t count)
    {
        scratch_.resize(std::max(scratch_.size(), count));
        return scratch_.data();
    }

private:
    access::Position at(int x, int y, int z) const
    {
        return {origin_.x + x, origin_.y + y, origin_.z + z, origin_.t, origin_.s};
    }

    std::optional<Line<Voxel>> lineInImage(int y, int z) const
    {
        using Source = typename InputCache::Row::Source;
        if (cache_.source() == Source::copied || ((beginsImage_ || endsImage_) && outside_ == nullptr)) {
            return std::nullopt;
        }
        unsigned int const before = beginsImage_ ? 0 : 1;
        unsigned int const after = endsImage_ ? 0 : 1;
        Voxel const* const first = cache_.view().pointer(at(-static_cast<int>(before), y, z), before + width_ + after);
        if (first == nullptr) {
            return std::nullopt;
        }
        return Line<Voxel>{first + before, beginsImage_ ? *outside_ : first[0],
                           endsImage_ ? *outside_ : first[before + width_]};
    }

    InputCache& cache_;
    Scratch<View>& scratch_;
    access::Position origin_;
    unsigned int width_;
    bool beginsImage_;
    bool endsImage_;
    Voxel const* outside_;
};

/// Where a neighbourhood kernel writes: the rows of its leaf, one after the other, each complete before the next.
/// Row y of plan z may be written once the kernel no longer reads that row through the image.
template <class OutputCache>
class RowTarget {
public:
    RowTarget(OutputCache& cache, access::Block const& leaf, std::optional<access::SafeBox> const& box,
              Filter const* run)
        : cache_(cache)
        , origin_(access::detail::within(leaf, 0, 0, 0, 0, 0))
        , width_(leaf.getNumOfColumns())
        , box_(box)
        , run_(run)
    {
    }

    /// Calls `fill` with the memory for row (y, z), as long as the leaf is wide, then flushes it.
    template <class Fill>
    void writeRow(int y, int z, Fill&& fill)
    {
        using ReadBack = typename OutputCache::Row::ReadBack;
        access::SafeBox const* const box = box_ ? &*box_ : nullptr;
        auto& row = cache_.getRow(0, width_, at(y, z), ReadBack::no, box);
        fill(row.voxels());
        cache_.flush(row, box);
    }

    /// Where row (y, z) of the leaf lies in memory, for a kernel that has it fetched before it writes it; null where
    /// that is not known, and in place, where it was read before.
    auto ahead(int y, int z) const
    {
        auto const& view = cache_.view();
        return view.isContiguous() && !box_ ? view.pointer(at(y, z), width_) : nullptr;
    }

    /// For kernels that spend long on one leaf.
    bool isStopped() const { return run_ != nullptr && run_->isStopped(); }

private:
    access::Position at(int y, int z) const { return {origin_.x, origin_.y + y, origin_.z + z, origin_.t, origin_.s}; }

    OutputCache& cache_;
    access::Position origin_;
    unsigned int width_;
    std::optional<access::SafeBox> const& box_;
    Filter const* run_;
};

/// How a kernel uses voxels: as it tells, or else as a point kernel does.
template <class Kernel>
Use useOf(Kernel const& kernel)
{
    if constexpr (requires { kernel.use(); }) {
        return kernel.use();
    } else if constexpr (requires { kernel.reach(); }) {
        return {kernel.reach()};
    } else {
        return {};
    }
}

} // namespace mox::filters

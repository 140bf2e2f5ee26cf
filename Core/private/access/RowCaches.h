#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <vector>

#include "Core/private/access/Rows.h"

namespace mox::access {

namespace detail {

/// A position given relative to a block.
inline Position within(Block const& block, int x, int y, int z, int t, int s)
{
    return {static_cast<int>(block.getBeginColumn()) + x, static_cast<int>(block.getBeginRow()) + y,
            static_cast<int>(block.getBeginPlan()) + z, static_cast<int>(block.getBeginTimeSeries()) + t,
            static_cast<int>(block.getBeginSpectralSeries()) + s};
}

/// Rows by slot, made on first use.
template <class Row>
class Slots {
public:
    Row& operator[](std::size_t slot)
    {
        if (slot >= rows_.size()) {
            rows_.resize(slot + 1);
        }
        if (!rows_[slot]) {
            rows_[slot] = boost::make_shared<Row>();
        }
        return *rows_[slot];
    }

private:
    std::vector<boost::shared_ptr<Row>> rows_;
};

} // namespace detail

/// Rows that one thread reads, kept in numbered slots so that their buffers serve the next leaf too. Coordinates
/// are relative to the block.
template <class ViewType, class Allocator = typename ViewType::RowAllocator>
class RowCacheRead {
public:
    using Row = InputRow<ViewType, Allocator>;

    explicit RowCacheRead(ViewType const& view, typename Row::Source source = Row::Source::shared)
        : view_(&view)
        , source_(source)
    {
    }

    Row& getRow(std::size_t slot, unsigned int length, Block const& block, int x, int y, int z, int t, int s)
    {
        return getRow(slot, length, detail::within(block, x, y, z, t, s));
    }

    /// The same with an absolute position.
    Row& getRow(std::size_t slot, unsigned int length, Position const& position)
    {
        Row& row = rows_[slot];
        row.read(*view_, position, length, source_);
        return row;
    }

    ViewType const& view() const { return *view_; }
    typename Row::Source source() const { return source_; }

private:
    ViewType const* view_;
    typename Row::Source source_;
    detail::Slots<Row> rows_;
};

/// Rows that one thread writes, and the queue of those voxels that must wait for the end of the parallel loop.
template <class ViewType, class Allocator = typename ViewType::RowAllocator>
class RowCacheReadWrite {
public:
    using Row = OuputRow<ViewType, Allocator>;

    explicit RowCacheReadWrite(ViewType const& view)
        : view_(&view)
    {
    }

    /// The box, if any, must be that of the later flush.
    Row& getRow(std::size_t slot, unsigned int length, Block const& block, int x, int y, int z, int t, int s,
                typename Row::ReadBack readBack = Row::ReadBack::no, SafeBox const* box = nullptr)
    {
        return getRow(slot, length, detail::within(block, x, y, z, t, s), readBack, box);
    }

    Row& getRow(std::size_t slot, unsigned int length, Position const& position,
                typename Row::ReadBack readBack = Row::ReadBack::no, SafeBox const* box = nullptr)
    {
        Row& row = rows_[slot];
        row.place(*view_, position, length, readBack, box);
        return row;
    }

    void flush(Row& row, SafeBox const* box = nullptr) { row.flush(box, queue_); }

    void flushQueue() { queue_.flush(*view_); }
    bool hasQueuedVoxels() const { return !queue_.empty(); }
    ViewType const& view() const { return *view_; }

private:
    ViewType const* view_;
    detail::Slots<Row> rows_;
    WriteQueue<ViewType> queue_;
};

/// Row caches by plan slot, for bodies that keep the rows of several plans.
template <class RowCache>
class PlanCache {
public:
    template <class... Argument>
    explicit PlanCache(std::size_t numOfPlans, Argument const&... argument)
    {
        plans_.reserve(numOfPlans);
        for (std::size_t i = 0; i < numOfPlans; ++i) {
            plans_.emplace_back(argument...);
        }
    }

    RowCache& operator[](std::size_t planSlot) { return plans_[planSlot]; }

private:
    std::vector<RowCache> plans_;
};

template <class ViewType, class Allocator = typename ViewType::RowAllocator>
using PlanCacheRead = PlanCache<RowCacheRead<ViewType, Allocator>>;
template <class ViewType, class Allocator = typename ViewType::RowAllocator>
using PlanCacheReadWrite = PlanCache<RowCacheReadWrite<ViewType, Allocator>>;

} // namespace mox::access

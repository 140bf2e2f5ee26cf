#include "Core/private/filters/Filter.h"

#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>
#include <tbb/task_group.h>

#include <algorithm>

namespace mox::filters {

using access::Block2d;
using access::Block3d;

struct Filter::Context {
    tbb::task_group_context group;
};

namespace {

// A leaf covers a long run of each row, since columns lie side by side in memory.
constexpr unsigned int grainPlans = 10;
constexpr unsigned int grainRows = 10;
constexpr unsigned int grainColumns = 1024;

Block2d rootOf(Filter2dTag, access::Region const& region, Slice const& slice)
{
    return {{region.getEndRow(), region.getBeginRow(), grainRows},
            {region.getEndColumn(), region.getBeginColumn(), grainColumns},
            slice.plan,
            slice.timeSeries,
            slice.spectralSeries};
}

Block3d rootOf(Filter3dTag, access::Region const& region, Slice const& slice)
{
    return {{region.getEndPlan(), region.getBeginPlan(), grainPlans},
            {region.getEndRow(), region.getBeginRow(), grainRows},
            {region.getEndColumn(), region.getBeginColumn(), grainColumns},
            slice.timeSeries,
            slice.spectralSeries};
}

Block2d rootOfBands(access::Region const& region, Slice const& slice, unsigned int rows)
{
    unsigned int const wholeWidth = std::max(region.getNumOfColumns(), 1U);
    return {{region.getEndRow(), region.getBeginRow(), rows},
            {region.getEndColumn(), region.getBeginColumn(), wholeWidth},
            slice.plan,
            slice.timeSeries,
            slice.spectralSeries};
}

/// Does the work on a leaf and counts its voxels.
void runLeaf(access::Block const& leaf, LeafWork& work, algorithms::AbstractPrivateImplementation& filter)
{
    work(leaf);
    filter.incrementProgress(uint64{leaf.getNumOfPlans()} * leaf.getNumOfColumns() * leaf.getNumOfRows());
}

template <class RootBlock, class Partitioner = tbb::auto_partitioner>
void runOver(RootBlock const& root, LeafWork& work, algorithms::AbstractPrivateImplementation& filter,
             tbb::task_group_context& group, Partitioner const& partitioner = {})
{
    if (root.empty()) {
        return;
    }
    auto const body = [&](RootBlock const& leaf) { runLeaf(leaf, work, filter); };
    tbb::parallel_for(root, body, partitioner, group);
}

/// A body in the sense of oneTBB. The root body works with what the caller gave, whose value is asked for. A split
/// one makes work of its own with its first leaf: a constructor that fails in the middle of a split would leak.
class ReductionBody {
public:
    ReductionBody(LeafReduction& work, algorithms::AbstractPrivateImplementation& filter)
        : root_(work)
        , work_(&work)
        , filter_(filter)
    {
    }
    ReductionBody(ReductionBody& other, tbb::split)
        : root_(other.root_)
        , filter_(other.filter_)
    {
    }

    void operator()(access::Block const& leaf)
    {
        if (work_ == nullptr) {
            owned_ = root_.split();
            work_ = owned_.get();
        }
        runLeaf(leaf, *work_, filter_);
    }

    void join(ReductionBody& right) noexcept
    {
        if (work_ != nullptr && right.work_ != nullptr) { // one is missing only where the loop was stopped
            work_->join(*right.work_);
        }
    }

private:
    LeafReduction& root_;
    std::unique_ptr<LeafReduction> owned_;
    LeafReduction* work_ = nullptr;
    algorithms::AbstractPrivateImplementation& filter_;
};

template <class RootBlock>
void reduceOver(RootBlock const& root, LeafReduction& work, algorithms::AbstractPrivateImplementation& filter,
                tbb::task_group_context& group)
{
    if (root.empty()) {
        return;
    }
    ReductionBody body(work, filter);
    tbb::parallel_reduce(root, body, tbb::auto_partitioner(), group);
}

} // namespace

Filter::Filter(BaseAlgorithm* owner)
    : AbstractPrivateImplementation(owner, AttachLater())
    , context_(std::make_shared<Context>())
    , isPass_(false)
{
}

Filter::Filter(Filter& run)
    : AbstractPrivateImplementation(run)
    , context_(run.context_)
    , isPass_(true)
{
}

Filter::~Filter() = default;

bool Filter::cancelExecution()
{
    bool const cancelled = AbstractPrivateImplementation::cancelExecution();
    context_->group.cancel_group_execution();
    return cancelled;
}

void Filter::announce(uint64 numOfVoxels)
{
    if (!isPass_) {
        attach();
        setMaxProgress(numOfVoxels);
    }
}

bool Filter::isStopped() const
{
    return isExecutionCancelled() || context_->group.is_group_execution_cancelled();
}

void Filter::forEachLeaf(Filter2dTag dimensions, access::Region const& region, Slice const& slice, LeafWork& work)
{
    runOver(rootOf(dimensions, region, slice), work, *this, context_->group);
}

void Filter::forEachLeaf(Filter3dTag dimensions, access::Region const& region, Slice const& slice, LeafWork& work)
{
    runOver(rootOf(dimensions, region, slice), work, *this, context_->group);
}

void Filter::reduceLeaves(Filter2dTag dimensions, access::Region const& region, Slice const& slice, LeafReduction& work)
{
    reduceOver(rootOf(dimensions, region, slice), work, *this, context_->group);
}

void Filter::reduceLeaves(Filter3dTag dimensions, access::Region const& region, Slice const& slice, LeafReduction& work)
{
    reduceOver(rootOf(dimensions, region, slice), work, *this, context_->group);
}

void Filter::forEachBand(access::Region const& region, Slice const& slice, unsigned int rows, LeafWork& work)
{
    runOver(rootOfBands(region, slice, rows), work, *this, context_->group, tbb::simple_partitioner());
}

void Filter::reduceBands(access::Region const& region, Slice const& slice, unsigned int rows, LeafReduction& work)
{
    Block2d const root = rootOfBands(region, slice, rows);
    if (root.empty()) {
        return;
    }
    ReductionBody body(work, *this);
    tbb::parallel_deterministic_reduce(root, body, tbb::simple_partitioner(), context_->group);
}

} // namespace mox::filters

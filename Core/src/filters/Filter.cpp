#include "Core/private/filters/Filter.h"

#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>
#include <tbb/task_group.h>

#include <algorithm>
#include <memory>

namespace mox::filters {

using access::Block2d;
using access::Block3d;
using access::GrainedRange;

struct Filter::Context {
    tbb::task_group_context group;
};

namespace {

// A leaf covers a long run of each row, since columns lie side by side in memory.
constexpr unsigned int grainPlans = 10;
constexpr unsigned int grainRows = 10;
constexpr unsigned int grainColumns = 1024;

GrainedRange range(unsigned int size, unsigned int grain)
{
    return {size, 0, grain};
}

void addToProgress(algorithms::AbstractPrivateImplementation& filter, access::Block const& leaf)
{
    filter.incrementProgress(uint64{leaf.getNumOfPlans()} * leaf.getNumOfColumns() * leaf.getNumOfRows());
}

template <class RootBlock>
void runOver(RootBlock const& root, LeafWork& work, algorithms::AbstractPrivateImplementation& filter,
             tbb::task_group_context& group)
{
    if (root.empty()) {
        return;
    }
    auto const body = [&](RootBlock const& leaf) {
        work(leaf);
        addToProgress(filter, leaf);
    };
    tbb::parallel_for(root, body, tbb::auto_partitioner(), group);
}

/// Voxels of a leaf of a reduction: enough to outweigh a task and a join.
constexpr unsigned int reducedAtOnce = 1U << 16U;

/// As many of a dimension as `reducedAtOnce` allows beside the dimensions within.
unsigned int reductionGrain(uint64 voxelsOfOne)
{
    return static_cast<unsigned int>(std::max<uint64>(1, reducedAtOnce / std::max<uint64>(1, voxelsOfOne)));
}

/// A reduction in the form that oneTBB splits and joins.
class ReductionBody {
public:
    explicit ReductionBody(Reduction& whole, algorithms::AbstractPrivateImplementation& filter)
        : filter_(filter)
        , result_(&whole)
    {
    }

    ReductionBody(ReductionBody& other, tbb::split)
        : filter_(other.filter_)
        , own_(other.result_->fresh())
        , result_(own_.get())
    {
    }

    template <class LeafBlock>
    void operator()(LeafBlock const& leaf)
    {
        result_->fold(leaf);
        addToProgress(filter_, leaf);
    }

    void join(ReductionBody const& following) { result_->join(*following.result_); }

private:
    algorithms::AbstractPrivateImplementation& filter_;
    std::unique_ptr<Reduction> own_;
    Reduction* result_;
};

template <class RootBlock>
void reduceOver(RootBlock const& root, Reduction& result, algorithms::AbstractPrivateImplementation& filter,
                tbb::task_group_context& group)
{
    if (root.empty()) {
        return;
    }
    ReductionBody body(result, filter);
    tbb::parallel_deterministic_reduce(root, body, tbb::simple_partitioner(), group);
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

void Filter::forEachLeaf(Filter2dTag, access::Sizes const& sizes, Slice const& slice, LeafWork& work)
{
    Block2d const root(range(sizes.rows, grainRows), range(sizes.columns, grainColumns), slice.plan, slice.timeSeries,
                       slice.spectralSeries);
    runOver(root, work, *this, context_->group);
}

void Filter::forEachLeaf(Filter3dTag, access::Sizes const& sizes, Slice const& slice, LeafWork& work)
{
    Block3d const root(range(sizes.plans, grainPlans), range(sizes.rows, grainRows), range(sizes.columns, grainColumns),
                       slice.timeSeries, slice.spectralSeries);
    runOver(root, work, *this, context_->group);
}

void Filter::reduceLeaves(Filter2dTag, access::Sizes const& sizes, Slice const& slice, Reduction& result)
{
    Block2d const root(range(sizes.rows, reductionGrain(sizes.columns)), range(sizes.columns, reducedAtOnce),
                       slice.plan, slice.timeSeries, slice.spectralSeries);
    reduceOver(root, result, *this, context_->group);
}

void Filter::reduceLeaves(Filter3dTag, access::Sizes const& sizes, Slice const& slice, Reduction& result)
{
    Block3d const root(range(sizes.plans, reductionGrain(uint64{sizes.columns} * sizes.rows)),
                       range(sizes.rows, reductionGrain(sizes.columns)), range(sizes.columns, reducedAtOnce),
                       slice.timeSeries, slice.spectralSeries);
    reduceOver(root, result, *this, context_->group);
}

} // namespace mox::filters

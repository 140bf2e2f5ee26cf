#include "Core/private/filters/Filter.h"

#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <tbb/parallel_for.h>
#include <tbb/task_group.h>

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

template <class RootBlock>
void runOver(RootBlock const& root, LeafWork& work, algorithms::AbstractPrivateImplementation& filter,
             tbb::task_group_context& group)
{
    if (root.empty()) {
        return;
    }
    auto const body = [&](RootBlock const& leaf) {
        work(leaf);
        filter.incrementProgress(uint64{leaf.getNumOfPlans()} * leaf.getNumOfColumns() * leaf.getNumOfRows());
    };
    tbb::parallel_for(root, body, tbb::auto_partitioner(), group);
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

} // namespace mox::filters

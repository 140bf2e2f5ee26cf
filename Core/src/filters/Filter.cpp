#include "Core/private/filters/Filter.h"

#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <tbb/global_control.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>
#include <tbb/task_arena.h>
#include <tbb/task_group.h>

#include <algorithm>
#include <memory>

namespace mox::filters {

using access::Block2d;
using access::Block3d;

unsigned int numOfThreads()
{
    auto const arena = static_cast<std::size_t>(tbb::this_task_arena::max_concurrency());
    std::size_t const allowed = tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism);
    return static_cast<unsigned int>(std::min(arena, allowed));
}

struct Filter::Context {
    tbb::task_group_context group;
};

namespace {

// A leaf covers a long run of each row, since columns lie side by side in memory.
constexpr unsigned int grainPlans = 10;
constexpr unsigned int grainRows = 10;
constexpr unsigned int grainColumns = 1024;

/// The root of a loop over blocks of those grains.
Block2d rootOf(access::Region const& region, Slice const& slice, unsigned int rows, unsigned int columns)
{
    return {{region.getEndRow(), region.getBeginRow(), rows},
            {region.getEndColumn(), region.getBeginColumn(), columns},
            slice.plan,
            slice.timeSeries,
            slice.spectralSeries};
}

Block3d rootOf(access::Region const& region, Slice const& slice, unsigned int plans, unsigned int rows,
               unsigned int columns)
{
    return {{region.getEndPlan(), region.getBeginPlan(), plans},
            {region.getEndRow(), region.getBeginRow(), rows},
            {region.getEndColumn(), region.getBeginColumn(), columns},
            slice.timeSeries,
            slice.spectralSeries};
}

Block2d rootOfBands(access::Region const& region, Slice const& slice, unsigned int rows)
{
    return rootOf(region, slice, rows, std::max(region.getNumOfColumns(), 1U));
}

void addToProgress(algorithms::AbstractPrivateImplementation& filter, access::Block const& leaf,
                   unsigned int iterations = 1)
{
    filter.incrementProgress(uint64{iterations} * leaf.getNumOfPlans() * leaf.getNumOfColumns() * leaf.getNumOfRows());
}

template <class RootBlock, class Partitioner>
void runOver(RootBlock const& root, LeafWork& work, algorithms::AbstractPrivateImplementation& filter,
             tbb::task_group_context& group, Partitioner const& partitioner, unsigned int iterations = 1)
{
    if (root.empty()) {
        return;
    }
    auto const body = [&](RootBlock const& leaf) {
        work(leaf);
        addToProgress(filter, leaf, iterations);
    };
    tbb::parallel_for(root, body, partitioner, group);
}

/// Voxels of a leaf of a reduction: enough to outweigh a task and a join.
constexpr unsigned int reducedAtOnce = 1U << 16U;

/// As many of a dimension as `reducedAtOnce` allows beside the dimensions within.
unsigned int reductionGrain(uint64 voxelsOfOne)
{
    return static_cast<unsigned int>(std::max<uint64>(1, reducedAtOnce / std::max<uint64>(1, voxelsOfOne)));
}

/// A reduction in the form that oneTBB splits and joins. A split one makes its result with its first leaf: the
/// scheduler is in no state to see a split fail.
class ReductionBody {
public:
    explicit ReductionBody(Reduction& whole, algorithms::AbstractPrivateImplementation& filter)
        : filter_(filter)
        , whole_(whole)
        , result_(&whole)
    {
    }

    ReductionBody(ReductionBody& other, tbb::split)
        : filter_(other.filter_)
        , whole_(other.whole_)
    {
    }

    template <class LeafBlock>
    void operator()(LeafBlock const& leaf)
    {
        if (result_ == nullptr) {
            own_ = whole_.fresh();
            result_ = own_.get();
        }
        result_->fold(leaf);
        addToProgress(filter_, leaf);
    }

    void join(ReductionBody& following) noexcept
    {
        if (result_ != nullptr && following.result_ != nullptr) { // one is missing only where the loop was stopped
            result_->join(*following.result_);
        }
    }

private:
    algorithms::AbstractPrivateImplementation& filter_;
    Reduction& whole_;
    std::unique_ptr<Reduction> own_;
    Reduction* result_ = nullptr;
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

void Filter::forEachLeaf(Filter2dTag, access::Region const& region, Slice const& slice, LeafWork& work)
{
    runOver(rootOf(region, slice, grainRows, grainColumns), work, *this, context_->group, tbb::auto_partitioner());
}

void Filter::forEachLeaf(Filter3dTag, access::Region const& region, Slice const& slice, LeafWork& work)
{
    runOver(rootOf(region, slice, grainPlans, grainRows, grainColumns), work, *this, context_->group,
            tbb::auto_partitioner());
}

void Filter::forEachLeafOf(Filter2dTag, LeafShape const& shape, unsigned int iterations, access::Region const& region,
                           Slice const& slice, LeafWork& work)
{
    runOver(rootOf(region, slice, shape.rows, shape.columns), work, *this, context_->group, tbb::simple_partitioner(),
            iterations);
}

void Filter::forEachLeafOf(Filter3dTag, LeafShape const& shape, unsigned int iterations, access::Region const& region,
                           Slice const& slice, LeafWork& work)
{
    runOver(rootOf(region, slice, shape.plans, shape.rows, shape.columns), work, *this, context_->group,
            tbb::simple_partitioner(), iterations);
}

void Filter::reduceLeaves(Filter2dTag, access::Region const& region, Slice const& slice, Reduction& result)
{
    reduceOver(rootOf(region, slice, reductionGrain(region.getNumOfColumns()), reducedAtOnce), result, *this,
               context_->group);
}

void Filter::reduceLeaves(Filter3dTag, access::Region const& region, Slice const& slice, Reduction& result)
{
    unsigned int const columns = region.getNumOfColumns();
    reduceOver(rootOf(region, slice, reductionGrain(uint64{columns} * region.getNumOfRows()), reductionGrain(columns),
                      reducedAtOnce),
               result, *this, context_->group);
}

void Filter::forEachBand(access::Region const& region, Slice const& slice, unsigned int rows, LeafWork& work)
{
    runOver(rootOfBands(region, slice, rows), work, *this, context_->group, tbb::simple_partitioner());
}

void Filter::reduceBands(access::Region const& region, Slice const& slice, unsigned int rows, Reduction& result)
{
    reduceOver(rootOfBands(region, slice, rows), result, *this, context_->group);
}

} // namespace mox::filters

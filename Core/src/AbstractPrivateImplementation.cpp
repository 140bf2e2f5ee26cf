#include <Moxelcore/Core/AbstractPrivateImplementation.h>

#include "Core/private/AlgorithmState.h"

namespace mox::algorithms {

double RunRecord::percent() const
{
    uint64 const max = maxProgress.load();
    return max == 0 ? 0.0 : static_cast<double>(progress.load()) * 100.0 / static_cast<double>(max);
}

AbstractPrivateImplementation::AbstractPrivateImplementation(BaseAlgorithm* owner, AttachLater)
    : record_(owner != nullptr ? AlgorithmAccess::state(*owner).record.get() : new RunRecord)
    , owner_(owner)
    , attached_(false)
{
    intrusive_ptr_add_ref(record_);
}

AbstractPrivateImplementation::AbstractPrivateImplementation(BaseAlgorithm* owner)
    : AbstractPrivateImplementation(owner, AttachLater())
{
    attach();
}

AbstractPrivateImplementation::AbstractPrivateImplementation(AbstractPrivateImplementation& run)
    : record_(run.record_)
    , owner_(run.owner_)
    , attached_(false)
{
    intrusive_ptr_add_ref(record_);
}

AbstractPrivateImplementation::~AbstractPrivateImplementation()
{
    detach();
    intrusive_ptr_release(record_);
}

void AbstractPrivateImplementation::attach()
{
    if (owner_ == nullptr) {
        return;
    }
    AlgorithmState& state = AlgorithmAccess::state(*owner_);
    std::lock_guard const lock(state.implMutex);
    record_->progress = 0;
    record_->maxProgress = 0;
    record_->attached = true;
    state.impl = this;
    attached_ = true;
}

void AbstractPrivateImplementation::detach()
{
    if (!attached_) {
        return;
    }
    attached_ = false;
    AlgorithmState& state = AlgorithmAccess::state(*owner_);
    std::lock_guard const lock(state.implMutex);
    if (state.impl == this) {
        state.impl = nullptr;
    }
}

bool AbstractPrivateImplementation::cancelExecution()
{
    record_->cancelled = true;
    return true;
}

void AbstractPrivateImplementation::setMaxProgress(uint64 max)
{
    record_->maxProgress = max;
}

void AbstractPrivateImplementation::incrementProgress(uint64 step)
{
    record_->progress.fetch_add(step);
}

double AbstractPrivateImplementation::getProgress() const
{
    return record_->percent();
}

bool AbstractPrivateImplementation::isExecutionCancelled() const
{
    return record_->cancelled;
}

BaseAlgorithm* AbstractPrivateImplementation::getPublicInterface() const
{
    return owner_;
}

} // namespace mox::algorithms

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <Moxelcore/Core/AbstractPrivateImplementation.h>

#include <algorithm>

#include "Core/private/AlgoInfoAccess.h"
#include "Core/private/AlgorithmState.h"

namespace mox {

BaseAlgorithm::BaseAlgorithm()
    : state_(new AlgorithmState)
{
    intrusive_ptr_add_ref(state_);
    state_->owner = this;
}

BaseAlgorithm::BaseAlgorithm(BaseAlgorithm const& other)
    : state_(other.state_)
{
    intrusive_ptr_add_ref(state_);
}

BaseAlgorithm& BaseAlgorithm::operator=(BaseAlgorithm const& other)
{
    if (state_ == other.state_) {
        return *this;
    }
    AlgorithmAccess::abandon(*this);
    intrusive_ptr_add_ref(other.state_);
    intrusive_ptr_release(state_);
    state_ = other.state_;
    return *this;
}

BaseAlgorithm::~BaseAlgorithm()
{
    AlgorithmAccess::abandon(*this);
    intrusive_ptr_release(state_);
}

void AlgorithmAccess::abandon(BaseAlgorithm& algorithm)
{
    AlgorithmState& state = *algorithm.state_;
    if (state.owner != &algorithm) {
        return;
    }
    state.owner = nullptr;
    state.inputs.clear();
    state.outputs.clear();
}

bool BaseAlgorithm::running() const
{
    return running_.load(std::memory_order_relaxed);
}

bool BaseAlgorithm::cancelExecution()
{
    std::lock_guard const lock(state_->implMutex);
    if (state_->impl != nullptr) {
        return state_->impl->cancelExecution();
    }
    state_->record->cancelled = true; // for the implementation that the run in progress is about to attach
    return false;
}

bool BaseAlgorithm::isExecutionCancelled() const
{
    return state_->record->attached && state_->record->cancelled;
}

double BaseAlgorithm::getProgress() const
{
    return state_->record->attached ? state_->record->percent() : 0.0;
}

unsigned int BaseAlgorithm::getNumOfProperties() const
{
    return getNumOfInputProperties() + getNumOfOutputProperties();
}

unsigned int BaseAlgorithm::getNumOfInputProperties() const
{
    return static_cast<unsigned int>(state_->inputs.size());
}

unsigned int BaseAlgorithm::getNumOfOutputProperties() const
{
    return static_cast<unsigned int>(state_->outputs.size());
}

BaseProperty* BaseAlgorithm::getInputProperty(unsigned int index) const
{
    return index < state_->inputs.size() ? state_->inputs[index] : nullptr;
}

BaseProperty* BaseAlgorithm::getOutputProperty(unsigned int index) const
{
    return index < state_->outputs.size() ? state_->outputs[index] : nullptr;
}

BaseProperty* BaseAlgorithm::getPropertyfromName(String const& name) const
{
    for (auto const* properties : {&state_->inputs, &state_->outputs}) {
        for (BaseProperty* property : *properties) {
            if (property->getName() == name) {
                return property;
            }
        }
    }
    return nullptr;
}

void BaseAlgorithm::setMaximumExtraMemoryUsage(int mebivoxels)
{
    state_->maximumExtraMemoryUsage = mebivoxels;
}

int BaseAlgorithm::getMaximumExtraMemoryUsage() const
{
    return state_->maximumExtraMemoryUsage;
}

void BaseAlgorithm::setOptimLevel(OptimLevelType const& level)
{
    state_->optimLevel = level;
}

void BaseAlgorithm::setAutoCpuDispatch(bool automatic)
{
    state_->autoCpuDispatch = automatic;
}

bool BaseAlgorithm::isOptimLevelSupported(OptimLevelType const& level) const
{
    auto const& runners = AlgoInfoAccess::getRunners(*getInfo());
    return std::any_of(runners.begin(), runners.end(),
                       [&](auto const& runner) { return runner->getOptimLevel() == level; });
}

OptimLevelType BaseAlgorithm::getMostPerformantAvailableOptimLevel() const
{
    for (int level = getEnumInfo<OptimLevelType>().size() - 1; level >= 0; --level) {
        auto const candidate = static_cast<OptimLevelType::Value>(level);
        if (isOptimLevelSupported(candidate)) {
            return candidate;
        }
    }
    return static_cast<OptimLevelType::Value>(-1);
}

void BaseAlgorithm::addInput(BaseProperty* property)
{
    state_->inputs.push_back(property);
}

void BaseAlgorithm::addOutput(BaseProperty* property)
{
    state_->outputs.push_back(property);
}

bool BaseAlgorithm::lockAllProperties(bool locked)
{
    for (auto const* properties : {&state_->inputs, &state_->outputs}) {
        for (BaseProperty* property : *properties) {
            if (property != nullptr) {
                property->lock(locked);
            }
        }
    }
    return true;
}

void BaseAlgorithm::applyAllRules()
{
    for (auto const* properties : {&state_->inputs, &state_->outputs}) {
        for (BaseProperty* property : *properties) {
            property->applyRules();
        }
    }
}

} // namespace mox

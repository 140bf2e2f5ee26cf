#include <Moxelcore/Core/BaseAlgorithm.h>

#include <tbb/task_group.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <system_error>

#include "Core/private/AlgoInfoAccess.h"
#include "Core/private/AlgorithmState.h"
#include "Core/private/Helper/raise.h"
#include "Core/private/TaskRunInternal.h"

namespace mox {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr auto wakeUp = Milliseconds(20);
constexpr unsigned short longestPeriod = 100;

Milliseconds capped(unsigned short period)
{
    return Milliseconds(std::min(longestPeriod, period));
}

/// Paces the calls into the interaction object.
class Poller {
public:
    Poller(BaseAlgorithm& algorithm, algorithms::InteractionInterface& interaction)
        : algorithm_(algorithm)
        , interaction_(interaction)
        , progressPeriod_(capped(interaction.getProgressPeriod()))
        , nextProgress_(Clock::now() + progressPeriod_)
        , nextCancel_(Clock::now() + capped(interaction.getCancelPeriod()))
    {
    }

    /// False once the run has been cancelled.
    bool poll()
    {
        auto const now = Clock::now();
        if (cancelRequested(now)) {
            algorithm_.cancelExecution();
            return false;
        }
        if (now > nextProgress_) {
            interaction_.notifyProgress(algorithm_.getProgress());
            nextProgress_ = now + progressPeriod_;
        }
        return true;
    }

private:
    bool cancelRequested(Clock::time_point now)
    {
        if (tbb::is_current_task_group_canceling()) {
            return true;
        }
        if (now <= nextCancel_) {
            return false;
        }
        nextCancel_ = now + progressPeriod_;
        return interaction_.isCancelRequested();
    }

    BaseAlgorithm& algorithm_;
    algorithms::InteractionInterface& interaction_;
    Milliseconds progressPeriod_;
    Clock::time_point nextProgress_;
    Clock::time_point nextCancel_;
};

bool tryLevel(BaseAlgorithm& algorithm, int level)
{
    for (auto const& runner : AlgoInfoAccess::getRunners(*algorithm.getInfo())) {
        if (runner->getOptimLevel() == level && runner->canRun(&algorithm)) {
            runner->run(&algorithm);
            return true;
        }
    }
    return false;
}

bool tryLevelsFromTheTop(BaseAlgorithm& algorithm)
{
    for (int level = getEnumInfo<OptimLevelType>().size() - 1; level >= 0; --level) {
        if (tryLevel(algorithm, level)) {
            return true;
        }
    }
    return false;
}

Exception::exceptionInfo levelOf(BaseAlgorithm const& algorithm, char const* message)
{
    Exception::exceptionInfo info;
    info.message = message;
    info.className = algorithm.getInfo()->getName();
    info.libName = algorithm.getInfo()->getLibName();
    return info;
}

} // namespace

void TaskRunInternal::execute() const
{
    AlgorithmState const& state = AlgorithmAccess::state(algorithm);
    bool const hasRun = state.autoCpuDispatch ? tryLevelsFromTheTop(algorithm) : tryLevel(algorithm, state.optimLevel);
    if (!hasRun) {
        helper::raise<UnexpectedError>("Core/src/BaseAlgorithm", "no runner found for algorithm");
    }
}

void TaskRunInternal::executeWatched(algorithms::InteractionInterface& interaction) const
{
    Poller poller(algorithm, interaction);
    std::future<void> job;
    try {
        job = std::async(std::launch::async, [this] { execute(); });
    } catch (std::system_error const&) { // no thread to be had: work here, unwatched
        execute();
        interaction.notifyProgress(algorithm.getProgress());
        return;
    }
    try {
        while (job.wait_for(wakeUp) != std::future_status::ready && poller.poll()) {
        }
    } catch (...) {
        algorithm.cancelExecution();
        job.wait();
        throw;
    }
    job.get();
    interaction.notifyProgress(algorithm.getProgress());
}

void BaseAlgorithm::run(algorithms::InteractionInterface* interaction)
{
    if (running_.exchange(true)) {
        return;
    }
    state_->record->cancelled = false;
    auto const leave = [this] {
        lockAllProperties(false);
        state_->record->attached = false;
        running_ = false;
    };
    try {
        if (state_->owner == nullptr) {
            helper::raise<InvalidCall>("Core/src/BaseAlgorithm", "the source of this copied algorithm is gone");
        }
        lockAllProperties(true);
        applyAllRules();
        TaskRunInternal const task{*this};
        interaction == nullptr ? task.execute() : task.executeWatched(*interaction);
    } catch (Exception& exception) {
        leave();
        exception.addInfoLevel(levelOf(*this, ""));
        throw;
    } catch (std::exception const& exception) {
        leave();
        throw UnexpectedError(levelOf(*this, exception.what()));
    } catch (...) {
        leave();
        throw UnexpectedError(levelOf(*this, "undefined exception"));
    }
    leave();
}

} // namespace mox

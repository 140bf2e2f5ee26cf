#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

namespace mox {

/// The part of a run that may go to a thread of its own: choice of the runner, and its work.
struct TaskRunInternal {
    BaseAlgorithm& algorithm;

    /// Throws `UnexpectedError` "no runner found for algorithm" when no runner takes the work.
    void execute() const;

    /// Executes on a thread of its own, because a job on a worker of oneTBB would cost the nested loops a core and
    /// starve where callers fill all workers; the calling thread polls the interaction object meanwhile.
    void executeWatched(algorithms::InteractionInterface& interaction) const;
};

} // namespace mox

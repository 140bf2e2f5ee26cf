#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Integers.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <atomic>
#include <mutex>
#include <vector>

namespace mox {

namespace algorithms {

class AbstractPrivateImplementation;

/// Progress and cancel flag of one run. It outlives the implementation object, which lives on the runner's stack,
/// so that threads that watch the run never read freed memory.
struct RunRecord : boost::intrusive_ref_counter<RunRecord> {
    std::atomic<uint64> progress = 0;
    std::atomic<uint64> maxProgress = 0;
    std::atomic<bool> cancelled = false;
    std::atomic<bool> attached = false;

    double percent() const;
};

} // namespace algorithms

/// State of an algorithm object, shared by its copies.
struct AlgorithmState : boost::intrusive_ref_counter<AlgorithmState> {
    BaseAlgorithm* owner = nullptr; // null once the object that the property lists point into is gone
    std::vector<BaseProperty*> inputs;
    std::vector<BaseProperty*> outputs;
    bool autoCpuDispatch = true;
    OptimLevelType optimLevel = OptimLevelType::SCALAR;
    std::mutex implMutex; // keeps `impl` alive while another thread cancels it
    algorithms::AbstractPrivateImplementation* impl = nullptr;
    int maximumExtraMemoryUsage = 0;
    boost::intrusive_ptr<algorithms::RunRecord> const record{new algorithms::RunRecord};
};

/// What the frame does with an algorithm and a derived class may not.
struct AlgorithmAccess {
    static AlgorithmState& state(BaseAlgorithm& algorithm) { return *algorithm.state_; }

    /// The object is about to give up its state; copies that share it can no longer run.
    static void abandon(BaseAlgorithm& algorithm);
};

} // namespace mox

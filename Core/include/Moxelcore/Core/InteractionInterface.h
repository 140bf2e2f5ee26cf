#pragma once

#include <Moxelcore/Core/Api.h>

namespace mox::algorithms {

/// Supplied by the caller of `BaseAlgorithm::run` to watch and cancel it. All operations are called on the thread
/// that called `run`. What they throw cancels the run and leaves it as an error.
class MOXELCORE_API InteractionInterface {
public:
    /// Percent done, 0 to 100.
    virtual void notifyProgress(double percent) = 0;
    virtual bool isCancelRequested() = 0;
    /// Milliseconds between two calls of `notifyProgress`; more than 100 counts as 100.
    virtual unsigned short getProgressPeriod() = 0;
    /// Milliseconds to the first call of `isCancelRequested`; more than 100 counts as 100. The progress period
    /// paces the calls that follow.
    virtual unsigned short getCancelPeriod() = 0;

protected:
    ~InteractionInterface() = default;
};

} // namespace mox::algorithms

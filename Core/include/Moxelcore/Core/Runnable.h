#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Enum/OptimLevelType.h>

namespace mox {

class BaseAlgorithm;

/// One implementation of an algorithm class. Runners hold no state and are shared by all objects of the class.
class MOXELCORE_API Runnable {
public:
    virtual void run(BaseAlgorithm* algorithm) = 0;
    /// Whether this runner can handle the algorithm's properties on this processor.
    virtual bool canRun(BaseAlgorithm* algorithm) = 0;
    virtual OptimLevelType getOptimLevel() = 0;

protected:
    ~Runnable() = default;
};

} // namespace mox

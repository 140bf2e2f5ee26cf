#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Runnable.h>
#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include "Core/private/Cpu.h"
#include "Core/private/Helper/safe_cast.h"

namespace mox {

/// Base of the runners of the scalar level: they run on every processor.
template <class Algorithm>
class ScalarRunner : public Runnable {
public:
    void run(BaseAlgorithm* algorithm) final { execute(helper::safe_cast<Algorithm>(*algorithm)); }
    bool canRun(BaseAlgorithm*) final { return true; }
    OptimLevelType getOptimLevel() final { return OptimLevelType::SCALAR; }

protected:
    ~ScalarRunner() = default;

private:
    virtual void execute(Algorithm& algorithm) const = 0;
};

/// Runs a dispatcher for the voxel type of "input". A dispatcher is a tag with a member template
/// `run<T>(Algorithm&)`, static. A type that is not in the list is no work.
template <class Algorithm, class Dispatcher, class Types>
class ScalarOneTypeRunner final : public ScalarRunner<Algorithm> {
private:
    void execute(Algorithm& algorithm) const override
    {
        dispatch(Types(), algorithm.input.get()->getVoxelType(),
                 [&]<class T>() { Dispatcher::template run<T>(algorithm); });
    }
};

/// The same with the vector kernels of minimum and maximum, on processors with SSE 4.1.
template <class Algorithm, class Dispatcher>
class SSE41OneTypeMinMaxRunner final : public Runnable {
public:
    void run(BaseAlgorithm* algorithm) override
    {
        auto& concrete = helper::safe_cast<Algorithm>(*algorithm);
        dispatch(SseVoxels(), concrete.input.get()->getVoxelType(),
                 [&]<class T>() { Dispatcher::template run<T>(concrete); });
    }

    bool canRun(BaseAlgorithm* algorithm) override
    {
        auto& concrete = helper::safe_cast<Algorithm>(*algorithm);
        VoxelTypes const type = concrete.input.get()->getVoxelType();
        if (type != concrete.output.get()->getVoxelType()) {
            return false;
        }
        devices::Cpu const& cpu = devices::Cpu::get();
        return cpu.hasSSE && dispatch(SseVoxels(), type, []<class T>() {}) && cpu.sseLevel >= devices::sse41;
    }

    OptimLevelType getOptimLevel() override { return OptimLevelType::VEC_SSE; }
};

} // namespace mox

#include "Morphology/private/passes.h"

#include <algorithm>

namespace mox::morphology {

namespace {

Step reflectedStep(Step step)
{
    if (step.symmetry == Symmetry::central) {
        return step;
    }
    if (auto* const inPlane = std::get_if<Shared<OffsetList2D>>(&step.element)) {
        *inPlane = reflected(**inPlane);
    } else if (auto* const inSpace = std::get_if<Shared<OffsetList3D>>(&step.element)) {
        *inSpace = reflected(**inSpace);
    }
    return step;
}

} // namespace

Steps withoutIdle(Steps steps)
{
    std::erase_if(steps, [](Step const& step) { return step.iterations == 0; });
    return steps;
}

uint64 numOfIterations(Steps const& steps)
{
    uint64 sum = 0;
    for (Step const& step : steps) {
        sum += step.iterations;
    }
    return sum;
}

std::vector<Pass> passesOf(std::span<Operation const> operations, Steps const& steps)
{
    std::vector<Pass> passes;
    for (Operation const operation : operations) {
        passes.push_back({operation, steps});
        if (passes.size() > 1) {
            std::transform(steps.begin(), steps.end(), passes.back().steps.begin(), reflectedStep);
        }
    }
    return passes;
}

} // namespace mox::morphology

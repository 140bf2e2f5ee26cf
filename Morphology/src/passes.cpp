#include "Morphology/private/passes.h"

namespace mox::morphology {

namespace {

Step reflectedStep(Step step)
{
    if (step.symmetry == Symmetry::central) {
        return step;
    }
    if (auto* const inPlane = std::get_if<OffsetList2D>(&step.element)) {
        *inPlane = reflected(std::move(*inPlane));
    } else if (auto* const inSpace = std::get_if<OffsetList3D>(&step.element)) {
        *inSpace = reflected(std::move(*inSpace));
    }
    return step;
}

} // namespace

Steps withoutIdle(Steps steps)
{
    std::erase_if(steps, [](Step const& step) { return step.iterations == 0; });
    return steps;
}

std::vector<Pass> passesOf(std::span<Operation const> operations, Steps const& steps)
{
    std::vector<Pass> passes;
    for (std::size_t i = 0; i < operations.size(); ++i) {
        for (Step const& step : steps) {
            passes.push_back({operations[i], i == 0 ? step : reflectedStep(step)});
        }
    }
    return passes;
}

} // namespace mox::morphology

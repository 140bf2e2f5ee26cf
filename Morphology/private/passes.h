#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>

#include <span>
#include <variant>
#include <vector>

#include "Morphology/private/elements.h"

namespace mox::morphology {

enum class Operation { erosion, dilation };

/// 3 x 3 and 3 x 3 x 3 voxels.
struct SquareElement {};
struct CubeElement {};

using Element = std::variant<access::Neighborhood2D_4Tag, SquareElement, OffsetList2D, access::Neighborhood3D_6Tag,
                             access::Neighborhood3D_18Tag, CubeElement, OffsetList3D>;

/// Whether an element is the same when it is reflected at its origin.
enum class Symmetry { none, central };

/// A small element applied again and again.
struct Step {
    Element element;
    unsigned int iterations = 1;
    Symmetry symmetry = Symmetry::central;
};

/// Steps that follow each other make one large element.
using Steps = std::vector<Step>;

/// A step alone.
Steps onlyStep(Step step);

/// The steps that have something to do.
Steps withoutIdle(Steps steps);

uint64 numOfIterations(Steps const& steps);

/// An operation with a large element.
struct Pass {
    Operation operation;
    Steps steps;
};

/// Each operation with all steps, one operation after the other. The second takes elements reflected: that is what
/// makes an opening or a closing of it. Symmetric elements keep their order of comparison.
std::vector<Pass> passesOf(std::span<Operation const> operations, Steps const& steps);

/// Runs the passes, the first from the input, the others on the output, with one progress over all of them. Voxels
/// outside the image read as the value that loses against every finite one.
template <class T, class Arch>
void runPasses(BaseAlgorithm& algorithm, ImageModel const& input, ImageModel& output, std::vector<Pass> const& passes);

} // namespace mox::morphology

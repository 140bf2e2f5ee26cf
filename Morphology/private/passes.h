#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>

#include <memory>
#include <span>
#include <utility>
#include <variant>
#include <vector>

#include "Morphology/private/elements.h"

namespace mox::morphology {

enum class Operation { erosion, dilation };

/// 3 x 3 and 3 x 3 x 3 voxels.
struct SquareElement {};
struct CubeElement {};

/// A list that copies share, so that no copy of an element throws: g++ 12 destroys what is not there when that of a
/// variant of more than five alternatives does.
template <class List>
class Shared {
public:
    Shared(List list)
        : list_(std::make_shared<List const>(std::move(list)))
    {
    }

    List const& operator*() const { return *list_; }

private:
    std::shared_ptr<List const> list_;
};

using Element =
    std::variant<access::Neighborhood2D_4Tag, SquareElement, Shared<OffsetList2D>, access::Neighborhood3D_6Tag,
                 access::Neighborhood3D_18Tag, CubeElement, Shared<OffsetList3D>>;

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

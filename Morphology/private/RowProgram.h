#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "Morphology/private/neighborhoods.h"

namespace mox::morphology {

/// The rows of an earlier stage, seen at an offset.
struct Tap {
    unsigned int stage = 0;
    kernel::Offset3D offset{0, 0, 0};
};

/// Each voxel of a stage is the reduction of what its taps see from there, in their order.
struct Stage {
    std::vector<Tap> taps;
    /// Whether a first operand that is NaN is passed over, as later ones always are. For pairs of taps.
    bool passesOverNan = false;
    /// Whether later stages read the value outside the image, where it is outside, rather than what the stage is there.
    bool endsIteration = false;
};

/// A large element taken apart. Stage 0 is the image extended beyond its edges, each further stage reduces a few rows
/// of stages before it, and the last one is the result.
class RowProgram {
public:
    RowProgram()
        : stages_(1)
    {
    }

    /// Returns the number of the new stage.
    unsigned int append(Stage stage)
    {
        stages_.push_back(std::move(stage));
        return last();
    }

    std::span<Stage const> stages() const { return stages_; }
    unsigned int last() const { return static_cast<unsigned int>(stages_.size()) - 1; }

private:
    std::vector<Stage> stages_;
};

constexpr std::size_t shortestRun = 3;

/// Whether runs of that many voxels side by side are made in registers.
constexpr bool isLengthOfRun(std::size_t length)
{
    return (length >= shortestRun && length <= 8) || length == 16 || length == 32;
}

/// Whether a stage is made of such a run.
bool isRun(Stage const& stage);

/// Reads and writes per voxel.
std::size_t costOf(RowProgram const& program);

/// What the taps of a stage are to each other.
enum class Form {
    any,
    run, ///< voxels side by side, of a length that is made in registers
    rung ///< two rows of the stage before it at the same columns, the second one made last
};

/// Where a stage is needed for the result of one voxel, and how much of it is kept. With row y of plan z of the result,
/// a stage makes its row y + around.most.row of plan z + around.most.plan: so one sweep over the rows of a leaf makes
/// all stages, and each reads what the ones before it have made.
struct StageExtent {
    OffsetBox around;
    int rowsKept = 1;  ///< of one plan
    int plansKept = 1; ///< where more than one, with all their rows
    Form form = Form::any;
    /// Whether none of the voxels that it reduces is NaN.
    bool readsNumbers = false;
    /// Whether it is the value outside wherever it lies beside the image, and need not be made there.
    bool isOutsideBesideImage = false;
    /// Whether a later stage may read it beside the image.
    bool isReadBesideImage = false;
};

/// In the order of the stages.
std::vector<StageExtent> extentsOf(RowProgram const& program);

/// Bytes behind a kept row that may be read. They also keep rows from lying a multiple of a page apart, at which they
/// would drive each other out of the cache.
constexpr std::size_t roomBehindRow = 64;

/// From the beginning of a kept row of so many bytes to that of the next one.
constexpr std::size_t strideOfRow(std::size_t bytes)
{
    return bytes / 64 * 64 + 64 + roomBehindRow;
}

/// What the kept rows of a leaf take.
std::size_t bytesKept(std::span<StageExtent const> extents, filters::LeafShape const& leaf, std::size_t bytesOfVoxel);

/// A leaf with which the kept rows of the first program stay in the caches, if it can be, and those of the others take
/// no more than a few MiB; null where even with a small leaf some take more. In the plane there are two leaves for each
/// thread, if the image is high enough.
std::optional<filters::LeafShape> leafFor(std::span<RowProgram const> programs, access::Sizes const& sizes,
                                          std::size_t bytesOfVoxel, unsigned int numOfThreads);

} // namespace mox::morphology

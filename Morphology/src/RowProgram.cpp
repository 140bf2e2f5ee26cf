#include "Morphology/private/RowProgram.h"

#include <algorithm>
#include <functional>

namespace mox::morphology {

namespace {

constexpr std::size_t bytesThatStayInCache = 1U << 20U;
constexpr std::size_t bytesAtMost = 7U << 19U;

void include(std::optional<OffsetBox>& box, OffsetBox const& around, kernel::Offset3D const& offset)
{
    OffsetBox const moved{
        {around.least.column + offset.column, around.least.row + offset.row, around.least.plan + offset.plan},
        {around.most.column + offset.column, around.most.row + offset.row, around.most.plan + offset.plan}};
    box = box ? unionOf(*box, moved) : moved;
}

int heightOf(OffsetBox const& box)
{
    return box.most.row - box.least.row;
}

bool readsStraight(Stage const& stage)
{
    return std::all_of(stage.taps.begin(), stage.taps.end(), [](Tap const& tap) { return tap.offset.column == 0; });
}

bool isRung(Stage const& stage, std::size_t k, kernel::Offset3D const& most, kernel::Offset3D const& mostBefore)
{
    if (stage.taps.size() != 2 || stage.endsIteration || !readsStraight(stage)) {
        return false;
    }
    kernel::Offset3D const lower = stage.taps[1].offset;
    return stage.taps[0].stage == k - 1 && stage.taps[1].stage == k - 1 && most.row + lower.row == mostBefore.row &&
           most.plan + lower.plan == mostBefore.plan;
}

/// The rungs of a ladder are made as wide as what the first one reads.
void findForms(std::span<Stage const> stages, std::vector<StageExtent>& extents)
{
    for (std::size_t k = 1; k < stages.size(); ++k) {
        StageExtent const& before = extents[k - 1];
        StageExtent& extent = extents[k];
        if (isRun(stages[k])) {
            extent.form = Form::run;
        } else if (k + 1 < stages.size() && isRung(stages[k], k, extent.around.most, before.around.most)) {
            extent.form = Form::rung;
            extent.around.least.column = before.around.least.column;
            extent.around.most.column = before.around.most.column;
        }
    }
}

void findReadsNumbers(std::span<Stage const> stages, std::vector<StageExtent>& extents)
{
    std::vector<bool> mayHoldNan{true};
    for (Stage const& stage : stages.subspan(1)) {
        auto const mayBeNan = [&](Tap const& tap) { return mayHoldNan[tap.stage]; };
        extents[mayHoldNan.size()].readsNumbers = std::none_of(stage.taps.begin(), stage.taps.end(), mayBeNan);
        mayHoldNan.push_back(!stage.passesOverNan && mayBeNan(stage.taps.front())); // later ones never win
    }
}

/// The image is the value outside there, so is what ends an iteration, and what reads nothing else straight above and
/// below it.
void findBesideImage(std::span<Stage const> stages, std::vector<StageExtent>& extents)
{
    extents[0].isOutsideBesideImage = true;
    for (std::size_t k = 1; k < stages.size(); ++k) {
        auto const& taps = stages[k].taps;
        bool const seesOutside = readsStraight(stages[k]) && std::all_of(taps.begin(), taps.end(), [&](Tap const& tap) {
                                     return extents[tap.stage].isOutsideBesideImage;
                                 });
        extents[k].isOutsideBesideImage = stages[k].endsIteration || seesOutside;
        for (Tap const& tap : taps) {
            extents[tap.stage].isReadBesideImage |= tap.offset.column != 0 || !extents[k].isOutsideBesideImage;
        }
    }
}

/// Halves a size while the condition holds, but not below the floor.
template <class Condition>
void shrink(unsigned int& size, unsigned int floor, Condition&& isTooLarge)
{
    while (size >= 2 * floor && isTooLarge()) {
        size = (size + 1) / 2;
    }
}

} // namespace

bool isRun(Stage const& stage)
{
    auto const goesOn = [](Tap const& tap, Tap const& next) {
        return next.stage == tap.stage && next.offset == plus(tap.offset, {1, 0, 0}, 1);
    };
    return isLengthOfRun(stage.taps.size()) &&
           std::adjacent_find(stage.taps.begin(), stage.taps.end(), std::not_fn(goesOn)) == stage.taps.end();
}

std::size_t costOf(RowProgram const& program)
{
    std::size_t cost = 0;
    for (Stage const& stage : program.stages()) {
        cost += (isRun(stage) ? 1 : stage.taps.size()) + 1;
    }
    return cost;
}

std::vector<StageExtent> extentsOf(RowProgram const& program)
{
    std::vector<std::optional<OffsetBox>> boxes(program.stages().size());
    boxes.front() = OffsetBox(); // what a row is made of is read before it is written, even in place
    boxes.back() = OffsetBox();
    for (std::size_t k = program.last(); k > 0; --k) {
        for (Tap const& tap : program.stages()[k].taps) {
            include(boxes[tap.stage], *boxes[k], tap.offset);
        }
    }
    std::vector<StageExtent> extents(boxes.size());
    std::transform(boxes.begin(), boxes.end(), extents.begin(), [](auto const& box) { return StageExtent{*box}; });
    for (std::size_t k = program.last(); k > 0; --k) {
        for (Tap const& tap : program.stages()[k].taps) {
            StageExtent& read = extents[tap.stage];
            kernel::Offset3D const newest = read.around.most;
            kernel::Offset3D const seen = plus(extents[k].around.most, tap.offset, 1);
            read.rowsKept = std::max(read.rowsKept, newest.row - seen.row + 1);
            read.plansKept = std::max(read.plansKept, newest.plan - seen.plan + 1);
        }
    }
    findForms(program.stages(), extents);
    findReadsNumbers(program.stages(), extents);
    findBesideImage(program.stages(), extents);
    return extents;
}

std::size_t bytesKept(std::span<StageExtent const> extents, filters::LeafShape const& leaf, std::size_t bytesOfVoxel)
{
    std::size_t bytes = 0;
    for (StageExtent const& extent : extents.first(extents.size() - 1)) {
        OffsetBox const& box = extent.around;
        std::size_t const columns = leaf.columns + static_cast<std::size_t>(box.most.column - box.least.column);
        std::size_t const rows = leaf.rows + static_cast<std::size_t>(heightOf(box));
        std::size_t const rowsKept = extent.plansKept == 1 ? static_cast<std::size_t>(extent.rowsKept)
                                                           : static_cast<std::size_t>(extent.plansKept) * rows;
        bytes += rowsKept * strideOfRow(columns * bytesOfVoxel);
    }
    return bytes;
}

std::optional<filters::LeafShape> leafFor(std::span<RowProgram const> programs, access::Sizes const& sizes,
                                          std::size_t bytesOfVoxel, unsigned int numOfThreads)
{
    std::vector<std::vector<StageExtent>> extents;
    for (RowProgram const& program : programs) {
        extents.push_back(extentsOf(program));
    }
    OffsetBox const& reach = extents.front().front().around;
    auto const width = static_cast<unsigned int>(reach.most.column - reach.least.column);
    auto const height = static_cast<unsigned int>(heightOf(reach));
    auto const depth = static_cast<unsigned int>(reach.most.plan - reach.least.plan);
    bool const isInPlane = depth == 0;
    // What is made anew around a leaf is then no more than a few parts in ten of it.
    auto const wellAbove = [](unsigned int extent) { return std::max(128U, 8 * extent); };
    filters::LeafShape leaf{isInPlane ? 1 : wellAbove(depth), isInPlane ? wellAbove(height) : 64,
                            std::max(sizes.columns, 1U)};
    auto const areFewLeaves = [&] { return sizes.rows / leaf.rows < 2 * numOfThreads; };
    auto const bytesOf = [&](auto const& extentsOfOne) { return bytesKept(extentsOfOne, leaf, bytesOfVoxel); };
    auto const leavesCache = [&] { return bytesOf(extents.front()) > bytesThatStayInCache; };
    auto const isTooLarge = [&] {
        return std::any_of(extents.begin(), extents.end(), [&](auto const& one) { return bytesOf(one) > bytesAtMost; });
    };
    if (isInPlane) {
        shrink(leaf.rows, std::max(64U, height), areFewLeaves);
    } else {
        shrink(leaf.rows, 16, leavesCache);
    }
    shrink(leaf.columns, std::max(isInPlane ? 1024U : 256U, width), leavesCache);
    shrink(leaf.columns, 64, isTooLarge);
    shrink(leaf.rows, 8, isTooLarge);
    return isTooLarge() ? std::nullopt : std::optional(leaf);
}

} // namespace mox::morphology

#include "Morphology/private/RowProgram.h"

#include <algorithm>

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

/// Halves a size while the condition holds, but not below the floor.
template <class Condition>
void shrink(unsigned int& size, unsigned int floor, Condition&& isTooLarge)
{
    while (size >= 2 * floor && isTooLarge()) {
        size = (size + 1) / 2;
    }
}

} // namespace

std::vector<StageExtent> extentsOf(RowProgram const& program)
{
    std::vector<std::optional<OffsetBox>> boxes(program.stages().size());
    boxes.back() = OffsetBox();
    for (std::size_t k = program.last(); k > 0; --k) {
        for (Tap const& tap : program.stages()[k].taps) {
            include(boxes[tap.stage], *boxes[k], tap.offset);
        }
    }
    std::vector<StageExtent> extents(boxes.size());
    std::transform(boxes.begin(), boxes.end(), extents.begin(), [](auto const& box) { return StageExtent{*box}; });
    for (std::size_t k = program.last(); k > 0; --k) {
        kernel::Offset3D const ahead = extents[k].around.most;
        for (Tap const& tap : program.stages()[k].taps) {
            StageExtent& read = extents[tap.stage];
            kernel::Offset3D const most = read.around.most;
            read.rowsKept = std::max(read.rowsKept, most.row - ahead.row - tap.offset.row + 1);
            read.plansKept = std::max(read.plansKept, most.plan - ahead.plan - tap.offset.plan + 1);
        }
    }
    return extents;
}

std::size_t keptVoxels(std::span<StageExtent const> extents, filters::LeafShape const& leaf)
{
    std::size_t count = 0;
    for (StageExtent const& extent : extents.first(extents.size() - 1)) {
        OffsetBox const& box = extent.around;
        std::size_t const columns = leaf.columns + static_cast<std::size_t>(box.most.column - box.least.column);
        std::size_t const rows = leaf.rows + static_cast<std::size_t>(heightOf(box));
        count += columns * (extent.plansKept == 1 ? static_cast<std::size_t>(extent.rowsKept)
                                                  : static_cast<std::size_t>(extent.plansKept) * rows);
    }
    return count;
}

std::optional<filters::LeafShape> leafFor(std::span<RowProgram const> programs, access::Sizes const& sizes,
                                          std::size_t bytesOfVoxel)
{
    std::vector<std::vector<StageExtent>> extents;
    for (RowProgram const& program : programs) {
        extents.push_back(extentsOf(program));
    }
    OffsetBox const& reach = extents.front().front().around;
    bool const isInPlane = reach.most.plan == reach.least.plan;
    // What is made anew around a leaf is then no more than a few parts in ten of it.
    auto const wellAbove = [](int width) { return std::max(128U, 8 * static_cast<unsigned int>(width)); };
    filters::LeafShape leaf{isInPlane ? 1 : wellAbove(reach.most.plan - reach.least.plan),
                            isInPlane ? wellAbove(heightOf(reach)) : 64, std::max(sizes.columns, 1U)};
    auto const bytesOf = [&](auto const& extentsOfOne) { return keptVoxels(extentsOfOne, leaf) * bytesOfVoxel; };
    auto const leavesCache = [&] { return bytesOf(extents.front()) > bytesThatStayInCache; };
    auto const isTooLarge = [&] {
        return std::any_of(extents.begin(), extents.end(), [&](auto const& one) { return bytesOf(one) > bytesAtMost; });
    };
    if (!isInPlane) {
        shrink(leaf.rows, 16, leavesCache);
    }
    shrink(leaf.columns, isInPlane ? 1024 : 256, leavesCache);
    shrink(leaf.columns, 64, isTooLarge);
    shrink(leaf.rows, 8, isTooLarge);
    return isTooLarge() ? std::nullopt : std::optional(leaf);
}

} // namespace mox::morphology

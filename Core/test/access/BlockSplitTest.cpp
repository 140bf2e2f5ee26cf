#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <rapidcheck/gtest.h>

#include <vector>

namespace mox::testing {

namespace {

using access::GrainedRange;

/// Ranges that do not begin at 0, short ones too, with grains of the same order.
GrainedRange anyRange()
{
    unsigned int const begin = *rc::gen::inRange(0U, 9U);
    unsigned int const size = *rc::gen::inRange(1U, 40U);
    return {begin + size, begin, *rc::gen::inRange(1U, 12U)};
}

template <class BlockType>
void splitToLeaves(BlockType block, std::vector<BlockType>& leaves)
{
    if (!block.is_divisible()) {
        leaves.push_back(block);
        return;
    }
    BlockType const upper(block, tbb::split());
    RC_ASSERT(!block.empty());
    RC_ASSERT(!upper.empty());
    splitToLeaves(block, leaves);
    splitToLeaves(upper, leaves);
}

/// Every voxel of the block lies in one leaf, and the leaves hold nothing else.
template <class BlockType>
void leavesCover(BlockType const& block)
{
    std::vector<BlockType> leaves;
    splitToLeaves(block, leaves);
    std::vector<int> hits(std::size_t{block.getNumOfPlans()} * block.getNumOfRows() * block.getNumOfColumns());
    for (BlockType const& leaf : leaves) {
        for (unsigned int z = leaf.getBeginPlan(); z < leaf.getEndPlan(); ++z) {
            for (unsigned int y = leaf.getBeginRow(); y < leaf.getEndRow(); ++y) {
                for (unsigned int x = leaf.getBeginColumn(); x < leaf.getEndColumn(); ++x) {
                    std::size_t const plan = z - block.getBeginPlan();
                    std::size_t const row = plan * block.getNumOfRows() + (y - block.getBeginRow());
                    ++hits.at(row * block.getNumOfColumns() + (x - block.getBeginColumn()));
                }
            }
        }
    }
    RC_ASSERT(hits == std::vector<int>(hits.size(), 1));
}

RC_GTEST_PROP(BlockSplit, coversAPlanarBlockOnce, ())
{
    leavesCover(access::Block2d(anyRange(), anyRange(), 3, 1, 2));
}

RC_GTEST_PROP(BlockSplit, coversASpatialBlockOnce, ())
{
    leavesCover(access::Block3d(anyRange(), anyRange(), anyRange(), 1, 2));
}

} // namespace

} // namespace mox::testing

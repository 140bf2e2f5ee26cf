#include "Morphology/private/chains.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>

#include "Morphology/test/programs.h"

// Without an image: what a program sees is followed through its taps.

namespace mox::testing {
namespace {

using namespace mox::morphology;
using access::Neighborhood2D_4Tag;
using kernel::Offset3D;
using ::testing::ElementsAre;
using ::testing::SizeIs;

std::set<Offset> setSeenBy(RowProgram const& program)
{
    std::vector<std::set<Offset>> seen{{{0, 0, 0}}};
    for (std::size_t k = 1; k < program.stages().size(); ++k) {
        auto& ofStage = seen.emplace_back();
        for (Tap const& tap : program.stages()[k].taps) {
            for (Offset const& o : seen[tap.stage]) {
                ofStage.insert({o[0] + tap.offset.column, o[1] + tap.offset.row, o[2] + tap.offset.plan});
            }
        }
    }
    return seen.back();
}

std::set<Offset> box(int reach, int plans)
{
    std::set<Offset> offsets;
    for (int z = -plans; z <= plans; ++z) {
        for (int y = -reach; y <= reach; ++y) {
            for (int x = -reach; x <= reach; ++x) {
                offsets.insert({x, y, z});
            }
        }
    }
    return offsets;
}

std::set<Offset> diamond(int radius)
{
    std::set<Offset> offsets = box(radius, 0);
    std::erase_if(offsets, [&](Offset const& o) { return std::abs(o[0]) + std::abs(o[1]) > radius; });
    return offsets;
}

TEST(Chains, foldSquaresIntoASquareOfFewReads)
{
    for (unsigned int n = 1; n <= 31; ++n) {
        RowProgram const program = foldedProgram({{SquareElement(), n}});
        EXPECT_EQ(setSeenBy(program), box(static_cast<int>(n), 0)) << n;
        EXPECT_LE(reads(program), 2 * std::bit_width(2 * n) + 3) << n;
    }
}

TEST(Chains, foldCrossesIntoADiamond)
{
    for (unsigned int n = 1; n <= 31; ++n) {
        RowProgram const program = foldedProgram({{Neighborhood2D_4Tag(), n}});
        EXPECT_EQ(setSeenBy(program), diamond(static_cast<int>(n))) << n;
        EXPECT_LE(reads(program), 4 * std::sqrt(n) + 11) << n;
    }
}

TEST(Chains, foldCubesIntoACube)
{
    for (unsigned int n = 1; n <= 12; ++n) {
        int const reach = static_cast<int>(n);
        EXPECT_EQ(setSeenBy(foldedProgram({{CubeElement(), n}})), box(reach, reach)) << n;
    }
}

TEST(Chains, foldSquaresAndCrossesIntoAnOctagon)
{
    std::set<Offset> octagon;
    for (Offset const& a : box(2, 0)) {
        for (Offset const& b : diamond(3)) {
            octagon.insert({a[0] + b[0], a[1] + b[1], 0});
        }
    }
    EXPECT_EQ(setSeenBy(foldedProgram({{SquareElement(), 2}, {Neighborhood2D_4Tag(), 3}})), octagon);
}

TEST(Chains, literallyKeepTheOrderOfEachIteration)
{
    auto const flat = [](OrderedElement const& element) {
        std::vector<Offset> offsets;
        for (auto const& group : element) {
            for (auto const& column : group) {
                offsets.insert(offsets.end(), column.begin(), column.end());
            }
        }
        return offsets;
    };
    RowProgram const square = literalProgram({{SquareElement(), 1}});
    EXPECT_EQ(seenBy(square, square.last()), flat(squareOf9()));
    RowProgram const cube = literalProgram({{CubeElement(), 1}});
    EXPECT_EQ(seenBy(cube, cube.last()), flat(cubeOf27()));
    RowProgram const cross = literalProgram({{Neighborhood2D_4Tag(), 1}});
    EXPECT_EQ(seenBy(cross, cross.last()), flat(cross4()));

    RowProgram const mixed = literalProgram({{SquareElement(), 2}, {Neighborhood2D_4Tag(), 1}});
    std::vector<bool> ends;
    for (Stage const& stage : mixed.stages()) {
        ends.push_back(stage.endsIteration);
    }
    EXPECT_THAT(ends, ElementsAre(false, false, true, false, true, true));
}

TEST(Chains, joinWhatFollowsEachOtherUpToALength)
{
    auto const chains = chainsOf({{SquareElement(), 5}, {Neighborhood2D_4Tag(), 6}});
    ASSERT_THAT(chains, SizeIs(1));
    EXPECT_THAT(chains[0].steps, SizeIs(2));
    EXPECT_TRUE(isFoldable(chains[0]));
    EXPECT_THAT(chainsOf({{SquareElement(), 20}, {Neighborhood2D_4Tag(), 20}}), SizeIs(2));
    EXPECT_THAT(chainsOf({{SquareElement(), 2}, {CubeElement(), 2}}), SizeIs(2));
    EXPECT_FALSE(isFoldable(chainsOf({{SquareElement(), 1}})[0]));
    EXPECT_FALSE(isFoldable(chainsOf({{access::Neighborhood3D_6Tag(), 9}})[0]));
    EXPECT_FALSE(isFoldable(chainsOf({{OffsetList2D{{0, 0}, {1, 0}}}})[0]));
}

TEST(Chains, areFoldedWhereThatPays)
{
    EXPECT_TRUE(foldingPays(chainsOf({{SquareElement(), 2}})[0], 100));
    EXPECT_FALSE(foldingPays(chainsOf({{CubeElement(), 3}})[0], 511));
    EXPECT_TRUE(foldingPays(chainsOf({{CubeElement(), 3}})[0], 512));
    EXPECT_TRUE(foldingPays(chainsOf({{CubeElement(), 4}})[0], 100));
}

TEST(Chains, keepNumberAndOrderOfIterations)
{
    for (unsigned int const n : {1U, 2U, 31U, 32U, 61U, 62U, 63U, 1000U, 4000000000U}) {
        std::size_t square = 0;
        std::size_t cross = 0;
        for (Chain const& chain : chainsOf({{SquareElement(), n}, {Neighborhood2D_4Tag(), 7}})) {
            EXPECT_LE(numOfIterations(chain.steps), 31U);
            for (Step const& step : chain.steps) {
                bool const isSquare = std::holds_alternative<SquareElement>(step.element);
                EXPECT_TRUE(!isSquare || cross == 0);
                (isSquare ? square : cross) += std::size_t{step.iterations} * chain.repetitions;
            }
        }
        EXPECT_EQ(square, n);
        EXPECT_EQ(cross, 7U);
    }
}

} // namespace
} // namespace mox::testing

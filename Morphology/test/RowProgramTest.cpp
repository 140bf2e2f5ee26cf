#include "Morphology/private/RowProgram.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <set>

#include "Morphology/private/chains.h"
#include "Morphology/private/chords.h"
#include "Morphology/private/lists.h"
#include "Morphology/private/pairs.h"
#include "testing/references/morphologyElements.h"

// The planners, without an image: what a program sees is followed through its taps.

namespace mox::testing {
namespace {

using namespace mox::morphology;
using access::Neighborhood2D_4Tag;
using kernel::Offset3D;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr access::Sizes large{4096, 4096, 512, 1, 1};

/// The image's voxels that a stage sees from the origin, in the order of comparison.
std::vector<Offset> seenBy(RowProgram const& program, std::size_t stage)
{
    if (stage == 0) {
        return {{0, 0, 0}};
    }
    std::vector<Offset> seen;
    for (Tap const& tap : program.stages()[stage].taps) {
        for (Offset const& o : seenBy(program, tap.stage)) {
            seen.push_back({o[0] + tap.offset.column, o[1] + tap.offset.row, o[2] + tap.offset.plan});
        }
    }
    return seen;
}

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

/// Without those that came before.
std::vector<Offset> firstOnes(std::vector<Offset> const& offsets)
{
    std::set<Offset> known;
    std::vector<Offset> first;
    std::copy_if(offsets.begin(), offsets.end(), std::back_inserter(first),
                 [&](Offset const& offset) { return known.insert(offset).second; });
    return first;
}

/// A run in registers reads each voxel once.
std::size_t reads(RowProgram const& program)
{
    std::size_t count = 0;
    for (Stage const& stage : program.stages()) {
        count += isRun(stage) ? 1 : stage.taps.size();
    }
    return count;
}

std::vector<Offset3D> inSpace(std::vector<Offset> const& offsets)
{
    std::vector<Offset3D> list;
    for (Offset const& o : offsets) {
        list.push_back({o[0], o[1], o[2]});
    }
    return list;
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

TEST(Chords, keepTheOrderOfAnyList)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        std::vector<Offset> offsets(1 + random() % 30);
        int const width = 1 + static_cast<int>(random() % 4);
        for (std::size_t i = 0; i < offsets.size(); ++i) {
            auto const within = [&] { return static_cast<int>(random() % static_cast<unsigned int>(width)); };
            bool const goesOn = i > 0 && random() % 3 > 0;
            offsets[i] = goesOn ? Offset{offsets[i - 1][0] + 1, offsets[i - 1][1] - 1, offsets[i - 1][2]}
                                : Offset{within(), within(), within()};
        }
        RowProgram const program = chordProgram(inSpace(offsets), true);
        EXPECT_EQ(firstOnes(seenBy(program, program.last())), firstOnes(offsets));
        EXPECT_EQ(seenBy(program, program.last()).front(), offsets.front());
        EXPECT_LE(reads(program), offsets.size());
    }
}

TEST(Chords, passOverNanButInTheFirstVoxel)
{
    RowProgram const program = chordProgram(inSpace(diskReference(4)), true);
    for (Stage const& stage : program.stages().subspan(1)) {
        bool const readsImage =
            std::any_of(stage.taps.begin(), stage.taps.end(), [](Tap const& tap) { return tap.stage == 0; });
        bool const isResult = &stage == &program.stages().back();
        EXPECT_EQ(stage.passesOverNan, readsImage && !isResult);
        EXPECT_TRUE(!stage.passesOverNan || stage.taps.size() == 2);
    }
    EXPECT_EQ(program.stages().back().taps.front().stage, 0U);
}

TEST(Chords, readTheFirstVoxelByItselfOnlyWhereItMayBeNan)
{
    auto const line = inSpace(lineReference2D(0, 21));
    EXPECT_EQ(reads(chordProgram(line, false)) + 1, reads(chordProgram(line, true)));
    RowProgram const program = chordProgram(line, false);
    EXPECT_EQ(firstOnes(seenBy(program, program.last())), firstOnes(lineReference2D(0, 21)));
}

TEST(Chords, arePlannedInTimeThatGrowsWithTheList)
{
    std::vector<Offset3D> line; // minutes where each step were tried for each pair of voxels
    for (int x = 0; x < 1000000; ++x) {
        line.push_back({x, 0, 0});
    }
    EXPECT_EQ(reads(chordProgram(line, false)), 2U * 20);
}

TEST(Pairs, seeTheVoxelsOfAnyList)
{
    std::mt19937 random(4);
    auto const sorted = [](std::vector<Offset> offsets) {
        std::sort(offsets.begin(), offsets.end());
        return firstOnes(offsets);
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<Offset> offsets(1 + random() % 64);
        auto const within = [&] { return static_cast<int>(random() % 7) - 3; };
        std::generate(offsets.begin(), offsets.end(), [&] {
            return Offset{within(), within(), round % 2 == 0 ? 0 : within()};
        });
        auto const program = pairProgram(inSpace(offsets));
        ASSERT_TRUE(program.has_value());
        EXPECT_EQ(sorted(seenBy(*program, program->last())), sorted(offsets));
        EXPECT_LE(reads(*program), offsets.size());
    }
    EXPECT_FALSE(pairProgram(inSpace(diskReference(5))).has_value()); // 81 voxels
}

TEST(Pairs, nestAlongASlantedLine)
{
    for (int angle = 0; angle < 360; angle += 15) {
        EXPECT_LE(reads(*pairProgram(inSpace(lineReference2D(angle, 21)))), 11U) << angle;
    }
}

TEST(Lists, arePairedWhereThatIsCheaperAndAnyOrderIsRight)
{
    auto const offsets = inSpace(lineReference2D(30, 21));
    Element const line = Shared(OffsetList3D(offsets));
    EXPECT_EQ(costOf(*listProgram(line, false)), costOf(*pairProgram(offsets)));
    EXPECT_EQ(costOf(*listProgram(line, true)), costOf(chordProgram(offsets, true)));
    EXPECT_LT(costOf(*pairProgram(offsets)), costOf(chordProgram(offsets, false)));
    auto const disk = inSpace(diskReference(3));
    EXPECT_EQ(costOf(*listProgram(Shared(OffsetList3D(disk)), false)), costOf(chordProgram(disk, false)));
    EXPECT_FALSE(listProgram(SquareElement(), false).has_value());
}

TEST(Lists, areNotPlannedWhereTooMuchWouldBeKept)
{
    auto const square = [](int size) {
        OffsetList2D list;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                list.push_back({x, y});
            }
        }
        return Element(Shared(std::move(list)));
    };
    EXPECT_TRUE(listProgram(square(1000), false).has_value());
    EXPECT_FALSE(listProgram(square(2049), false).has_value());
}

TEST(Chords, readAFewRowsOfALargeElement)
{
    EXPECT_LE(reads(chordProgram(inSpace(diskReference(10)), true)), 34U);       // of 317
    EXPECT_LE(reads(chordProgram(inSpace(diskReference(25)), true)), 84U);       // of 1961
    EXPECT_LE(reads(chordProgram(inSpace(ballReference(5)), true)), 120U);       // of 515
    EXPECT_LE(reads(chordProgram(inSpace(lineReference2D(45, 21)), true)), 11U); // of 21, as all lines here
    EXPECT_LE(reads(chordProgram(inSpace(lineReference2D(0, 21)), true)), 11U);
    EXPECT_LE(reads(chordProgram(inSpace(lineReference2D(90, 21)), true)), 11U);
    EXPECT_LE(reads(chordProgram(inSpace(lineReference2D(30, 21)), true)), 15U);
    EXPECT_EQ(reads(chordProgram(inSpace({{0, 0, 0}}), true)), 1U);
}

TEST(Chords, areRungsOfOneLadderAndRunsAcross)
{
    auto const extents = extentsOf(chordProgram(inSpace(diskReference(10)), true));
    auto const count = [&](Form form) {
        return std::count_if(extents.begin(), extents.end(), [&](StageExtent const& e) { return e.form == form; });
    };
    EXPECT_EQ(count(Form::rung), 8); // 2, 4, 8, 9, 13, 15, 17 and 19 voxels
    EXPECT_EQ(count(Form::run), 1);  // 4 chords of 19 voxels
    for (StageExtent const& extent : extents) {
        EXPECT_TRUE(extent.form != Form::run || extent.readsNumbers);
    }
}

TEST(Chords, areStagesOfTheirOwnFarFromTheLongest)
{
    std::vector<Offset3D> offsets;
    for (int y = 0; y < 40; ++y) {
        offsets.push_back({0, y, 0});
    }
    for (int x = 2; x <= 10; x += 2) {
        for (int y = 0; y < 5; ++y) {
            offsets.push_back({x, y, 0});
        }
    }
    RowProgram const program = chordProgram(offsets, true);
    std::vector<std::size_t> lengths;
    for (std::size_t k = 0; k < program.stages().size(); ++k) {
        lengths.push_back(firstOnes(seenBy(program, k)).size());
    }
    EXPECT_THAT(lengths, ElementsAre(1, 2, 4, 8, 16, 32, 5, 65));
    EXPECT_THAT(program.stages().back().taps, SizeIs(1 + 2 + 5)); // the raw first voxel, and two for the longest
}

TEST(RowPrograms, tellHowMuchOfAStageIsKept)
{
    RowProgram program;
    unsigned int const down = program.append({{{0, {0, -2, 0}}, {0, {0, 1, 0}}}});
    program.append({{{down, {-3, 0, 0}}, {down, {1, 0, 0}}, {0, {0, 0, 0}}}});
    auto const extents = extentsOf(program);
    ASSERT_THAT(extents, SizeIs(3));
    EXPECT_EQ(extents[0].around.least, (Offset3D{-3, -2, 0}));
    EXPECT_EQ(extents[0].around.most, (Offset3D{1, 1, 0}));
    EXPECT_EQ(extents[0].rowsKept, 4);
    EXPECT_EQ(extents[0].plansKept, 1);
    EXPECT_EQ(extents[1].around.least, (Offset3D{-3, 0, 0}));
    EXPECT_EQ(extents[1].around.most, (Offset3D{1, 0, 0}));
    EXPECT_EQ(extents[1].rowsKept, 1);
    EXPECT_EQ(bytesKept(extents, {1, 50, 100}, 2), 5U * (208U / 64 * 64 + 128));
}

TEST(RowPrograms, knowWhatFormAStageHas)
{
    RowProgram program;
    program.append({{{0, {0, -2, 0}}, {0, {0, -1, 0}}}});                               // two rows
    program.append({{{1, {0, 0, 0}}, {1, {0, 2, 0}}}});                                 // of which the lower is new
    program.append({{{2, {0, 0, 0}}, {2, {0, 1, 0}}}});                                 // here too
    program.append({{{3, {-1, 0, 0}}, {3, {0, 0, 0}}, {3, {1, 0, 0}}}});                // side by side
    program.append({{{4, {0, 0, 0}}, {4, {1, 0, 0}}}});                                 // too few for a run
    program.append({{{5, {0, 0, 0}}, {5, {1, 0, 0}}, {5, {3, 0, 0}}, {5, {4, 0, 0}}}}); // with a gap
    program.append({{{6, {0, 0, 0}}, {1, {1, 0, 0}}, {6, {2, 0, 0}}}});                 // of two stages
    program.append({{{7, {0, 0, 0}}, {7, {0, 1, 0}}}});                                 // the result
    std::vector<Form> forms;
    for (StageExtent const& extent : extentsOf(program)) {
        forms.push_back(extent.form);
    }
    EXPECT_THAT(forms, ElementsAre(Form::any, Form::rung, Form::rung, Form::rung, Form::run, Form::any, Form::any,
                                   Form::any, Form::any));
}

TEST(RowPrograms, findNoRungInWhatEndsAnIterationOrReadsOlderRows)
{
    RowProgram program;
    program.append({{{0, {0, -1, 0}}, {0, {0, 0, 0}}}, false, true}); // ends an iteration
    program.append({{{1, {0, -2, 0}}, {1, {0, -1, 0}}}});             // but the row below is read too
    program.append({{{2, {0, 0, 0}}, {1, {0, 0, 0}}}});
    for (StageExtent const& extent : extentsOf(program)) {
        EXPECT_EQ(extent.form, Form::any);
    }
}

TEST(RowPrograms, makeTheRungsOfALadderOfOneWidth)
{
    RowProgram program;
    program.append({{{0, {0, 0, 0}}, {0, {0, 1, 0}}}});
    program.append({{{1, {0, 0, 0}}, {1, {0, 2, 0}}}});
    program.append({{{1, {-5, 0, 0}}, {2, {1, 0, 0}}, {0, {0, 0, 0}}}});
    auto const extents = extentsOf(program);
    EXPECT_EQ(extents[1].around.least.column, -5);
    EXPECT_EQ(extents[2].around.least.column, -5);
    EXPECT_EQ(extents[2].around.most.column, 1);
}

TEST(RowPrograms, knowStagesThatAreTheValueOutsideBesideTheImage)
{
    auto const areOutside = [](RowProgram const& program) {
        std::vector<bool> stages;
        for (StageExtent const& extent : extentsOf(program)) {
            stages.push_back(extent.isOutsideBesideImage);
        }
        return stages;
    };
    RowProgram program;
    program.append({{{0, {0, 0, 0}}, {0, {0, 1, 0}}}});               // straight from the image
    program.append({{{1, {1, 0, 0}}, {0, {0, 0, 0}}}});               // sees the image when it is beside it
    program.append({{{2, {0, -1, 0}}, {2, {0, 0, 0}}}});              // and so does this
    program.append({{{3, {-1, 0, 0}}, {3, {0, 0, 0}}}, false, true}); // ends an iteration
    program.append({{{1, {0, 1, 0}}, {4, {0, 0, 0}}}});               // straight from such stages
    program.append({{{5, {0, 0, 0}}, {3, {0, 0, 0}}}});               // but not alone
    EXPECT_THAT(areOutside(program), ElementsAre(true, true, false, false, true, true, false));
}

TEST(RowPrograms, knowWhichStagesAreReadBesideTheImage)
{
    auto const areRead = [](RowProgram const& program) {
        std::vector<bool> stages;
        for (StageExtent const& extent : extentsOf(program)) {
            stages.push_back(extent.isReadBesideImage);
        }
        return stages;
    };
    EXPECT_THAT(areRead(literalProgram({{SquareElement(), 1}})), ElementsAre(false, true, false));
    EXPECT_THAT(areRead(literalProgram({{Neighborhood2D_4Tag(), 1}})), ElementsAre(true, false));
    RowProgram straightToo;
    straightToo.append({{{0, {0, 0, 0}}, {0, {0, 1, 0}}}});
    straightToo.append({{{1, {1, 0, 0}}, {0, {0, 0, 0}}}}); // is made beside the image, and reads there straight below
    straightToo.append({{{2, {1, 0, 0}}, {2, {2, 0, 0}}}});
    EXPECT_THAT(areRead(straightToo), ElementsAre(true, true, true, false));
}

TEST(RowPrograms, knowStagesThatReadNoNan)
{
    RowProgram program;
    program.append({{{0, {0, 0, 0}}, {0, {0, 1, 0}}}, true});
    program.append({{{1, {0, 0, 0}}, {0, {0, 1, 0}}}});
    program.append({{{2, {0, 0, 0}}, {1, {0, 1, 0}}}});
    program.append({{{0, {0, 0, 0}}, {1, {0, 1, 0}}}});
    program.append({{{4, {0, 0, 0}}, {1, {0, 1, 0}}}});
    std::vector<bool> numbers;
    for (StageExtent const& extent : extentsOf(program)) {
        numbers.push_back(extent.readsNumbers);
    }
    EXPECT_THAT(numbers, ElementsAre(false, false, false, true, false, false));
}

TEST(RowPrograms, keepWholePlansOfALeafWhereTheyLookIntoOthers)
{
    RowProgram program;
    program.append({{{0, {0, 0, -1}}, {0, {0, 0, 0}}, {0, {0, 2, 1}}}});
    auto const extents = extentsOf(program);
    EXPECT_EQ(extents[0].plansKept, 3);
    EXPECT_EQ(bytesKept(extents, {10, 50, 100}, 1), 3U * 52 * (64 + 128));
}

TEST(RowPrograms, takeFewMebibytesWhateverTheImage)
{
    constexpr std::size_t most = 4U << 20U;
    access::Sizes const wide{1000000, 1000, 1000, 1, 1};
    std::vector<RowProgram> const squares{foldedProgram({{SquareElement(), 31}}),
                                          literalProgram({{SquareElement(), 31}})};
    std::vector<RowProgram> const cubes{foldedProgram({{CubeElement(), 12}}), literalProgram({{CubeElement(), 12}})};
    std::vector<RowProgram> const disk{chordProgram(inSpace(diskReference(100)), true)};
    std::vector<RowProgram> const ball{chordProgram(inSpace(ballReference(12)), true)};
    for (auto const& programs : {squares, cubes, disk, ball}) {
        for (access::Sizes const& sizes : {large, wide, access::Sizes{1, 1, 1, 1, 1}}) {
            auto const leaf = leafFor(programs, sizes, sizeof(double), 2);
            ASSERT_TRUE(leaf.has_value());
            for (RowProgram const& program : programs) {
                EXPECT_LT(bytesKept(extentsOf(program), *leaf, sizeof(double)), most);
            }
        }
    }
    access::Sizes const narrow{16, 1000000, 1, 1, 1};
    std::vector<Offset3D> line;
    for (int y = 0; y < 100000; ++y) {
        line.push_back({0, y, 0});
    }
    EXPECT_FALSE(leafFor(std::vector{chordProgram(line, false)}, narrow, 1, 2).has_value());
    std::vector<Offset3D> tall;
    for (int y = -100000; y <= 100000; ++y) {
        tall.push_back({y % 2, y, 0});
    }
    EXPECT_FALSE(leafFor(std::vector{chordProgram(tall, true)}, large, 1, 2).has_value());
}

TEST(RowPrograms, leaveALeafForEachThread)
{
    std::vector<RowProgram> const disk{chordProgram(inSpace(diskReference(32)), false)};
    auto const rowsFor = [&](unsigned int rows, unsigned int threads) {
        return leafFor(disk, {512, rows, 1, 1, 1}, 1, threads)->rows;
    };
    EXPECT_EQ(rowsFor(512, 1), 256U);
    EXPECT_EQ(rowsFor(512, 2), 128U);
    EXPECT_EQ(rowsFor(512, 64), 64U); // as high as the element
    EXPECT_EQ(rowsFor(100000, 2), 512U);
}

TEST(RowPrograms, makeLeavesNoNarrowerThanTheElement)
{
    std::vector<Offset3D> line;
    for (int x = 0; x < 10000; ++x) {
        line.push_back({x, 0, 0});
    }
    access::Sizes const wide{200000, 50, 1, 1, 1};
    EXPECT_GE(leafFor(std::vector{chordProgram(line, true)}, wide, 4, 2)->columns, 9999U);
}

} // namespace
} // namespace mox::testing

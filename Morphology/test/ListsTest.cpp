#include "Morphology/private/lists.h"

#include <gmock/gmock.h>

#include <random>

#include "Morphology/private/chords.h"
#include "Morphology/private/pairs.h"
#include "Morphology/test/programs.h"

// Without an image: what a program sees is followed through its taps.

namespace mox::testing {
namespace {

using namespace mox::morphology;
using kernel::Offset3D;
using ::testing::ElementsAre;
using ::testing::SizeIs;

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

} // namespace
} // namespace mox::testing

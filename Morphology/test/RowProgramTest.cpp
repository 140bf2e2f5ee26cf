#include "Morphology/private/RowProgram.h"

#include <gmock/gmock.h>

#include "Morphology/private/chains.h"
#include "Morphology/private/chords.h"
#include "Morphology/test/programs.h"

// What follows from the taps of a program, without an image.

namespace mox::testing {
namespace {

using namespace mox::morphology;
using access::Neighborhood2D_4Tag;
using kernel::Offset3D;
using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr access::Sizes large{4096, 4096, 512, 1, 1};

/// One of the facts of each stage.
std::vector<bool> factsOf(RowProgram const& program, bool StageExtent::*fact)
{
    std::vector<bool> facts;
    for (StageExtent const& extent : extentsOf(program)) {
        facts.push_back(extent.*fact);
    }
    return facts;
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
    RowProgram program;
    program.append({{{0, {0, 0, 0}}, {0, {0, 1, 0}}}});               // straight from the image
    program.append({{{1, {1, 0, 0}}, {0, {0, 0, 0}}}});               // sees the image when it is beside it
    program.append({{{2, {0, -1, 0}}, {2, {0, 0, 0}}}});              // and so does this
    program.append({{{3, {-1, 0, 0}}, {3, {0, 0, 0}}}, false, true}); // ends an iteration
    program.append({{{1, {0, 1, 0}}, {4, {0, 0, 0}}}});               // straight from such stages
    program.append({{{5, {0, 0, 0}}, {3, {0, 0, 0}}}});               // but not alone
    EXPECT_THAT(factsOf(program, &StageExtent::isOutsideBesideImage),
                ElementsAre(true, true, false, false, true, true, false));
}

TEST(RowPrograms, knowWhichStagesAreReadBesideTheImage)
{
    auto const areRead = [](RowProgram const& program) { return factsOf(program, &StageExtent::isReadBesideImage); };
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
    EXPECT_THAT(factsOf(program, &StageExtent::readsNumbers), ElementsAre(false, false, false, true, false, false));
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

#include "apps/moxel/NearestNames.h"

#include <gmock/gmock.h>

namespace moxel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(NearestNames, FindsSlips)
{
    EXPECT_THAT(nearestNames("Treshold", {"Labeling", "Threshold"}), ElementsAre("Threshold"));
    EXPECT_THAT(nearestNames("lowlevel", {"lowLevel", "highLevel"}), ElementsAre("lowLevel"));
    EXPECT_THAT(nearestNames("ouput", {"input", "output"}), ElementsAre("output", "input"));
}

TEST(NearestNames, PutsTheNearestFirst)
{
    EXPECT_THAT(nearestNames("Opening2D", {"Opening3D", "Openings2D", "Opening2d", "Dilation"}),
                ElementsAre("Opening2d", "Opening3D", "Openings2D"));
}

TEST(NearestNames, AreThreeAtTheMost)
{
    EXPECT_THAT(nearestNames("abcd", {"abcf", "abce", "abcg", "abch"}), ElementsAre("abce", "abcf", "abcg"));
}

TEST(NearestNames, AreNoneForAStrangeName)
{
    EXPECT_THAT(nearestNames("xyz", {"Threshold", "Labeling"}), IsEmpty());
    EXPECT_THAT(nearestNames("xy", {"a", "bc"}), IsEmpty());
    EXPECT_THAT(nearestNames("", {"Threshold"}), IsEmpty());
    EXPECT_THAT(nearestNames("Threshold", {}), IsEmpty());
}

TEST(NearestNames, StandInTheError)
{
    EXPECT_EQ(unknownName("algorithm", "Treshold", {"Threshold"}),
              "no algorithm \"Treshold\"; did you mean Threshold?");
    EXPECT_EQ(unknownName("level", "ssd", {"sse", "ssa"}), "no level \"ssd\"; did you mean ssa or sse?");
    EXPECT_EQ(unknownName("algorithm", "xyz", {"Threshold"}), "no algorithm \"xyz\"");
}

} // namespace
} // namespace moxel

#include <Moxelcore/Core/AlgoBorderInfluence.h>
#include <Moxelcore/Core/Exception.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace mox {

namespace {

using ::testing::Each;
using ::testing::ElementsAre;

std::vector<unsigned int> countsOf(AlgoBorderInfluence const& influence)
{
    std::vector<unsigned int> counts;
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        counts.push_back(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)));
    }
    return counts;
}

TEST(AlgoBorderInfluence, hasAnInfinityThatIsTheLargestCount)
{
    EXPECT_EQ(AlgoBorderInfluence::infinity, 0xFFFFFFFFU);
}

TEST(AlgoBorderInfluence, takesOneCountForBothSidesOfADimension)
{
    EXPECT_THAT(countsOf({1, 2, 3, 4, 5}), ElementsAre(1, 1, 2, 2, 3, 3, 4, 4, 5, 5));
}

TEST(AlgoBorderInfluence, takesTenCountsInTheOrderOfTheDirections)
{
    AlgoBorderInfluence const influence(0, 1, 2, 3, 4, 5, 6, 7, 8, 9);
    EXPECT_THAT(countsOf(influence), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_EQ(influence.getNumOfVoxels(COLUMNS_BEGIN), 0U);
    EXPECT_EQ(influence.getNumOfVoxels(COLUMNS_END), 1U);
    EXPECT_EQ(influence.getNumOfVoxels(ROWS_BEGIN), 2U);
    EXPECT_EQ(influence.getNumOfVoxels(ROWS_END), 3U);
    EXPECT_EQ(influence.getNumOfVoxels(PLANS_BEGIN), 4U);
    EXPECT_EQ(influence.getNumOfVoxels(PLANS_END), 5U);
    EXPECT_EQ(influence.getNumOfVoxels(TIME_SERIES_BEGIN), 6U);
    EXPECT_EQ(influence.getNumOfVoxels(TIME_SERIES_END), 7U);
    EXPECT_EQ(influence.getNumOfVoxels(SPECTRAL_SERIES_BEGIN), 8U);
    EXPECT_EQ(influence.getNumOfVoxels(SPECTRAL_SERIES_END), 9U);
}

TEST(AlgoBorderInfluence, changesOneCountAtATime)
{
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        AlgoBorderInfluence influence(0, 0, 0, 0, 0);
        influence.setNumOfVoxels(static_cast<DirectionTypes>(direction), AlgoBorderInfluence::infinity);
        std::vector<unsigned int> expected(10);
        expected[static_cast<std::size_t>(direction)] = AlgoBorderInfluence::infinity;
        EXPECT_EQ(countsOf(influence), expected) << direction;
    }
}

TEST(AlgoBorderInfluence, acceptsDirectionTenWithoutEffect)
{
    AlgoBorderInfluence influence(0, 0, 0, 0, 0);
    EXPECT_NO_THROW(influence.setNumOfVoxels(static_cast<DirectionTypes>(10), 7));
    EXPECT_THAT(countsOf(influence), Each(0U));
}

TEST(AlgoBorderInfluence, refusesDirectionsAboveTen)
{
    AlgoBorderInfluence influence(0, 0, 0, 0, 0);
    for (int const direction : {11, 12, 1000, -1}) {
        try {
            influence.setNumOfVoxels(static_cast<DirectionTypes>(direction), 7);
            ADD_FAILURE() << "nothing was thrown for " << direction;
        } catch (InvalidCall const& error) {
            EXPECT_STREQ(error.what().c_str(), "Invalid call :\n"
                                               "#1 Error : Invalid direction. \n"
                                               "    (at \"AlgoBorderInfluence\", line 74) \n");
        }
    }
    EXPECT_THAT(countsOf(influence), Each(0U));
}

TEST(AlgoBorderInfluence, isAValue)
{
    AlgoBorderInfluence const source(1, 2, 3, 4, 5);
    AlgoBorderInfluence copy = source;
    copy.setNumOfVoxels(COLUMNS_BEGIN, 9);
    EXPECT_EQ(source.getNumOfVoxels(COLUMNS_BEGIN), 1U);
    EXPECT_EQ(copy.getNumOfVoxels(COLUMNS_BEGIN), 9U);
    EXPECT_EQ(copy.getNumOfVoxels(SPECTRAL_SERIES_END), 5U);
}

} // namespace

} // namespace mox

#include "apps/moxel/Algorithms.h"

#include <gmock/gmock.h>

#include "apps/moxel/Errors.h"
#include "testing/host/HostAlgorithm.h"

namespace moxel::testing {
namespace {

using ::testing::ElementsAre;

TEST(Algorithms, AreFoundByName)
{
    EXPECT_STREQ(findAlgorithm("Threshold").getName(), "Threshold");
    try {
        findAlgorithm("Treshold");
        FAIL();
    } catch (UsageError const& error) {
        EXPECT_STREQ(error.what(), "no algorithm \"Treshold\"; did you mean Threshold?");
    }
}

TEST(Algorithms, BelongToTheModuleOfTheirNamespace)
{
    EXPECT_EQ(moduleOf(*findAlgorithm("Threshold").createInstance()), "segmentation");
    EXPECT_EQ(moduleOf(*HostAlgorithm::New()), "moxel::testing");
}

TEST(Algorithms, HaveLevels)
{
    EXPECT_THAT(levelNames(), ElementsAre("scalar", "sse", "avx", "gpu"));
    EXPECT_THAT(levelsOf(*HostAlgorithm::New()), ElementsAre("scalar"));
    EXPECT_EQ(levelNamed("sse"), mox::OptimLevelType::VEC_SSE);
    EXPECT_THROW(levelNamed("VEC_SSE"), UsageError);
}

TEST(Algorithms, HaveProperties)
{
    auto const algorithm = HostAlgorithm::New();
    EXPECT_EQ(inputsOf(*algorithm).size(), 10U);
    EXPECT_EQ(outputsOf(*algorithm).size(), 5U);
    EXPECT_EQ(inputsOf(*algorithm).front(), &algorithm->input);
}

} // namespace
} // namespace moxel::testing

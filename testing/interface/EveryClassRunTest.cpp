#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "testing/AlgorithmTests.h"
#include "testing/Threads.h"
#include "testing/everyClass/Task.h"

// Runs of every class of the library, made by its name.

namespace mox::testing {

namespace {

bool isFloating(VoxelTypes voxelType)
{
    return voxelType == MOX_FLOAT32 || voxelType == MOX_FLOAT64;
}

bool takesImages(BaseAlgorithm const& algorithm)
{
    for (BaseProperty const* input : inputsOf(algorithm)) {
        if (dynamic_cast<Property<ImageModel const*> const*>(input) != nullptr) {
            return true;
        }
    }
    return false;
}

TEST(Catalogue, holdsTheClassesOfTheRegistry)
{
    auto const names = namesOfClasses();
    std::set<std::string> entries;
    for (Entry const& entry : catalogue()) {
        EXPECT_TRUE(entries.insert(entry.className).second) << entry.className;
    }
    EXPECT_EQ(entries, std::set<std::string>(names.begin(), names.end()));
    EXPECT_EQ(entries.size(), 53U);
}

class EveryRun : public ::testing::TestWithParam<std::string> {
protected:
    std::string const name = GetParam();
};

TEST_P(EveryRun, writesAllOfItsResults)
{
    for (Choice const& choice : choicesOf(name)) {
        SCOPED_TRACE(choice);
        Task const task(name, {}, choice);
        Bytes const results = task.run(0);
        EXPECT_EQ(task.run(0xA5), results);
        task.soil(0xA5);
        EXPECT_NE(task.results(), results);
    }
}

TEST_P(EveryRun, giveOtherResultsForOtherImages)
{
    Bytes const results = Task(name).run();
    if (takesImages(Task(name).algorithm())) {
        TaskForm other;
        other.seed = 2;
        EXPECT_NE(Task(name, other).run(), results);
    }
}

TEST_P(EveryRun, takesTheVoxelTypesThatTheCatalogueTells)
{
    if (!takesImages(Task(name).algorithm())) {
        GTEST_SKIP() << "takes no images";
    }
    for (int type = MOX_UINT8; type <= MOX_FLOAT64; ++type) {
        auto const voxelType = static_cast<VoxelTypes>(type);
        Task const task(name, {.voxelType = voxelType});
        if (entryOf(name).takesFloats || !isFloating(voxelType)) {
            EXPECT_NO_THROW(task.run()) << type;
        } else {
            EXPECT_THROW(task.run(), RuleException) << type;
        }
    }
}

/// The same bytes whatever the level and the number of threads.
void expectOneResult(std::string const& name, TaskForm const& form, Choice const& choice = {})
{
    SCOPED_TRACE(choice);
    Task const task(name, form, choice);
    Bytes const expected = task.run();
    int const best = task.algorithm().getMostPerformantAvailableOptimLevel();
    task.algorithm().setAutoCpuDispatch(false);
    for (int level = 0; level <= best; ++level) {
        auto const optimLevel = static_cast<OptimLevelType::Value>(level);
        if (!task.algorithm().isOptimLevelSupported(optimLevel)) {
            continue;
        }
        task.algorithm().setOptimLevel(optimLevel);
        for (int const threads : {1, 2, 3, 4, 8}) {
            withThreads(threads, [&] {
                EXPECT_TRUE(task.run() == expected) << "level " << level << ", " << threads << " threads";
            });
        }
    }
}

TEST_P(EveryRun, doesNotDependOnThreadsAndLevelForIntegers)
{
    for (Choice const& choice : choicesOf(name)) {
        expectOneResult(name, {.voxelType = MOX_INT16, .isLarge = true}, choice);
    }
}

TEST_P(EveryRun, doesNotDependOnThreadsAndLevelForFloats)
{
    if (!entryOf(name).takesFloats) {
        GTEST_SKIP() << "takes integers alone";
    }
    for (Choice const& choice : choicesOf(name)) {
        expectOneResult(name, {.voxelType = MOX_FLOAT32, .isLarge = true}, choice);
        expectOneResult(name, {.voxelType = MOX_FLOAT32, .isLarge = true, .hasSpecialVoxels = true}, choice);
    }
}

TEST_P(EveryRun, worksInPlaceWhereTheCatalogueTells)
{
    if (!entryOf(name).worksInPlace) {
        GTEST_SKIP() << "its result is another";
    }
    for (auto const voxelType : {MOX_INT16, MOX_FLOAT32}) {
        if (voxelType == MOX_FLOAT32 && !entryOf(name).takesFloats) {
            continue;
        }
        for (Choice const& choice : choicesOf(name)) {
            SCOPED_TRACE(choice);
            TaskForm const form = {.voxelType = voxelType, .isLarge = true, .hasSpecialVoxels = true};
            EXPECT_TRUE(Task(name, form, choice).runInPlace() == Task(name, form, choice).run());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryRun, ::testing::ValuesIn(namesOfClasses()),
                         [](auto const& name) { return name.param; });

} // namespace

} // namespace mox::testing

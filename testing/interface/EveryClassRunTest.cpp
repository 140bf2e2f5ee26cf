#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <algorithm>
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

bool takesImages(Entry const& entry)
{
    auto const algorithm = AlgoInfo::fromName(entry.className.c_str()).createInstance();
    auto const inputs = inputsOf(*algorithm);
    return std::any_of(inputs.begin(), inputs.end(), [](BaseProperty const* input) {
        return dynamic_cast<Property<ImageModel const*> const*>(input) != nullptr;
    });
}

bool takesFloats(Entry const& entry)
{
    return entry.takesFloats;
}

bool worksInPlace(Entry const& entry)
{
    return entry.worksInPlace;
}

std::vector<std::string> namesWhere(bool (*holds)(Entry const&))
{
    std::vector<std::string> names;
    for (Entry const& entry : catalogue()) {
        if (holds(entry)) {
            names.push_back(entry.className);
        }
    }
    return names;
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

class EveryRunOnImages : public EveryRun {};
class EveryRunOnFloats : public EveryRun {};
class EveryRunInPlace : public EveryRun {};

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

TEST_P(EveryRunOnImages, givesOtherResultsForOtherOnes)
{
    TaskForm other;
    other.seed = 2;
    EXPECT_NE(Task(name, other).run(), Task(name).run());
}

TEST_P(EveryRunOnImages, takesTheVoxelTypesThatTheCatalogueTells)
{
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

TEST_P(EveryRunOnImages, refusesComplexOnesOrDoesNothing)
{
    memory::InMemoryImage image;
    image.allocate(MOX_COMPLEX_FLOAT32, 16, 12, 1, 1, 1);
    Task const task(name);
    for (BaseProperty* property : inputsOf(task.algorithm())) {
        if (auto* const input = dynamic_cast<Property<ImageModel const*>*>(property)) {
            *input = &image;
        }
    }
    try {
        task.algorithm().run(); // the rules give outputs their shape and interpretation
    } catch (RuleException const&) {
        return;
    }
    task.soil(0xA5);
    Bytes const before = task.results();
    task.algorithm().run();
    EXPECT_EQ(task.results(), before);
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

TEST_P(EveryRun, doesNotDependOnThreadsAndLevel)
{
    for (Choice const& choice : choicesOf(name)) {
        expectOneResult(name, {.voxelType = MOX_INT16, .isLarge = true}, choice);
    }
}

TEST_P(EveryRunOnFloats, doesNotDependOnThreadsAndLevel)
{
    for (Choice const& choice : choicesOf(name)) {
        expectOneResult(name, {.voxelType = MOX_FLOAT32, .isLarge = true}, choice);
        expectOneResult(name, {.voxelType = MOX_FLOAT32, .isLarge = true, .hasSpecialVoxels = true}, choice);
    }
}

void expectSameInPlace(std::string const& name, VoxelTypes voxelType)
{
    for (Choice const& choice : choicesOf(name)) {
        SCOPED_TRACE(choice);
        TaskForm const form = {.voxelType = voxelType, .isLarge = true, .hasSpecialVoxels = true};
        EXPECT_TRUE(Task(name, form, choice).runInPlace() == Task(name, form, choice).run());
    }
}

TEST_P(EveryRunInPlace, givesTheSame)
{
    expectSameInPlace(name, MOX_INT16);
    if (entryOf(name).takesFloats) {
        expectSameInPlace(name, MOX_FLOAT32);
    }
}

std::string nameOf(::testing::TestParamInfo<std::string> const& info)
{
    return info.param;
}

INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryRun, ::testing::ValuesIn(namesOfClasses()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryRunOnImages, ::testing::ValuesIn(namesWhere(takesImages)), nameOf);
INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryRunOnFloats, ::testing::ValuesIn(namesWhere(takesFloats)), nameOf);
INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryRunInPlace, ::testing::ValuesIn(namesWhere(worksInPlace)), nameOf);

} // namespace

} // namespace mox::testing

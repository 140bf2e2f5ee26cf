#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "testing/AlgorithmTests.h"
#include "testing/Allocations.h"
#include "testing/RecordingInteraction.h"
#include "testing/Threads.h"
#include "testing/everyClass/Task.h"
#include "testing/everyClass/extremes.h"

// Runs of every class of the library that must fail, or might.

namespace mox::testing {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double mostSeconds = 50;
#else
constexpr double mostSeconds = 5;
#endif

/// Of this process alone: others may keep it from running.
double secondsOfProcessor()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void expectIdle(BaseAlgorithm const& algorithm)
{
    EXPECT_FALSE(algorithm.running());
    for (BaseProperty const* property : propertiesOf(algorithm)) {
        EXPECT_FALSE(property->isLocked()) << property->getName().c_str();
    }
}

class EveryFault : public ::testing::TestWithParam<std::string> {
protected:
    std::string const name = GetParam();
};

/// Whether the k-th allocation of a first run has failed. Either way a second run is right.
bool failsAt(int k, std::string const& name, Choice const& choice, Bytes const& expected)
{
    Task const task(name, {}, choice);
    Allocations::failAt(k);
    bool hasFailed = false;
    try {
        task.algorithm().run();
        hasFailed = Allocations::stopFailing();
    } catch (Exception const&) {
        hasFailed = Allocations::stopFailing();
        EXPECT_TRUE(hasFailed);
    }
    expectIdle(task.algorithm());
    EXPECT_TRUE(task.run() == expected);
    return hasFailed;
}

void failAtEach(std::string const& name, Choice const& choice)
{
    Bytes const expected = Task(name, {}, choice).run();
    bool fails = true;
    for (int k = 1; fails; ++k) {
        SCOPED_TRACE(k);
        long const numOfLive = Allocations::numOfLive();
        fails = failsAt(k, name, choice, expected);
        ASSERT_EQ(Allocations::numOfLive(), numOfLive);
        ASSERT_LT(k, 10000);
    }
}

TEST_P(EveryFault, isSurvivedAtEveryAllocation)
{
    for (Choice const& choice : choicesOf(name)) {
        SCOPED_TRACE(choice);
        withThreads(1, [&] { failAtEach(name, choice); });
    }
}

TEST_P(EveryFault, isSurvivedAtExtremeValues)
{
    Task const task(name);
    Bytes const expected = task.run();
    for (Extreme const& extreme : extremesOf(task)) {
        SCOPED_TRACE(extreme.name);
        RecordingInteraction impatient;
        impatient.cancelPeriod = 100;
        impatient.cancelAtPoll = 1;
        task.soil(0);
        extreme.set();
        double const begin = secondsOfProcessor();
        try {
            task.algorithm().run(&impatient);
        } catch (Exception const&) {
        }
        EXPECT_LT(secondsOfProcessor() - begin, mostSeconds);
        expectIdle(task.algorithm());
        extreme.restore();
        EXPECT_TRUE(task.run() == expected);
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryFault, ::testing::ValuesIn(namesOfClasses()),
                         [](auto const& name) { return name.param; });

} // namespace

} // namespace mox::testing

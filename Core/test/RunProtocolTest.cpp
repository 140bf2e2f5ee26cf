#include <gmock/gmock.h>

#include <Moxelcore/Core/AbstractPrivateImplementation.h>

#include <tbb/global_control.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>
#include <tbb/task_group.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "Core/private/Helper/raise.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestAlgorithm.h"

namespace mox::testing {

namespace {

using algorithms::AbstractPrivateImplementation;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::StartsWith;

class Implementation final : public AbstractPrivateImplementation {
public:
    explicit Implementation(BaseAlgorithm* owner)
        : AbstractPrivateImplementation(owner, AttachLater())
    {
        attach();
    }
    ~Implementation() override { detach(); }

    bool cancelExecution() override
    {
        ++numOfCancels;
        return AbstractPrivateImplementation::cancelExecution();
    }

    std::atomic<int> numOfCancels = 0;
};

void sleep(int milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

/// Works until it is cancelled, at most ten seconds.
void workUntilCancelled(TestAlgorithm& algorithm)
{
    Implementation implementation(&algorithm);
    for (int i = 0; i < 10000 && !implementation.isExecutionCancelled(); ++i) {
        sleep(1);
    }
    EXPECT_TRUE(implementation.isExecutionCancelled());
}

std::string textOfRun(BaseAlgorithm& algorithm, algorithms::InteractionInterface* interaction)
{
    try {
        algorithm.run(interaction);
    } catch (UnexpectedError const& error) {
        return error.what().c_str();
    }
    return "nothing thrown";
}

/// With an interaction object, and without.
class RunProtocol : public ::testing::TestWithParam<bool> {
protected:
    algorithms::InteractionInterface* interaction() { return GetParam() ? &recording_ : nullptr; }

    boost::shared_ptr<TestAlgorithm> algorithm = TestAlgorithm::New();

private:
    RecordingInteraction recording_;
};

INSTANTIATE_TEST_SUITE_P(InteractionOrNot, RunProtocol, ::testing::Bool());

TEST_P(RunProtocol, locksThePropertiesForTheTimeOfTheRun)
{
    algorithm->number = 1.0;
    algorithm->work = [](TestAlgorithm& running) {
        EXPECT_TRUE(running.running());
        for (unsigned int i = 0; i < running.getNumOfInputProperties(); ++i) {
            EXPECT_TRUE(running.getInputProperty(i)->isLocked());
        }
        EXPECT_TRUE(running.output.isLocked());
        running.number = 2.0;
    };
    algorithm->run(interaction());
    EXPECT_FALSE(algorithm->running());
    EXPECT_FALSE(algorithm->number.isLocked());
    EXPECT_FALSE(algorithm->output.isLocked());
    EXPECT_EQ(algorithm->number, 1.0);
}

TEST_P(RunProtocol, ignoresARunDuringARun)
{
    int runs = 0;
    algorithm->work = [&](TestAlgorithm& running) {
        ++runs;
        running.run();
        EXPECT_TRUE(running.running());
        EXPECT_TRUE(running.number.isLocked());
    };
    algorithm->run(interaction());
    EXPECT_EQ(runs, 1);
}

TEST_P(RunProtocol, addsALevelToAnExceptionOfTheFamily)
{
    algorithm->work = [](TestAlgorithm&) { helper::raise<RuntimeError>({"Some/src/Work", 7}, "it broke"); };
    try {
        algorithm->run(interaction());
        ADD_FAILURE();
    } catch (RuntimeError const& error) {
        EXPECT_EQ(error.what(), String("Runtime error :\n#1 Error : it broke \n    (at \"Work\", line 7) \n"
                                       "#2 From TestAlgorithm of Moxelcore library \n"));
    }
    EXPECT_FALSE(algorithm->running());
    EXPECT_FALSE(algorithm->number.isLocked());
}

TEST_P(RunProtocol, turnsAStandardExceptionIntoAnUnexpectedError)
{
    algorithm->work = [](TestAlgorithm&) { throw std::runtime_error("disk full"); };
    EXPECT_EQ(textOfRun(*algorithm, interaction()),
              "Unexpected error :\n#1 Error : disk full TestAlgorithm of Moxelcore library \n");
    algorithm->work = [](TestAlgorithm&) { throw std::bad_alloc(); };
    EXPECT_EQ(textOfRun(*algorithm, interaction()),
              "Unexpected error :\n#1 Error : std::bad_alloc TestAlgorithm of Moxelcore library \n");
}

TEST_P(RunProtocol, turnsAnythingElseIntoAnUnexpectedError)
{
    algorithm->work = [](TestAlgorithm&) { throw 42; };
    EXPECT_EQ(textOfRun(*algorithm, interaction()),
              "Unexpected error :\n#1 Error : undefined exception TestAlgorithm of Moxelcore library \n");
}

TEST_P(RunProtocol, canBeRunAgainAfterAnException)
{
    algorithm->work = [](TestAlgorithm&) { throw std::runtime_error("once"); };
    EXPECT_THROW(algorithm->run(interaction()), UnexpectedError);
    EXPECT_EQ(algorithm->getProgress(), 0.0);
    bool ran = false;
    algorithm->work = [&](TestAlgorithm&) { ran = true; };
    algorithm->run(interaction());
    EXPECT_TRUE(ran);
}

TEST_P(RunProtocol, startsEveryRunUncancelled)
{
    EXPECT_FALSE(algorithm->cancelExecution());
    EXPECT_FALSE(algorithm->isExecutionCancelled());
    bool cancelled = true;
    algorithm->work = [&](TestAlgorithm& running) {
        Implementation const implementation(&running);
        cancelled = implementation.isExecutionCancelled();
    };
    algorithm->run(interaction());
    EXPECT_FALSE(cancelled);
}

TEST_P(RunProtocol, showsTheProgressOfTheAttachedImplementation)
{
    algorithm->work = [](TestAlgorithm& running) {
        EXPECT_EQ(running.getProgress(), 0.0);
        Implementation implementation(&running);
        EXPECT_EQ(running.getProgress(), 0.0); // with a maximum of 0
        implementation.setMaxProgress(8);
        implementation.incrementProgress(2);
        EXPECT_EQ(implementation.getProgress(), 25.0);
        EXPECT_EQ(running.getProgress(), 25.0);
        implementation.incrementProgress(14);
        EXPECT_EQ(running.getProgress(), 200.0);
        EXPECT_EQ(implementation.getPublicInterface(), &running);
    };
    algorithm->run(interaction());
    EXPECT_EQ(algorithm->getProgress(), 0.0);
}

/// For a thread that is the only one to cancel it.
class ImplementationAttachedByItsBase final : public AbstractPrivateImplementation {
public:
    using AbstractPrivateImplementation::AbstractPrivateImplementation;
    bool cancelExecution() override { return AbstractPrivateImplementation::cancelExecution(); }
};

TEST_P(RunProtocol, knowsAnImplementationThatItsBaseAttaches)
{
    bool isCancelled = false;
    algorithm->work = [&](TestAlgorithm& running) {
        ImplementationAttachedByItsBase const implementation(&running);
        EXPECT_TRUE(running.cancelExecution());
        isCancelled = implementation.isExecutionCancelled();
    };
    algorithm->run(interaction());
    EXPECT_TRUE(isCancelled);
}

TEST_P(RunProtocol, handsACancelToTheAttachedImplementation)
{
    algorithm->work = [](TestAlgorithm& running) {
        {
            Implementation implementation(&running);
            EXPECT_FALSE(running.isExecutionCancelled());
            EXPECT_TRUE(running.cancelExecution());
            EXPECT_EQ(implementation.numOfCancels, 1);
            EXPECT_TRUE(running.isExecutionCancelled());
        }
        EXPECT_FALSE(running.cancelExecution()); // it is gone
    };
    algorithm->run(interaction());
}

TEST_P(RunProtocol, keepsACancelForTheImplementationThatAttachesNext)
{
    algorithm->work = [](TestAlgorithm& running) {
        EXPECT_FALSE(running.cancelExecution());
        EXPECT_FALSE(running.isExecutionCancelled());
        Implementation const implementation(&running);
        EXPECT_TRUE(implementation.isExecutionCancelled());
        EXPECT_TRUE(running.isExecutionCancelled());
    };
    algorithm->run(interaction());
}

TEST_P(RunProtocol, refusesACopyWhoseSourceIsGone)
{
    TestAlgorithm copy(*algorithm);
    bool ran = false;
    copy.work = [&](TestAlgorithm&) { ran = true; };
    copy.run(interaction());
    EXPECT_TRUE(ran);
    ran = false;
    algorithm.reset();
    EXPECT_EQ(copy.getNumOfProperties(), 0U);
    EXPECT_THROW(copy.run(interaction()), InvalidCall);
    EXPECT_FALSE(ran);
}

TEST_P(RunProtocol, runsInsideATaskAndOnOneThread)
{
    tbb::global_control const oneThread(tbb::global_control::max_allowed_parallelism, 1);
    std::atomic<int> leaves = 0;
    algorithm->work = [&](TestAlgorithm&) { tbb::parallel_for(0, 100, [&](int) { ++leaves; }); };
    tbb::task_group group;
    group.run_and_wait([&] { algorithm->run(interaction()); });
    EXPECT_EQ(leaves, 100);
}

TEST_P(RunProtocol, runsFromManyThreadsAtOnce)
{
    std::atomic<int> runs = 0;
    std::vector<std::thread> callers;
    for (int i = 0; i < 8; ++i) {
        callers.emplace_back([&, i] {
            auto const own = TestAlgorithm::New();
            own->work = [&](TestAlgorithm& running) {
                Implementation implementation(&running);
                tbb::parallel_for(0, 50, [&](int) { implementation.incrementProgress(1); });
                ++runs;
            };
            RecordingInteraction recording;
            own->run(GetParam() && i % 2 == 0 ? &recording : nullptr);
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    EXPECT_EQ(runs, 8);
}

TEST_P(RunProtocol, ofTwoThreadsOnOneObjectOneIsIgnored)
{
    std::atomic<int> runs = 0;
    algorithm->work = [&](TestAlgorithm&) {
        ++runs;
        sleep(60);
    };
    std::thread other([&] { algorithm->run(); });
    while (runs == 0) {
        std::this_thread::yield();
    }
    algorithm->run(interaction());
    EXPECT_EQ(runs, 1);
    other.join();
}

TEST(RunProtocolWithoutInteraction, worksInTheCallersThread)
{
    auto const algorithm = TestAlgorithm::New();
    std::thread::id thread;
    algorithm->work = [&](TestAlgorithm&) { thread = std::this_thread::get_id(); };
    algorithm->run();
    EXPECT_EQ(thread, std::this_thread::get_id());
}

class WatchedRun : public ::testing::Test {
protected:
    boost::shared_ptr<TestAlgorithm> algorithm = TestAlgorithm::New();
    RecordingInteraction recording;
};

TEST_F(WatchedRun, notifiesTheRealProgressAtTheEnd)
{
    algorithm->work = [](TestAlgorithm& running) {
        Implementation implementation(&running);
        implementation.setMaxProgress(4);
        implementation.incrementProgress(4);
    };
    algorithm->run(&recording);
    ASSERT_FALSE(recording.notified.empty());
    EXPECT_EQ(recording.notified.back(), 100.0);
}

TEST_F(WatchedRun, callsBackOnTheCallersThread)
{
    algorithm->work = [](TestAlgorithm&) { sleep(90); };
    algorithm->run(&recording);
    EXPECT_GE(recording.notified.size(), 2U);
    EXPECT_TRUE(recording.onlyOnThread(std::this_thread::get_id()));
}

TEST_F(WatchedRun, pollsAtEveryWakeUpWithPeriodsOfZero)
{
    algorithm->work = [](TestAlgorithm&) { sleep(300); };
    algorithm->run(&recording);
    EXPECT_GE(recording.numOfPolls, 5); // 15 but for a machine that is busy elsewhere
    EXPECT_LE(recording.numOfPolls, 15);
    EXPECT_EQ(recording.notified.size(), static_cast<std::size_t>(recording.numOfPolls) + 1);
}

TEST_F(WatchedRun, takesALongPeriodForAHundredMilliseconds)
{
    recording.progressPeriod = 5000;
    recording.cancelPeriod = 5000;
    algorithm->work = [](TestAlgorithm&) { sleep(450); };
    algorithm->run(&recording);
    EXPECT_GE(recording.numOfPolls, 2);
    EXPECT_LE(recording.numOfPolls, 4);
}

TEST_F(WatchedRun, pacesLaterPollsByTheProgressPeriod)
{
    recording.progressPeriod = 100;
    recording.cancelPeriod = 0;
    algorithm->work = [](TestAlgorithm&) { sleep(90); };
    algorithm->run(&recording);
    EXPECT_EQ(recording.numOfPolls, 1);
}

TEST_F(WatchedRun, stopsPollingOnceCancelled)
{
    recording.cancelAtPoll = 2;
    algorithm->work = [](TestAlgorithm& running) {
        workUntilCancelled(running);
        sleep(100);
    };
    algorithm->run(&recording);
    EXPECT_EQ(recording.numOfPolls, 2);
    EXPECT_EQ(recording.notified.size(), 2U); // one while it ran, one at the end
}

TEST_F(WatchedRun, losesNoCancelThatComesBeforeTheWorkIsAttached)
{
    recording.cancelAtPoll = 1;
    algorithm->work = [](TestAlgorithm& running) {
        sleep(100);
        workUntilCancelled(running);
    };
    algorithm->run(&recording);
    EXPECT_EQ(recording.numOfPolls, 1);
}

TEST_F(WatchedRun, cancelsWhenTheInteractionThrows)
{
    recording.throwAtPoll = 1;
    algorithm->work = workUntilCancelled;
    EXPECT_EQ(textOfRun(*algorithm, &recording),
              "Unexpected error :\n#1 Error : the interaction failed TestAlgorithm of Moxelcore library \n");
    EXPECT_FALSE(algorithm->running());
    EXPECT_FALSE(algorithm->number.isLocked());
}

TEST_F(WatchedRun, isCancelledWithTheTaskGroupThatItIsPartOf)
{
    algorithm->work = workUntilCancelled;
    tbb::task_group group;
    std::thread canceller([&] {
        while (!algorithm->running()) {
            std::this_thread::yield();
        }
        sleep(30);
        group.cancel();
    });
    group.run_and_wait([&] { algorithm->run(&recording); });
    canceller.join();
    EXPECT_FALSE(algorithm->running());
}

TEST_F(WatchedRun, doesNotStarveWhereCallersFillAllWorkers)
{
    std::atomic<int> runs = 0;
    tbb::task_arena arena(2);
    arena.execute([&] {
        tbb::parallel_for(0, 6, [&](int) {
            auto const own = TestAlgorithm::New();
            own->work = [&](TestAlgorithm&) { tbb::parallel_for(0, 20, [&](int) { sleep(1); }); };
            RecordingInteraction ownRecording;
            own->run(&ownRecording);
            ++runs;
        });
    });
    EXPECT_EQ(runs, 6);
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/Segmentation/Threshold.h>

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <thread>

#include "testing/Allocations.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"
#include "testing/references/threshold.h"

namespace mox::testing {

namespace {

using segmentation::Threshold;
using ::testing::Each;
using ::testing::HasSubstr;

void run(ImageModel const& input, ImageModel& output, double low, double high)
{
    auto const algorithm = Threshold::New();
    algorithm->input = &input;
    algorithm->lowLevel = low;
    algorithm->highLevel = high;
    algorithm->output = &output;
    algorithm->run();
}

TEST(ThresholdRun, givesTheOutputTheShapeOfTheInputAndMarksItBinary)
{
    auto const input = makeImage({3, 2, 2, 2, 1}, std::vector<short>(24, 7));
    input->setCalibrationStep(PLANS, 2.5);
    input->setCalibrationOrigin(COLUMNS, -1);
    memory::InMemoryImage output;
    run(*input, output, 7, 7);
    EXPECT_EQ(Sizes::of(output), Sizes::of(*input));
    EXPECT_EQ(output.getVoxelType(), MOX_UINT8);
    EXPECT_EQ(output.getInterpretation(), INTERPRETATION_BINARY);
    EXPECT_EQ(output.getCalibrationStep(PLANS), 2.5);
    EXPECT_EQ(output.getCalibrationOrigin(COLUMNS), -1);
    EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
}

TEST(ThresholdRun, worksInPlace)
{
    std::mt19937 random(3);
    Sizes const sizes{1030, 31, 3, 2, 1};
    auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
    auto const image = makeImage(sizes, voxels);
    run(*image, *image, 10, 1000);
    EXPECT_EQ(voxelsOf<short>(*image), (thresholdReference<short, short>(voxels, 10, 1000)));
}

TEST(ThresholdRun, takesEmptyImages)
{
    for (Sizes const& sizes :
         {Sizes{0, 2, 2, 1, 1}, Sizes{2, 0, 2, 1, 1}, Sizes{2, 2, 0, 1, 1}, Sizes{2, 2, 2, 0, 1}}) {
        auto const input = makeImage(sizes, std::vector<float>());
        memory::InMemoryImage output;
        RecordingInteraction recording;
        auto const algorithm = Threshold::New();
        algorithm->input = input.get();
        algorithm->output = &output;
        algorithm->run(&recording);
        EXPECT_EQ(Sizes::of(output), sizes);
        EXPECT_EQ(recording.notified.back(), 0.0);
    }
}

TEST(ThresholdRun, takesImagesOfAnApplication)
{
    std::mt19937 random(4);
    Sizes const sizes{50, 40, 3, 2, 1};
    auto const voxels = randomVoxels<float>(random, sizes.numOfVoxels());
    TestImage input;
    TestImage output;
    fill(input, sizes, voxels);
    run(input, output, -50, 50);
    EXPECT_EQ(voxelsOf<unsigned char>(output), (thresholdReference<float, unsigned char>(voxels, -50, 50)));
}

TEST(ThresholdRun, reportsProgressUpToTheEnd)
{
    auto const input = makeImage({64, 64, 64, 1, 1}, std::vector<unsigned char>(64 * 64 * 64));
    memory::InMemoryImage output;
    RecordingInteraction recording;
    auto const algorithm = Threshold::New();
    algorithm->input = input.get();
    algorithm->output = &output;
    algorithm->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
    EXPECT_TRUE(std::is_sorted(recording.notified.begin(), recording.notified.end()));
}

TEST(ThresholdRun, stopsWhenCancelledAndCanBeRunAgain)
{
    TestImage input; // slow enough to be caught in the middle
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
    auto const algorithm = Threshold::New();
    fill(input, {4, 40, 1, 20, 1}, std::vector<unsigned char>(3200, 5));
    auto const output = makeImage({4, 40, 1, 20, 1}, std::vector<unsigned char>(3200, 99));
    algorithm->input = &input;
    algorithm->output = output.get();
    RecordingInteraction recording;
    recording.cancelAtPoll = 2;
    algorithm->run(&recording);
    EXPECT_LT(recording.notified.back(), 100.0);
    auto const voxels = voxelsOf<unsigned char>(*output);
    EXPECT_EQ(voxels.front(), 1);
    EXPECT_EQ(voxels.back(), 99);
    EXPECT_FALSE(algorithm->input.isLocked());

    input.beforeRowOperation = [] {};
    algorithm->run();
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(1));
}

TEST(ThresholdRun, failsAtEachRowOperationAndCanBeRunAgain)
{
    Sizes const sizes{3, 4, 2, 2, 1};
    std::vector<unsigned char> const voxels(48, 5);
    for (bool const failsOnOutput : {false, true}) {
        for (int k = 1; k <= 16; ++k) { // as many rows as there are
            TestImage input;
            TestImage output;
            fill(input, sizes, voxels);
            fill(output, sizes, voxels);
            auto const algorithm = Threshold::New();
            algorithm->input = &input;
            algorithm->output = &output;
            TestImage& failing = failsOnOutput ? output : input;
            failing.failAt(k, k % 2 == 0 ? TestImage::Fault::throws : TestImage::Fault::returnsFalse);
            try {
                algorithm->run();
                ADD_FAILURE() << k;
            } catch (UnexpectedError const& error) {
                EXPECT_THAT(error.what().c_str(),
                            HasSubstr(k % 2 == 0      ? "the row operation was told to fail"
                                      : failsOnOutput ? "Error in writeRowAt implementation, return value is false"
                                                      : "Error in readRowAt implementation, return value is false"));
                EXPECT_THAT(error.what().c_str(), HasSubstr("Threshold of Moxelcore library"));
            }
            EXPECT_FALSE(algorithm->output.isLocked());
            algorithm->run();
            EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
        }
    }
}

TEST(ThresholdRun, survivesEveryAllocationThatFails)
{
    Sizes const sizes{40, 30, 12, 2, 1};
    std::vector<short> const voxels(sizes.numOfVoxels(), 5);
    for (bool const isWatched : {false, true}) {
        bool fails = true;
        for (int k = 1; fails; ++k) {
            ASSERT_LT(k, 1000);
            auto const input = makeImage(sizes, voxels);
            TestImage output; // without row pointers, so that rows are allocated too
            auto const algorithm = Threshold::New();
            algorithm->input = input.get();
            algorithm->output = &output;
            RecordingInteraction recording;
            recording.notified.reserve(100);
            std::string text;
            Allocations::failAt(k);
            try {
                algorithm->run(isWatched ? &recording : nullptr);
                fails = Allocations::stopFailing();
            } catch (UnexpectedError const& error) {
                EXPECT_TRUE(Allocations::stopFailing());
                text = error.what().c_str();
                EXPECT_THAT(text, HasSubstr("std::bad_alloc Threshold of Moxelcore library"));
            }
            EXPECT_FALSE(algorithm->running());
            EXPECT_FALSE(algorithm->output.isLocked());
            algorithm->run();
            EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
        }
    }
}

TEST(ThresholdRun, needsLittleMemoryBesideItsImages)
{
    for (bool const givesPointers : {true, false}) {
        Sizes const sizes{2000, 200, 20, 1, 1};
        TestImage input;
        TestImage output;
        input.givesPointers = givesPointers;
        output.givesPointers = givesPointers;
        fill(input, sizes, std::vector<float>(sizes.numOfVoxels(), 5));
        fill(output, sizes, std::vector<unsigned char>(sizes.numOfVoxels()));
        auto const algorithm = Threshold::New();
        algorithm->input = &input;
        algorithm->output = &output;
        Allocations::startCounting();
        algorithm->run();
        auto const threads = tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism);
        EXPECT_LT(Allocations::numOfBytes(), threads << 20U);
    }
}

TEST(ThresholdRun, canBeCancelledAtAnyMoment)
{
    std::mt19937 random(6);
    auto const input = makeImage({64, 64, 8, 20, 1}, std::vector<unsigned char>(64 * 64 * 8 * 20, 5));
    std::vector<unsigned char> const wanted(64 * 64 * 8 * 20, 1);
    for (int round = 0; round < 100; ++round) {
        auto const output =
            makeImage(Sizes::of(*input), std::vector<unsigned char>(Sizes::of(*input).numOfVoxels(), 9));
        auto const algorithm = Threshold::New();
        algorithm->input = input.get();
        algorithm->output = output.get();
        std::thread canceller([&, delay = std::chrono::microseconds(random() % 1000)] {
            std::this_thread::sleep_for(delay);
            algorithm->cancelExecution(); // before, in or after the run
        });
        RecordingInteraction recording;
        algorithm->run(round % 2 == 0 ? &recording : nullptr);
        canceller.join();
        EXPECT_FALSE(algorithm->running());
        algorithm->run();
        EXPECT_EQ(voxelsOf<unsigned char>(*output), wanted);
    }
}

TEST(ThresholdRun, runsFromEightThreadsAtOnce)
{
    std::mt19937 random(5);
    Sizes const sizes{100, 100, 3, 1, 1};
    auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
    auto const input = makeImage(sizes, voxels);
    auto const wanted = thresholdReference<short, unsigned char>(voxels, 0, 1000);
    std::vector<std::thread> callers;
    for (int i = 0; i < 8; ++i) {
        callers.emplace_back([&] {
            memory::InMemoryImage output;
            run(*input, output, 0, 1000);
            EXPECT_EQ(voxelsOf<unsigned char>(output), wanted);
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/Segmentation/Labeling.h>

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "Segmentation/private/LabelBand.h"
#include "testing/Allocations.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/Refusal.h"
#include "testing/RuleImages.h"
#include "testing/TestImage.h"
#include "testing/references/labeling.h"

namespace mox::testing {

namespace {

using segmentation::Labeling;
using ::testing::Each;
using ::testing::HasSubstr;

/// Dots that do not touch, so many in rows of 100.
std::vector<unsigned char> dots(unsigned int count, Sizes const& sizes)
{
    std::vector<unsigned char> voxels(sizes.numOfVoxels());
    for (unsigned int i = 0; i < count; ++i) {
        voxels[std::size_t{i / 50 * 2} * sizes.columns + i % 50 * 2] = 1;
    }
    return voxels;
}

template <class Out>
void expectLimit(unsigned int most)
{
    Sizes const sizes{100, 2000, 1, 1, 1};
    auto const algorithm = Labeling::New();
    for (bool const isTooMany : {false, true}) {
        auto const input = makeImage(sizes, dots(isTooMany ? most + 1 : most, sizes));
        auto const output = makeImage(sizes, std::vector<Out>(sizes.numOfVoxels(), Out(77)));
        algorithm->input = input.get();
        algorithm->output = output.get();
        if (isTooMany) {
            EXPECT_THROW(algorithm->run(), RuntimeError);
            EXPECT_THAT(refusalOf(*algorithm),
                        HasSubstr("The image has " + std::to_string(most + 1) +
                                  " components. The output's voxel type " + helper::getText(voxelTypeOf<Out>).c_str() +
                                  " has no more than " + std::to_string(most) + " labels"));
            EXPECT_THAT(voxelsOf<Out>(*output), Each(Out(77)));
            EXPECT_FALSE(algorithm->output.isLocked());
        } else {
            algorithm->run();
            auto const labels = voxelsOf<Out>(*output);
            EXPECT_EQ(*std::max_element(labels.begin(), labels.end()), static_cast<Out>(most));
        }
    }
}

TEST(LabelingRun, writesNothingWhenThereAreMoreComponentsThanLabels)
{
    expectLimit<unsigned char>(255);
    expectLimit<signed char>(127);
    expectLimit<short>(32767);
}

TEST(LabelingRun, givesTheOutputTheShapeOfTheInputAndMarksItAsLabels)
{
    auto const input = makeImage({3, 2, 1, 1, 1}, std::vector<short>(6, 7));
    calibrate(*input);
    memory::InMemoryImage output;
    auto const algorithm = Labeling::New();
    algorithm->input = input.get();
    algorithm->output = &output;
    algorithm->run();
    EXPECT_EQ(Sizes::of(output), Sizes::of(*input));
    EXPECT_EQ(output.getVoxelType(), MOX_UINT8);
    EXPECT_EQ(output.getInterpretation(), INTERPRETATION_LABEL);
    expectSameCalibration(output, *input);
    EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
}

TEST(LabelingRun, reportsProgressUpToTheEnd)
{
    auto const input = makeImage({64, 300, 1, 1, 1}, std::vector<unsigned char>(64 * 300, 1));
    memory::InMemoryImage output;
    RecordingInteraction recording;
    auto const algorithm = Labeling::New();
    algorithm->input = input.get();
    algorithm->output = &output;
    algorithm->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
    EXPECT_TRUE(std::is_sorted(recording.notified.begin(), recording.notified.end()));
}

TEST(LabelingRun, stopsWhenCancelledAndCanBeRunAgain)
{
    Sizes const sizes{8, 2000, 1, 1, 1};
    for (bool const isSlowInput : {true, false}) {
        TestImage input;
        TestImage output;
        fill(input, sizes, std::vector<unsigned char>(sizes.numOfVoxels(), 5));
        fill(output, sizes, std::vector<unsigned char>(sizes.numOfVoxels(), 9));
        auto& slow = isSlowInput ? input : output;
        slow.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
        auto const algorithm = Labeling::New();
        algorithm->input = &input;
        algorithm->output = &output;
        RecordingInteraction recording;
        recording.cancelAtPoll = 2;
        algorithm->run(&recording);
        EXPECT_LT(recording.notified.back(), 100.0);
        slow.beforeRowOperation = [] {};
        EXPECT_EQ(voxelsOf<unsigned char>(output).back(), 9);
        algorithm->run();
        EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
    }
}

TEST(LabelingRun, canBeCancelledAtAnyMoment)
{
    std::mt19937 random(6);
    Sizes const sizes{256, 600, 1, 1, 1};
    std::vector<unsigned char> voxels(sizes.numOfVoxels());
    for (auto& voxel : voxels) {
        voxel = random() % 8 != 0;
    }
    auto const input = makeImage(sizes, voxels);
    auto const labels = labelingReference(voxels, sizes.columns, sizes.rows);
    std::vector<unsigned short> const wanted(labels.begin(), labels.end());
    for (int round = 0; round < 40; ++round) {
        auto const output = makeImage(sizes, std::vector<unsigned short>(sizes.numOfVoxels()));
        auto const algorithm = Labeling::New();
        algorithm->input = input.get();
        algorithm->output = output.get();
        std::thread canceller([&, delay = std::chrono::microseconds(random() % 500)] {
            std::this_thread::sleep_for(delay);
            algorithm->cancelExecution(); // before, in or after the run
        });
        RecordingInteraction recording;
        algorithm->run(round % 2 == 0 ? &recording : nullptr);
        canceller.join();
        algorithm->run();
        ASSERT_EQ(voxelsOf<unsigned short>(*output), wanted);
    }
}

TEST(LabelingRun, failsAtEachRowOperationAndCanBeRunAgain)
{
    Sizes const sizes{5, 6, 1, 1, 1};
    std::vector<unsigned char> const voxels(30, 5);
    for (bool const failsOnOutput : {false, true}) {
        for (int k = 1; k <= 6; ++k) {
            TestImage input;
            TestImage output;
            fill(input, sizes, voxels);
            fill(output, sizes, voxels);
            auto const algorithm = Labeling::New();
            algorithm->input = &input;
            algorithm->output = &output;
            (failsOnOutput ? output : input)
                .failAt(k, k % 2 == 0 ? TestImage::Fault::throws : TestImage::Fault::returnsFalse);
            EXPECT_THROW(algorithm->run(), UnexpectedError);
            if (!failsOnOutput) {
                EXPECT_EQ(voxelsOf<unsigned char>(output), voxels);
            }
            algorithm->run();
            EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
        }
    }
}

TEST(LabelingRun, survivesEveryAllocationThatFails)
{
    Sizes const sizes{40, 300, 1, 1, 1};
    std::vector<short> const voxels(sizes.numOfVoxels(), 5);
    bool fails = true;
    for (int k = 1; fails; ++k) {
        ASSERT_LT(k, 1000);
        auto const input = makeImage(sizes, voxels);
        TestImage output; // without row pointers, so that rows are allocated too
        auto const algorithm = Labeling::New();
        algorithm->input = input.get();
        algorithm->output = &output;
        std::string text;
        Allocations::failAt(k);
        try {
            algorithm->run();
            fails = Allocations::stopFailing();
        } catch (UnexpectedError const& error) {
            EXPECT_TRUE(Allocations::stopFailing());
            text = error.what().c_str();
            EXPECT_THAT(text, HasSubstr("std::bad_alloc Labeling of Moxelcore library"));
        }
        EXPECT_FALSE(algorithm->output.isLocked());
        algorithm->run();
        EXPECT_THAT(voxelsOf<unsigned char>(output), Each(1));
    }
}

// The worst case: dots apart from each other by one voxel.
TEST(LabelingRun, needsLessThanTwoBytesPerVoxel)
{
    Sizes const sizes{4096, 4096, 1, 1, 1};
    std::vector<unsigned char> voxels(sizes.numOfVoxels());
    for (unsigned int y = 0; y < sizes.rows; y += 2) {
        for (unsigned int x = 0; x < sizes.columns; x += 2) {
            voxels[std::size_t{y} * sizes.columns + x] = 1;
        }
    }
    auto const input = makeImage(sizes, voxels);
    memory::InMemoryImage output;
    output.allocate(MOX_UINT32, 1, 1, 1, 1, 1);
    auto const algorithm = Labeling::New();
    algorithm->input = input.get();
    algorithm->output = &output;
    algorithm->run();
    Allocations::startCounting(); // the output has its memory, the count is of all requests, freed ones too
    algorithm->run();
    EXPECT_LT(Allocations::numOfBytes(), 2 * sizes.numOfVoxels());
}

// ---- parts

TEST(LabelBand, hasNoMoreRunsThanItCanNumber)
{
    using segmentation::LabelBand;
    for (unsigned int const columns : {0U, 1U, 2U, 3U, 4096U, 1U << 20U, 1U << 28U, 1U << 29U, ~0U - 1, ~0U}) {
        unsigned int const rows = LabelBand::maxNumOfRows(columns);
        EXPECT_GE(rows, 2U);
        EXPECT_LE(rows, 64U);
        EXPECT_EQ(rows % 2, 0U);
        EXPECT_LT(uint64{rows / 2} * ((uint64{columns} + 1) / 2), uint64{1} << 32U);
    }
    EXPECT_EQ(LabelBand::maxNumOfRows(4096), 64U);
}

} // namespace

} // namespace mox::testing

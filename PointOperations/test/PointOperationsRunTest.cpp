#include <gmock/gmock.h>

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Math/MathProperty.h>
#include <Moxelcore/PointOperations/ArithmeticImageProcessing.h>

#include <tbb/global_control.h>

#include <thread>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"

// What a run of any point operation does with its images, its owner and its failures. All inputs are one image of
// int16 voxels, which every class takes and most give back.

namespace mox::testing {

namespace {

using ::testing::HasSubstr;

char const* const classes[] = {"Anamorphosis",
                               "ArithmeticImageProcessing",
                               "ArithmeticValueProcessing",
                               "BitShift",
                               "GradientMagnitude3D",
                               "InvertImage",
                               "LogicalImageProcessing",
                               "LogicalNotProcessing",
                               "LogicalValueProcessing",
                               "MaskImageProcessing"};

boost::shared_ptr<BaseAlgorithm> algorithmOn(char const* name, ImageModel const& input, ImageModel& output)
{
    auto const algorithm = AlgoInfo::fromName(name).createInstance();
    for (unsigned int i = 0; i < algorithm->getNumOfInputProperties(); ++i) {
        if (auto* const image = dynamic_cast<Property<ImageModel const*>*>(algorithm->getInputProperty(i))) {
            *image = &input;
        }
    }
    if (auto* const lut = dynamic_cast<Property<Vector<double>>*>(algorithm->getPropertyfromName("lut"))) {
        Vector<double> entries;
        for (int i = 0; i < 256; ++i) {
            entries.push_back(i * i);
        }
        *lut = entries;
    }
    dynamic_cast<Property<ImageModel*>&>(*algorithm->getPropertyfromName("output")) = &output;
    return algorithm;
}

class EveryPointOperation : public ::testing::TestWithParam<char const*> {
protected:
    std::vector<short> resultOn(ImageModel const& input) const
    {
        memory::InMemoryImage output;
        algorithmOn(GetParam(), input, output)->run();
        EXPECT_EQ(Sizes::of(output), Sizes::of(input));
        return voxelsOf<short>(output);
    }
};

TEST_P(EveryPointOperation, readsNothingBeyondAVoxelAndRunsAtTheScalarLevelOnly)
{
    auto const algorithm = AlgoInfo::fromName(GetParam()).createInstance();
    auto const influence = algorithm->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)), 0U);
    }
    EXPECT_EQ(algorithm->getMostPerformantAvailableOptimLevel(), OptimLevelType::SCALAR);
}

TEST_P(EveryPointOperation, takesImagesOfAnApplicationAndWorksInPlace)
{
    std::mt19937 random(4);
    for (int round = 0; round < 12; ++round) {
        Sizes const sizes = round == 0 ? Sizes{2100, 40, 3, 2, 1} : randomSizes(random, {50, 40, 5, 3, 1});
        auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
        auto const contiguous = makeImage(sizes, voxels);
        auto const expected = resultOn(*contiguous);
        for (bool const givesPointers : {false, true}) {
            TestImage input;
            TestImage output;
            input.givesPointers = givesPointers;
            output.givesPointers = !givesPointers;
            fill(input, sizes, voxels);
            fill(output, sizes, voxels);
            algorithmOn(GetParam(), input, output)->run();
            ASSERT_EQ(voxelsOf<short>(output), expected);
            algorithmOn(GetParam(), input, input)->run();
            ASSERT_EQ(voxelsOf<short>(input), expected);
        }
        algorithmOn(GetParam(), *contiguous, *contiguous)->run();
        ASSERT_EQ(voxelsOf<short>(*contiguous), expected);
    }
}

TEST_P(EveryPointOperation, takesEmptyImages)
{
    for (Sizes const& sizes :
         {Sizes{0, 2, 2, 1, 1}, Sizes{2, 0, 2, 1, 1}, Sizes{2, 2, 0, 1, 1}, Sizes{2, 2, 2, 0, 1}}) {
        auto const input = makeImage(sizes, std::vector<short>());
        memory::InMemoryImage output;
        RecordingInteraction recording;
        algorithmOn(GetParam(), *input, output)->run(&recording);
        EXPECT_EQ(Sizes::of(output), sizes);
        EXPECT_EQ(recording.notified.back(), 0.0);
    }
}

TEST_P(EveryPointOperation, reportsItsProgress)
{
    auto const input = makeImage({64, 64, 16, 2, 1}, std::vector<short>(64 * 64 * 32));
    memory::InMemoryImage output;
    RecordingInteraction recording;
    algorithmOn(GetParam(), *input, output)->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
}

TEST_P(EveryPointOperation, stopsWhenCancelledAndCanBeRunAgain)
{
    Sizes const sizes{4, 4, 1, 3, 1};
    TestImage input;
    fill(input, sizes, std::vector<short>(48, 5));
    auto const expected = resultOn(input);
    short const unwritten = static_cast<short>(expected[0] + 1);
    auto const output = makeImage(sizes, std::vector<short>(48, unwritten));
    auto const algorithm = algorithmOn(GetParam(), input, *output);
    input.beforeRowOperation = [&] { algorithm->cancelExecution(); };
    algorithm->run();
    auto const voxels = voxelsOf<short>(*output);
    EXPECT_EQ(voxels.front(), expected.front());
    EXPECT_EQ(voxels.back(), unwritten);
    input.beforeRowOperation = [] {};
    algorithm->run();
    EXPECT_EQ(voxelsOf<short>(*output), expected);
}

TEST_P(EveryPointOperation, failsWithItsImagesAndCanBeRunAgain)
{
    Sizes const sizes{3, 4, 2, 2, 1};
    std::vector<short> const voxels(48, 5);
    for (bool const failsOnOutput : {false, true}) {
        for (int k = 1; k <= 16; ++k) {
            TestImage input;
            TestImage output;
            fill(input, sizes, voxels);
            fill(output, sizes, voxels);
            auto const algorithm = algorithmOn(GetParam(), input, output);
            (failsOnOutput ? output : input)
                .failAt(k, k % 2 == 0 ? TestImage::Fault::throws : TestImage::Fault::returnsFalse);
            try {
                algorithm->run();
                ADD_FAILURE() << k;
            } catch (UnexpectedError const& error) {
                EXPECT_THAT(error.what().c_str(), HasSubstr(std::string(GetParam()) + " of Moxelcore library"));
            }
            EXPECT_FALSE(algorithm->getPropertyfromName("output")->isLocked());
            algorithm->run();
            EXPECT_EQ(voxelsOf<short>(output), resultOn(input));
        }
    }
}

TEST_P(EveryPointOperation, isTheSameOnAnyNumberOfThreadsAndFromSeveralCallers)
{
    std::mt19937 random(5);
    Sizes const sizes{300, 100, 3, 1, 1};
    auto const input = makeImage(sizes, randomVoxels<short>(random, sizes.numOfVoxels()));
    auto const expected = resultOn(*input);
    {
        tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, 1);
        EXPECT_EQ(resultOn(*input), expected);
    }
    std::vector<std::thread> callers;
    for (int i = 0; i < 4; ++i) {
        callers.emplace_back([&] { EXPECT_EQ(resultOn(*input), expected); });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheModule, EveryPointOperation, ::testing::ValuesIn(classes),
                         [](auto const& name) { return name.param; });

} // namespace

} // namespace mox::testing

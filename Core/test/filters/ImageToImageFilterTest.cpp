#include "Core/private/filters/ImageToImageFilter.h"

#include <gmock/gmock.h>

#include <tbb/parallel_for.h>

#include <chrono>
#include <thread>

#include "testing/Images.h"
#include "testing/TestAlgorithm.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using ::testing::ElementsAre;

/// The voxel plus 1, in the type of the output.
struct Increment {
    template <class In, class Out>
    void row(In const* in, Out* out, std::size_t count) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<Out>(static_cast<Out>(in[i]) + 1);
        }
    }
};

template <class Dimensions>
class ImageToImageFilters : public ::testing::Test {
protected:
    template <class In, class Out>
    static void run(ImageModel const& input, ImageModel& output, BaseAlgorithm* owner = nullptr)
    {
        Increment const kernel;
        ImageToImageFilter<In, Out, Increment, Dimensions> filter(owner, kernel);
        filter.setInput(input);
        filter.setOutput(output);
        filter.run();
        lastProgress = filter.getProgress();
    }

    template <class In, class Out>
    static std::vector<Out> incremented(std::vector<In> const& voxels)
    {
        std::vector<Out> result(voxels.size());
        Increment().row(voxels.data(), result.data(), voxels.size());
        return result;
    }

    static inline double lastProgress = 0;
};

using AllDimensions = ::testing::Types<Filter2dTag, Filter3dTag>;
TYPED_TEST_SUITE(ImageToImageFilters, AllDimensions);

TYPED_TEST(ImageToImageFilters, reachEveryVoxelOfEveryShape)
{
    std::mt19937 random(3);
    for (int round = 0; round < 40; ++round) {
        Sizes const sizes = round == 0 ? Sizes{2500, 41, 3, 1, 1} : randomSizes(random, {70, 40, 25, 3, 2});
        auto const voxels = randomVoxels<unsigned short>(random, sizes.numOfVoxels());
        auto const input = makeImage(sizes, voxels);
        auto const output = makeImage(sizes, std::vector<int>(voxels.size()));
        this->template run<unsigned short, int>(*input, *output);
        ASSERT_EQ(voxelsOf<int>(*output), (this->template incremented<unsigned short, int>(voxels)));
        ASSERT_EQ(this->lastProgress, 100.0);
    }
}

TYPED_TEST(ImageToImageFilters, workInPlace)
{
    std::mt19937 random(4);
    Sizes const sizes{1500, 30, 4, 2, 1};
    auto const voxels = randomVoxels<unsigned char>(random, sizes.numOfVoxels());
    auto const image = makeImage(sizes, voxels);
    this->template run<unsigned char, unsigned char>(*image, *image);
    EXPECT_EQ(voxelsOf<unsigned char>(*image), (this->template incremented<unsigned char, unsigned char>(voxels)));
}

TYPED_TEST(ImageToImageFilters, workOnImagesWithoutRowPointers)
{
    std::mt19937 random(5);
    for (bool const givesPointers : {false, true}) {
        Sizes const sizes{40, 30, 4, 2, 2};
        auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
        TestImage input;
        TestImage output;
        input.givesPointers = givesPointers;
        output.givesPointers = givesPointers;
        fill(input, sizes, voxels);
        fill(output, sizes, std::vector<double>(voxels.size()));
        this->template run<short, double>(input, output);
        EXPECT_EQ(voxelsOf<double>(output), (this->template incremented<short, double>(voxels)));
    }
}

TYPED_TEST(ImageToImageFilters, doNothingOnAnEmptyImage)
{
    for (Sizes const& sizes :
         {Sizes{0, 3, 3, 1, 1}, Sizes{3, 0, 3, 1, 1}, Sizes{3, 3, 0, 1, 1}, Sizes{3, 3, 3, 0, 1}, Sizes()}) {
        TestImage input;
        TestImage output;
        fill(input, sizes, std::vector<short>());
        fill(output, sizes, std::vector<short>());
        int const operations = input.numOfRowOperations() + output.numOfRowOperations();
        this->template run<short, short>(input, output);
        EXPECT_EQ(input.numOfRowOperations() + output.numOfRowOperations(), operations);
        EXPECT_EQ(this->lastProgress, 0.0);
    }
}

TYPED_TEST(ImageToImageFilters, stopAtTheFirstFailure)
{
    for (auto const fault : {TestImage::Fault::returnsFalse, TestImage::Fault::throws}) {
        TestImage input;
        auto const output = makeImage({8, 4, 2, 1, 1}, std::vector<short>(64));
        fill(input, {8, 4, 2, 1, 1}, std::vector<short>(64));
        input.failAt(3, fault);
        auto const run = [&] { this->template run<short, short>(input, *output); };
        if (fault == TestImage::Fault::throws) {
            EXPECT_THROW(run(), std::runtime_error);
        } else {
            EXPECT_THROW(run(), UnexpectedError);
        }
    }
}

/// Cancels the run that it is part of when its first row is asked for.
struct CancellingKernel {
    BaseAlgorithm* algorithm;

    void row(short const* in, short* out, std::size_t count) const
    {
        std::copy(in, in + count, out);
        algorithm->cancelExecution();
    }
};

template <class Dimensions>
unsigned int numOfWrittenSlices(Sizes const& sizes)
{
    auto const input = makeImage(sizes, std::vector<short>(sizes.numOfVoxels(), 1));
    auto const output = makeImage(sizes, std::vector<short>(sizes.numOfVoxels(), 0));
    auto const algorithm = TestAlgorithm::New();
    algorithm->work = [&](TestAlgorithm& running) {
        CancellingKernel const kernel{&running};
        ImageToImageFilter<short, short, CancellingKernel, Dimensions> filter(&running, kernel);
        filter.setInput(*input);
        filter.setOutput(*output);
        filter.run();
        EXPECT_TRUE(filter.isExecutionCancelled());
    };
    algorithm->run();
    unsigned int written = 0;
    for (short const voxel : voxelsOf<short>(*output)) {
        written += voxel == 1 ? 1 : 0;
    }
    return written / (sizes.columns * sizes.rows);
}

TEST(ImageToImageFilter, leavesTheRestUnwrittenWhenCancelled)
{
    EXPECT_EQ(numOfWrittenSlices<Filter3dTag>({4, 3, 2, 3, 1}), 2U); // the plans of the first of three times
    EXPECT_EQ(numOfWrittenSlices<Filter2dTag>({4, 3, 2, 3, 1}), 1U); // the first plan
}

// While a thread waits for tasks that a row operation of the image has started, as one that decodes tiles might, it
// may take up another leaf of the filter in the middle of its own.
TEST(ImageToImageFilter, takesImagesWhoseRowOperationsRunTasks)
{
    std::mt19937 random(6);
    Sizes const sizes{64, 120, 2, 1, 1};
    auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
    TestImage input;
    TestImage output;
    fill(input, sizes, voxels);
    fill(output, sizes, std::vector<int>(voxels.size()));
    auto const runTasks = [] {
        tbb::parallel_for(0, 16, [](int) { std::this_thread::sleep_for(std::chrono::microseconds(1)); });
    };
    input.beforeRowOperation = runTasks;
    output.beforeRowOperation = runTasks;
    Increment const kernel;
    ImageToImageFilter3d<short, int, Increment> filter(nullptr, kernel);
    filter.setInput(input);
    filter.setOutput(output);
    filter.run();
    std::vector<int> expected(voxels.size());
    kernel.row(voxels.data(), expected.data(), voxels.size());
    EXPECT_EQ(voxelsOf<int>(output), expected);
}

} // namespace

} // namespace mox::testing

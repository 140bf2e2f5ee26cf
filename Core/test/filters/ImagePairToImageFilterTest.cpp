#include "Core/private/filters/ImagePairToImageFilter.h"

#include <gmock/gmock.h>

#include "testing/Images.h"
#include "testing/TestAlgorithm.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

struct Difference {
    void row(short const* a, unsigned char const* b, short* out, std::size_t count) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<short>(a[i] - b[i]);
        }
    }
};

/// Runs the filter and returns its progress.
template <class Dimensions>
double run(ImageModel const& first, ImageModel const& second, ImageModel& output)
{
    Difference const kernel;
    ImagePairToImageFilter<short, unsigned char, short, Difference, Dimensions> filter(nullptr, kernel);
    filter.setInput(first, second);
    filter.setOutput(output);
    filter.run();
    return filter.getProgress();
}

std::vector<short> difference(std::vector<short> const& a, std::vector<unsigned char> const& b)
{
    std::vector<short> result(a.size());
    Difference().row(a.data(), b.data(), result.data(), a.size());
    return result;
}

template <class Dimensions>
class ImagePairToImageFilters : public ::testing::Test {
};

using AllDimensions = ::testing::Types<Filter2dTag, Filter3dTag>;
TYPED_TEST_SUITE(ImagePairToImageFilters, AllDimensions);

TYPED_TEST(ImagePairToImageFilters, reachEveryVoxelOfEveryShape)
{
    std::mt19937 random(1);
    for (int round = 0; round < 40; ++round) {
        Sizes const sizes = round == 0 ? Sizes{2500, 41, 3, 1, 1} : randomSizes(random, {70, 40, 25, 3, 2});
        auto const a = randomVoxels<short>(random, sizes.numOfVoxels());
        auto const b = randomVoxels<unsigned char>(random, sizes.numOfVoxels());
        auto const first = makeImage(sizes, a);
        auto const second = makeImage(sizes, b);
        auto const output = makeImage(sizes, std::vector<short>(a.size()));
        ASSERT_EQ(run<TypeParam>(*first, *second, *output), 100.0);
        ASSERT_EQ(voxelsOf<short>(*output), difference(a, b));
    }
}

TYPED_TEST(ImagePairToImageFilters, workInPlaceAndOnImagesWithoutRowPointers)
{
    std::mt19937 random(2);
    Sizes const sizes{90, 30, 4, 2, 2};
    auto const a = randomVoxels<short>(random, sizes.numOfVoxels());
    auto const b = randomVoxels<unsigned char>(random, sizes.numOfVoxels());
    for (bool const givesPointers : {false, true}) {
        TestImage first;
        TestImage second;
        first.givesPointers = givesPointers;
        fill(first, sizes, a);
        fill(second, sizes, b);
        run<TypeParam>(first, second, first);
        EXPECT_EQ(voxelsOf<short>(first), difference(a, b));
    }
}

TYPED_TEST(ImagePairToImageFilters, giveAnInputOfOneChannelToAllChannels)
{
    std::mt19937 random(3);
    Sizes const sizes{20, 9, 3, 2, 3};
    Sizes const oneChannel{20, 9, 3, 2, 1};
    auto const a = randomVoxels<short>(random, sizes.numOfVoxels());
    auto const b = randomVoxels<unsigned char>(random, oneChannel.numOfVoxels());
    std::vector<unsigned char> repeated;
    for (int channel = 0; channel < 3; ++channel) {
        repeated.insert(repeated.end(), b.begin(), b.end());
    }
    auto const first = makeImage(sizes, a);
    for (bool const givesPointers : {false, true}) {
        TestImage second;
        second.givesPointers = givesPointers;
        fill(second, oneChannel, b);
        auto const output = makeImage(sizes, std::vector<short>(a.size()));
        run<TypeParam>(*first, second, *output);
        EXPECT_EQ(voxelsOf<short>(*output), difference(a, repeated));
    }
    auto const contiguous = makeImage(oneChannel, b);
    auto const output = makeImage(sizes, std::vector<short>(a.size()));
    run<TypeParam>(*first, *contiguous, *output);
    EXPECT_EQ(voxelsOf<short>(*output), difference(a, repeated));
}

TYPED_TEST(ImagePairToImageFilters, doNothingOnAnEmptyImage)
{
    for (Sizes const& sizes :
         {Sizes{0, 3, 3, 1, 1}, Sizes{3, 0, 3, 1, 1}, Sizes{3, 3, 0, 1, 1}, Sizes{3, 3, 3, 0, 1}}) {
        TestImage first;
        TestImage second;
        TestImage output;
        fill(first, sizes, std::vector<short>());
        fill(second, sizes, std::vector<unsigned char>());
        fill(output, sizes, std::vector<short>());
        int const operations = output.numOfRowOperations();
        EXPECT_EQ(run<TypeParam>(first, second, output), 0.0);
        EXPECT_EQ(output.numOfRowOperations(), operations);
    }
}

TYPED_TEST(ImagePairToImageFilters, stopAtTheFirstFailureOfAnyImage)
{
    Sizes const sizes{8, 4, 2, 1, 1};
    for (int failing = 0; failing < 3; ++failing) {
        TestImage images[3];
        fill(images[0], sizes, std::vector<short>(64));
        fill(images[1], sizes, std::vector<unsigned char>(64));
        fill(images[2], sizes, std::vector<short>(64));
        images[failing].failAt(3, TestImage::Fault::returnsFalse);
        EXPECT_THROW(run<TypeParam>(images[0], images[1], images[2]), UnexpectedError);
    }
}

/// Cancels the run that it is part of when its first row is asked for.
struct CancellingKernel {
    BaseAlgorithm* algorithm;

    void row(short const* a, short const*, short* out, std::size_t count) const
    {
        std::copy(a, a + count, out);
        algorithm->cancelExecution();
    }
};

TEST(ImagePairToImageFilter, leavesTheRestUnwrittenWhenCancelled)
{
    Sizes const sizes{4, 3, 2, 3, 1};
    auto const input = makeImage(sizes, std::vector<short>(sizes.numOfVoxels(), 1));
    auto const output = makeImage(sizes, std::vector<short>(sizes.numOfVoxels(), 0));
    auto const algorithm = TestAlgorithm::New();
    algorithm->work = [&](TestAlgorithm& running) {
        CancellingKernel const kernel{&running};
        ImagePairToImageFilter3d<short, short, short, CancellingKernel> filter(&running, kernel);
        filter.setInput(*input, *input);
        filter.setOutput(*output);
        filter.run();
    };
    algorithm->run();
    auto const voxels = voxelsOf<short>(*output);
    EXPECT_EQ(std::count(voxels.begin(), voxels.end(), 1), 24); // the first of three times
}

} // namespace

} // namespace mox::testing

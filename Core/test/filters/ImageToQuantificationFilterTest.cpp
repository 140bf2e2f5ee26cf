#include "Core/private/filters/ImageToQuantificationFilter.h"

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <thread>

#include "Core/private/filters/fixedView.h"
#include "testing/Images.h"
#include "testing/TestAlgorithm.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using Scalar = SimdVec::arch_scalar_tag;

/// Tells which voxels it was given in which order: a polynomial in a prime, whose value follows from any grouping but
/// from no other order.
class Sequence {
public:
    static constexpr std::size_t numOfLanes = 1;

    void row(short const* voxels, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            value = value * prime + static_cast<uint64>(voxels[i]);
            power *= prime;
        }
    }
    void join(Sequence const& following)
    {
        value = value * following.power + following.value;
        power *= following.power;
    }

    uint64 value = 0;
    uint64 power = 1;

private:
    static constexpr uint64 prime = 1000003;
};

/// A sum that rounds, so that it tells the grouping too.
class RoundingSum {
public:
    static constexpr std::size_t numOfLanes = 1;

    void row(short const* voxels, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            sum += 1.0F / static_cast<float>(voxels[i]);
        }
    }
    void join(RoundingSum const& following) { sum += following.sum; }

    float sum = 0;
};

template <class Kernel, class Dimensions>
Kernel quantify(ImageModel const& input)
{
    ImageToQuantificationFilter<short, Scalar, Kernel, Dimensions> filter(nullptr);
    filter.setInput(fixedView<short, Scalar>(input));
    auto const result = filter.run();
    EXPECT_EQ(filter.getProgress(), Sizes::of(input).empty() ? 0.0 : 100.0);
    return result.value();
}

template <class Dimensions>
class ImageToQuantificationFilters : public ::testing::Test {
};

using AllDimensions = ::testing::Types<Filter2dTag, Filter3dTag>;
TYPED_TEST_SUITE(ImageToQuantificationFilters, AllDimensions);

// An image of one column has its voxels in one order however it is cut.
TYPED_TEST(ImageToQuantificationFilters, foldTheVoxelsInOrder)
{
    std::mt19937 random(1);
    for (unsigned int const rows : {1U, 3U, 1000U, 200000U}) {
        auto const voxels = randomVoxels<short>(random, rows);
        Sequence expected;
        expected.row(voxels.data(), voxels.size());
        auto const image = makeImage({1, rows, 1, 1, 1}, voxels);
        EXPECT_EQ((quantify<Sequence, TypeParam>(*image).value), expected.value);
        TestImage own;
        fill(own, {rows, 1, 1, 1, 1}, voxels);
        EXPECT_EQ((quantify<Sequence, TypeParam>(own).value), expected.value);
    }
}

TYPED_TEST(ImageToQuantificationFilters, foldAllPlansTimesAndChannelsInTheirOrder)
{
    std::mt19937 random(2);
    for (int round = 0; round < 20; ++round) {
        Sizes sizes = randomSizes(random, {40, 30, 6, 3, 1});
        auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
        Sequence expected;
        expected.row(voxels.data(), voxels.size());
        auto const image = makeImage(sizes, voxels);
        ASSERT_EQ((quantify<Sequence, TypeParam>(*image).value), expected.value);
    }
}

TYPED_TEST(ImageToQuantificationFilters, giveAnEmptyImageTheFreshResult)
{
    for (Sizes const& sizes :
         {Sizes{0, 3, 3, 1, 1}, Sizes{3, 0, 3, 1, 1}, Sizes{3, 3, 0, 1, 1}, Sizes{3, 3, 3, 0, 1}}) {
        auto const image = makeImage(sizes, std::vector<short>());
        EXPECT_EQ((quantify<Sequence, TypeParam>(*image).power), 1U);
    }
}

TYPED_TEST(ImageToQuantificationFilters, doNotDependOnTheNumberOfThreads)
{
    std::vector<short> voxels(1000 * 900);
    std::mt19937 random(3);
    std::generate(voxels.begin(), voxels.end(), [&] { return static_cast<short>(1 + random() % 30000); });
    auto const image = makeImage({1000, 300, 3, 1, 1}, voxels);
    float const expected = quantify<RoundingSum, TypeParam>(*image).sum;
    for (std::size_t const threads : {1U, 2U, 3U, 8U}) {
        tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
        EXPECT_EQ((quantify<RoundingSum, TypeParam>(*image).sum), expected) << threads;
    }
}

TYPED_TEST(ImageToQuantificationFilters, stopAtTheFirstFailure)
{
    for (auto const fault : {TestImage::Fault::returnsFalse, TestImage::Fault::throws}) {
        TestImage input;
        fill(input, {8, 4, 2, 1, 1}, std::vector<short>(64));
        input.failAt(3, fault);
        ImageToQuantificationFilter<short, Scalar, Sequence, TypeParam> filter(nullptr);
        filter.setInput(fixedView<short, Scalar>(input));
        if (fault == TestImage::Fault::throws) {
            EXPECT_THROW(filter.run(), std::runtime_error);
        } else {
            EXPECT_THROW(filter.run(), UnexpectedError);
        }
    }
}

TYPED_TEST(ImageToQuantificationFilters, haveNoResultWhenCancelled)
{
    TestImage input;
    fill(input, {8, 4, 2, 3, 1}, std::vector<short>(192));
    auto const algorithm = TestAlgorithm::New();
    input.beforeRowOperation = [&] { algorithm->cancelExecution(); };
    int const operations = input.numOfRowOperations();
    algorithm->work = [&](TestAlgorithm& running) {
        ImageToQuantificationFilter<short, Scalar, Sequence, TypeParam> filter(&running);
        filter.setInput(fixedView<short, Scalar>(input));
        EXPECT_FALSE(filter.run());
    };
    algorithm->run();
    EXPECT_LE(input.numOfRowOperations() - operations, 8); // no more than the first time
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/Miscellaneous/Decimate2D.h>

#include <gmock/gmock.h>

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <limits>
#include <random>
#include <thread>

#include "Miscellaneous/private/DecimateBody2D.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/Refusal.h"
#include "testing/RuleImages.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using miscellaneous::Decimate2D;
using miscellaneous::DecimationOp;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

void run(ImageModel const& input, ImageModel& output, int operatorType)
{
    auto const algorithm = Decimate2D::New();
    algorithm->input = &input;
    algorithm->operatorType = operatorType;
    algorithm->output = &output;
    algorithm->run();
}

template <class T>
std::vector<T> decimated(Sizes const& sizes, std::vector<T> const& voxels, int operatorType)
{
    auto const input = makeImage(sizes, voxels);
    memory::InMemoryImage output;
    run(*input, output, operatorType);
    return voxelsOf<T>(output);
}

// ---- contract

TEST(Decimate2DContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = Decimate2D::New();
    EXPECT_STREQ(algorithm->getInfo()->getName(), "Decimate2D");
    ASSERT_EQ(algorithm->getNumOfInputProperties(), 2U);
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 1U);
    EXPECT_EQ(algorithm->getInputProperty(0)->getName(), String("input"));
    EXPECT_EQ(algorithm->getInputProperty(1)->getName(), String("operatorType"));
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("output"));
    EXPECT_EQ(algorithm->operatorType, DecimationOp::MEAN);
    EXPECT_EQ(algorithm->operatorType.getEnumInfo().getEnumName(), String("DecimationOp"));
}

TEST(Decimate2DContract, readsOneVoxelFurtherToTheEndOfColumnsAndRows)
{
    auto const influence = Decimate2D::New()->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        bool const reads = direction == COLUMNS_END || direction == ROWS_END;
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)), reads ? 1U : 0U);
    }
}

class Decimate2DRefusal : public ::testing::Test {
protected:
    Decimate2DRefusal()
    {
        fill(input, {4, 4, 1, 1, 1}, std::vector<short>(16, 3));
        fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
        algorithm->input = &input;
        algorithm->output = &output;
    }

    void expectRefusal(std::string const& property, std::string const& message)
    {
        std::string const text = refusalOf(*algorithm);
        EXPECT_THAT(text, HasSubstr("#1 Error : " + message + " \n"));
        EXPECT_THAT(text, HasSubstr("#2 From Rule error in property " + property +
                                    " \n"
                                    "#3 From Decimate2D of Moxelcore library \n"));
        EXPECT_FALSE(algorithm->input.isLocked());
    }

    memory::InMemoryImage input;
    TestImage output;
    boost::shared_ptr<Decimate2D> algorithm = Decimate2D::New();
};

TEST_F(Decimate2DRefusal, ofNullImages)
{
    algorithm->output = nullptr;
    expectRefusal("output", "Parameter value cannot be null");
    algorithm->input = nullptr;
    expectRefusal("input", "Parameter value cannot be null");
}

TEST_F(Decimate2DRefusal, ofAComplexInput)
{
    input.allocate(MOX_COMPLEX_FLOAT32, 1, 1, 1, 1, 1);
    EXPECT_THAT(refusalOf(*algorithm), HasSubstr("Current voxel type is complex float32"));
}

TEST_F(Decimate2DRefusal, ofAnUnknownOperator)
{
    algorithm->operatorType = 4;
    EXPECT_THAT(refusalOf(*algorithm), HasSubstr("#1 Error : The enumeration value is not valid"));
    EXPECT_THAT(refusalOf(*algorithm), HasSubstr("Rule error in property operatorType"));
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
}

TEST_F(Decimate2DRefusal, ofAnOutputThatCannotBeResized)
{
    output.allocates = false;
    expectRefusal("output", "Image cannot be resized");
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
}

TEST_F(Decimate2DRefusal, ofTheInputAsOutput)
{
    algorithm->output = &input;
    expectRefusal("output", "Image cannot be resized");
    EXPECT_EQ(voxelsOf<short>(input), std::vector<short>(16, 3));
}

// ---- literal

TEST(Decimate2D, keepsTheVoxelsOfEvenColumnAndRowOfARamp)
{
    std::vector<unsigned char> ramp(16);
    std::iota(ramp.begin(), ramp.end(), static_cast<unsigned char>(0));
    EXPECT_THAT(decimated({4, 4, 1, 1, 1}, ramp, DecimationOp::FIRST), ElementsAre(0, 2, 8, 10));
}

TEST(Decimate2D, readsTheEdgeOfOddSizesTwice)
{
    std::vector<unsigned char> const voxels = {0, 1, 2, 3,  14, //
                                               4, 5, 6, 7,  8,  //
                                               1, 2, 9, 10, 11};
    Sizes const sizes{5, 3, 1, 1, 1};
    EXPECT_THAT(decimated(sizes, voxels, DecimationOp::MEAN), ElementsAre(2, 4, 11, 1, 9, 11));
    EXPECT_THAT(decimated(sizes, voxels, DecimationOp::MIN), ElementsAre(0, 2, 8, 1, 9, 11));
    EXPECT_THAT(decimated(sizes, voxels, DecimationOp::MAX), ElementsAre(5, 7, 14, 2, 10, 11));
    EXPECT_THAT(decimated(sizes, voxels, DecimationOp::FIRST), ElementsAre(0, 2, 14, 1, 9, 11));
}

TEST(Decimate2D, truncatesTheMeanOfIntegersTowardsZero)
{
    Sizes const window{2, 2, 1, 1, 1};
    EXPECT_THAT(decimated<short>(window, {-1, -1, -1, 0}, DecimationOp::MEAN), ElementsAre(0));
    EXPECT_THAT(decimated<short>(window, {-1, -2, -2, -2}, DecimationOp::MEAN), ElementsAre(-1));
    EXPECT_THAT(decimated<short>(window, {1, 2, 2, 2}, DecimationOp::MEAN), ElementsAre(1));
}

TEST(Decimate2D, doesNotOverflowAtTheLimitsOfIntegers)
{
    Sizes const window{2, 2, 1, 1, 1};
    auto const expectItself = [&]<class T>(T extreme) {
        EXPECT_THAT(decimated<T>(window, {extreme, extreme, extreme, extreme}, DecimationOp::MEAN),
                    ElementsAre(extreme));
    };
    for (auto const extreme : {std::numeric_limits<int64>::min(), std::numeric_limits<int64>::max()}) {
        expectItself(extreme);
    }
    expectItself(std::numeric_limits<uint64>::max());
    expectItself(std::numeric_limits<int>::min());
    expectItself(std::numeric_limits<signed char>::min());
}

TEST(Decimate2D, addsFloatingVoxelsByRowsInTheirType)
{
    float const large = 1e8F;
    EXPECT_THAT(decimated<float>({2, 2, 1, 1, 1}, {large, 3, -large, 3}, DecimationOp::MEAN),
                ElementsAre(((large + 3) + (-large + 3)) * 0.25F));
}

TEST(Decimate2D, replacesTheFirstVoxelByAStrictlySmallerOrLargerOneOnly)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    Sizes const window{2, 2, 1, 1, 1};
    for (int const operatorType : {DecimationOp::MIN, DecimationOp::MAX}) {
        EXPECT_TRUE(std::isnan(decimated<float>(window, {nan, 1, 2, 3}, operatorType)[0]));
        EXPECT_TRUE(std::signbit(decimated<float>(window, {-0.0F, 0.0F, 0.0F, 0.0F}, operatorType)[0]));
        EXPECT_FALSE(std::signbit(decimated<float>(window, {0.0F, -0.0F, -0.0F, -0.0F}, operatorType)[0]));
    }
    EXPECT_THAT(decimated<float>(window, {2, nan, 1, nan}, DecimationOp::MIN), ElementsAre(1));
}

/// Two rows, and one to be written beginning anywhere.
template <class T>
struct RowsOfOneLeaf {
    std::vector<T> upper, lower, out;
    std::size_t begin;

    T const* rowAt(std::size_t slot, access::Position const&, unsigned int) const
    {
        return (slot == 0 ? upper : lower).data();
    }
    T const* aheadAt(access::Position const&, unsigned int) const { return nullptr; }
    T const* ahead(int, int) const { return out.data() + begin; }

    template <class Fill>
    void writeRow(int, int, Fill&& fill)
    {
        fill(out.data() + begin);
    }
};

template <class T>
void expectTheSameStreamed(std::mt19937& random)
{
    using miscellaneous::DecimateBody2D, miscellaneous::tag_mean;
    for (unsigned int const count : {1U, 15U, 16U, 257U, 3000U}) {
        for (std::size_t const begin : {0U, 1U, 5U, 16U}) {
            RowsOfOneLeaf<T> cached{randomVoxels<T>(random, 2 * count), randomVoxels<T>(random, 2 * count),
                                    std::vector<T>(begin + count + 1, T(7)), begin};
            RowsOfOneLeaf<T> streamed = cached;
            access::Block3d const leaf({count, 0, 1}, {1, 0, 1}, {1, 0, 1}, 0, 0);
            DecimateBody2D<T>(tag_mean(), filters::Store::cached)(leaf, cached, cached);
            DecimateBody2D<T>(tag_mean(), filters::Store::streamed)(leaf, streamed, streamed);
            ASSERT_EQ(std::memcmp(streamed.out.data(), cached.out.data(), cached.out.size() * sizeof(T)), 0)
                << count << " from " << begin;
        }
    }
}

TEST(Decimate2D, isTheSameStreamed)
{
    std::mt19937 random(7);
    expectTheSameStreamed<unsigned char>(random);
    expectTheSameStreamed<short>(random);
    expectTheSameStreamed<float>(random);
    expectTheSameStreamed<double>(random);
}

// ---- typed

template <class T>
T reduced(T a, T b, T c, T d, int operatorType)
{
    T const later[] = {b, c, d};
    T result = a;
    switch (operatorType) {
    case DecimationOp::MEAN:
        if constexpr (std::is_floating_point_v<T>) {
            return ((a + b) + (c + d)) * T(0.25);
        } else {
            __extension__ typedef __int128 Wide;
            return static_cast<T>((static_cast<Wide>(a) + b + c + d) / 4);
        }
    case DecimationOp::MIN:
        for (T const voxel : later) {
            result = voxel < result ? voxel : result;
        }
        return result;
    case DecimationOp::MAX:
        for (T const voxel : later) {
            result = voxel > result ? voxel : result;
        }
        return result;
    default:
        return a;
    }
}

/// From the definition.
template <class T>
std::vector<T> reference(Sizes const& sizes, std::vector<T> const& voxels, int operatorType)
{
    std::vector<T> result;
    std::size_t const planes = std::size_t{sizes.plans} * sizes.timeSeries * sizes.spectralSeries;
    for (std::size_t plane = 0; plane < planes; ++plane) {
        auto const at = [&](unsigned int x, unsigned int y) {
            return voxels[(plane * sizes.rows + std::min(y, sizes.rows - 1)) * sizes.columns +
                          std::min(x, sizes.columns - 1)];
        };
        for (unsigned int y = 0; y < sizes.rows; y += 2) {
            for (unsigned int x = 0; x < sizes.columns; x += 2) {
                result.push_back(reduced(at(x, y), at(x + 1, y), at(x, y + 1), at(x + 1, y + 1), operatorType));
            }
        }
    }
    return result;
}

/// Equal, a NaN to any NaN.
template <class T>
bool areSame(std::vector<T> const& a, std::vector<T> const& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](T x, T y) { return x == y || (x != x && y != y); });
}

template <class T>
class Decimate2DOfType : public ::testing::Test {
};

using Types = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                               float, double>;
TYPED_TEST_SUITE(Decimate2DOfType, Types);

TYPED_TEST(Decimate2DOfType, equalsItsDefinition)
{
    std::mt19937 random(3);
    for (int round = 0; round < 40; ++round) {
        Sizes const sizes = round == 0 ? Sizes{2301, 45, 1, 1, 1} : randomSizes(random, {70, 50, 3, 2, 2});
        auto const voxels = randomVoxels<TypeParam>(random, sizes.numOfVoxels());
        int const operatorType = round % 4;
        TestImage input;
        TestImage output;
        input.givesPointers = round % 3 != 0;
        output.givesPointers = round % 5 != 0;
        fill(input, sizes, voxels);
        run(input, output, operatorType);
        ASSERT_EQ(Sizes::of(output), (Sizes{(sizes.columns + 1) / 2, (sizes.rows + 1) / 2, sizes.plans,
                                            sizes.timeSeries, sizes.spectralSeries}));
        ASSERT_EQ(output.getVoxelType(), voxelTypeOf<TypeParam>);
        ASSERT_TRUE(areSame(voxelsOf<TypeParam>(output), reference(sizes, voxels, operatorType))) << operatorType;
    }
}

// ---- run

TEST(Decimate2DRun, givesAnImageOfOneVoxelItself)
{
    EXPECT_THAT(decimated<short>({1, 1, 1, 1, 1}, {-7}, DecimationOp::MEAN), ElementsAre(-7));
    auto const image = makeImage({1, 1, 1, 1, 1}, std::vector<short>{-7});
    run(*image, *image, DecimationOp::MEAN);
    EXPECT_THAT(voxelsOf<short>(*image), ElementsAre(-7));
}

TEST(Decimate2DRun, takesEmptyImages)
{
    for (Sizes const& sizes : {Sizes{0, 3, 1, 1, 1}, Sizes{3, 0, 1, 1, 1}, Sizes{3, 3, 0, 1, 1}, Sizes()}) {
        auto const input = makeImage(sizes, std::vector<float>());
        memory::InMemoryImage output;
        run(*input, output, DecimationOp::MAX);
        EXPECT_EQ(Sizes::of(output), (Sizes{(sizes.columns + 1) / 2, (sizes.rows + 1) / 2, sizes.plans,
                                            sizes.timeSeries, sizes.spectralSeries}));
    }
}

TEST(Decimate2DRun, givesTheOutputTheCalibrationOfTheInputAndKeepsItsMemory)
{
    auto const input = makeImage({6, 4, 1, 1, 1}, std::vector<short>(24, 5));
    calibrate(*input);
    memory::InMemoryImage output;
    run(*input, output, DecimationOp::MEAN);
    expectSameCalibration(output, *input);
    void const* before = nullptr;
    void const* after = nullptr;
    ASSERT_TRUE(output.getConstRowPointerAt(3, before, 0, 0, 0, 0, 0));
    run(*input, output, DecimationOp::MEAN);
    ASSERT_TRUE(output.getConstRowPointerAt(3, after, 0, 0, 0, 0, 0));
    EXPECT_EQ(before, after);
}

TEST(Decimate2DRun, reportsProgressUpToTheEnd)
{
    auto const input = makeImage({64, 64, 2, 1, 1}, std::vector<unsigned char>(64 * 64 * 2));
    memory::InMemoryImage output;
    RecordingInteraction recording;
    auto const algorithm = Decimate2D::New();
    algorithm->input = input.get();
    algorithm->output = &output;
    algorithm->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
}

TEST(Decimate2DRun, stopsWhenCancelledAndCanBeRunAgain)
{
    TestImage input;
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
    fill(input, {4, 80, 1, 20, 1}, std::vector<unsigned char>(6400, 5));
    memory::InMemoryImage output;
    auto const algorithm = Decimate2D::New();
    algorithm->input = &input;
    algorithm->output = &output;
    RecordingInteraction recording;
    recording.cancelAtPoll = 2;
    algorithm->run(&recording);
    EXPECT_LT(recording.notified.back(), 100.0);
    input.beforeRowOperation = [] {};
    algorithm->run();
    EXPECT_THAT(voxelsOf<unsigned char>(output), ::testing::Each(5));
}

TEST(Decimate2DRun, failsWithARowOfItsInput)
{
    TestImage input;
    fill(input, {4, 4, 1, 1, 1}, std::vector<unsigned char>(16, 5));
    memory::InMemoryImage output;
    auto const algorithm = Decimate2D::New();
    algorithm->input = &input;
    algorithm->output = &output;
    input.failAt(3, TestImage::Fault::returnsFalse);
    EXPECT_THROW(algorithm->run(), UnexpectedError);
    algorithm->run();
    EXPECT_THAT(voxelsOf<unsigned char>(output), ::testing::Each(5));
}

} // namespace

} // namespace mox::testing

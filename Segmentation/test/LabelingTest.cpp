#include <Moxelcore/Segmentation/Labeling.h>

#include <gmock/gmock.h>

#include <Moxelcore/Core/AlgoInfo.h>

#include <tbb/global_control.h>

#include <limits>

#include "Core/private/access/SimdVec.h"
#include "Segmentation/private/LabelRowWriter.h"
#include "testing/Images.h"
#include "testing/Refusal.h"
#include "testing/TestImage.h"
#include "testing/references/labeling.h"

namespace mox::testing {

namespace {

using segmentation::Labeling;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

void run(ImageModel const& input, ImageModel& output)
{
    auto const algorithm = Labeling::New();
    algorithm->input = &input;
    algorithm->output = &output;
    algorithm->run();
}

template <class Out, class In>
std::vector<Out> labels(unsigned int columns, unsigned int rows, std::vector<In> const& voxels)
{
    auto const input = makeImage({columns, rows, 1, 1, 1}, voxels);
    memory::InMemoryImage output;
    output.allocate(voxelTypeOf<Out>, 1, 1, 1, 1, 1);
    run(*input, output);
    return voxelsOf<Out>(output);
}

/// A picture of rows of equal length, `#` for 1.
std::vector<unsigned char> picture(std::vector<std::string> const& rows)
{
    std::vector<unsigned char> voxels;
    for (std::string const& row : rows) {
        for (char const c : row) {
            voxels.push_back(c == '#' ? 1 : 0);
        }
    }
    return voxels;
}

std::vector<int> labelsOfPicture(std::vector<std::string> const& rows)
{
    auto const columns = static_cast<unsigned int>(rows[0].size());
    return labels<int>(columns, static_cast<unsigned int>(rows.size()), picture(rows));
}

template <class Out, class In>
std::vector<Out> reference(unsigned int columns, unsigned int rows, std::vector<In> const& voxels)
{
    auto const wanted = labelingReference(voxels, columns, rows);
    return std::vector<Out>(wanted.begin(), wanted.end());
}

void expectReference(unsigned int columns, unsigned int rows, std::vector<unsigned char> const& voxels)
{
    ASSERT_EQ(labels<int>(columns, rows, voxels), (reference<int>(columns, rows, voxels))) << columns << 'x' << rows;
}

// ---- contract

TEST(LabelingContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = Labeling::New();
    EXPECT_STREQ(algorithm->getInfo()->getName(), "Labeling");
    ASSERT_EQ(algorithm->getNumOfInputProperties(), 1U);
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 1U);
    EXPECT_EQ(algorithm->getInputProperty(0)->getName(), String("input"));
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("output"));
    EXPECT_EQ(algorithm->input.get(), nullptr);
    EXPECT_EQ(algorithm->output.get(), nullptr);
}

TEST(LabelingContract, dependsOnTheWholePlane)
{
    auto const influence = Labeling::New()->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)),
                  direction <= ROWS_END ? AlgoBorderInfluence::infinity : 0U);
    }
}

class LabelingRefusal : public ::testing::Test {
protected:
    LabelingRefusal()
    {
        fill(input, {2, 2, 1, 1, 1}, std::vector<short>{1, 2, 3, 4});
        fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
        algorithm->input = &input;
        algorithm->output = &output;
    }

    void expectRefusal(std::string const& property, std::string const& message)
    {
        std::string const text = refusalOf(*algorithm);
        EXPECT_THAT(text, HasSubstr("#1 Error : " + message));
        EXPECT_THAT(text, HasSubstr("#2 From Rule error in property " + property +
                                    " \n"
                                    "#3 From Labeling of Moxelcore library \n"));
        EXPECT_FALSE(algorithm->input.isLocked());
    }

    memory::InMemoryImage input;
    TestImage output;
    boost::shared_ptr<Labeling> algorithm = Labeling::New();
};

TEST_F(LabelingRefusal, ofNullImages)
{
    algorithm->output = nullptr;
    expectRefusal("output", "Parameter value cannot be null");
    algorithm->input = nullptr;
    expectRefusal("input", "Parameter value cannot be null");
}

TEST_F(LabelingRefusal, ofAComplexInput)
{
    input.allocate(MOX_COMPLEX_FLOAT32, 1, 1, 1, 1, 1);
    expectRefusal("input", "Voxel type must be one of the following types : ");
}

TEST_F(LabelingRefusal, ofAnInputThatIsNoPlane)
{
    input.allocate(MOX_UINT8, 2, 2, 3, 1, 1);
    expectRefusal("input", "component 2 must have a size of 1. Current size is 3");
    input.allocate(MOX_UINT8, 2, 2, 1, 2, 1);
    expectRefusal("input", "component 3 must have a size of 1. Current size is 2");
    input.allocate(MOX_UINT8, 2, 2, 1, 1, 4);
    expectRefusal("input", "component 4 must have a size of 1. Current size is 4");
}

TEST_F(LabelingRefusal, ofAFloatingOutput)
{
    fill(output, {1, 1, 1, 1, 1}, std::vector<float>{42});
    expectRefusal("output", "Voxel type must be one of the following types : ");
}

TEST_F(LabelingRefusal, ofAnOutputThatCannotBeResized)
{
    output.allocates = false;
    expectRefusal("output", "Image cannot be resized");
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
}

TEST_F(LabelingRefusal, ofAnOutputThatKeepsItsInterpretation)
{
    output.interprets = false;
    expectRefusal("output", "Image cannot be re-interpreted from value to label");
}

// ---- literal

TEST(Labeling, numbersComponentsInTheOrderOfTheirFirstVoxels)
{
    EXPECT_THAT(labelsOfPicture({"..#.#", //
                                 "#...#", //
                                 "#.#.."}),
                ElementsAre(0, 0, 1, 0, 2, //
                            3, 0, 0, 0, 2, //
                            3, 0, 4, 0, 0));
}

TEST(Labeling, connectsAcrossCorners)
{
    EXPECT_THAT(labelsOfPicture({"#..#", //
                                 ".##.", //
                                 "#..#"}),
                ElementsAre(1, 0, 0, 1, //
                            0, 1, 1, 0, //
                            1, 0, 0, 1));
}

TEST(Labeling, joinsArmsThatMeetFurtherDown)
{
    EXPECT_THAT(labelsOfPicture({"#.#.#.#", //
                                 "#.#.#.#", //
                                 "#.#.#.#", //
                                 "##.#.##", //
                                 "......."}),
                ElementsAre(1, 0, 1, 0, 1, 0, 1, //
                            1, 0, 1, 0, 1, 0, 1, //
                            1, 0, 1, 0, 1, 0, 1, //
                            1, 1, 0, 1, 0, 1, 1, //
                            0, 0, 0, 0, 0, 0, 0));
}

// The second component begins further left, but in the second row of the strip.
TEST(Labeling, putsTheUpperRowBeforeWhatLiesFurtherLeftBelow)
{
    EXPECT_THAT(labelsOfPicture({"...#", //
                                 "#..."}),
                ElementsAre(0, 0, 0, 1, //
                            2, 0, 0, 0));
}

TEST(Labeling, givesZeroToAnImageOfZeros)
{
    EXPECT_EQ(labels<short>(100, 70, std::vector<double>(7000, -0.0)), std::vector<short>(7000, 0));
}

TEST(Labeling, takesWhatIsNotZero)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float const denormal = std::numeric_limits<float>::denorm_min();
    EXPECT_THAT((labels<int>(9, 1, std::vector<float>{nan, 0, -0.0F, denormal, 0, -1, 0, 0.5F, 0})),
                ElementsAre(1, 0, 0, 2, 0, 3, 0, 4, 0));
    EXPECT_THAT((labels<int>(3, 1, std::vector<uint64>{uint64{1} << 63U, 0, uint64{1} << 32U})), ElementsAre(1, 0, 2));
}

TEST(Labeling, takesEmptyImages)
{
    for (Sizes const& sizes : {Sizes{0, 3, 1, 1, 1}, Sizes{3, 0, 1, 1, 1}, Sizes{0, 0, 1, 1, 1}}) {
        auto const input = makeImage(sizes, std::vector<float>());
        memory::InMemoryImage output;
        run(*input, output);
        EXPECT_EQ(Sizes::of(output), sizes);
    }
}

// ---- against the definition

std::vector<unsigned char> noise(std::mt19937& random, std::size_t count, double density)
{
    std::bernoulli_distribution isSet(density);
    std::vector<unsigned char> voxels(count);
    for (auto& voxel : voxels) {
        voxel = isSet(random) ? static_cast<unsigned char>(1 + random() % 255) : 0;
    }
    return voxels;
}

TEST(Labeling, equalsItsDefinitionOnNoise)
{
    std::mt19937 random(3);
    double const densities[] = {0.02, 0.1, 0.25, 0.4, 0.5, 0.6, 0.75, 0.9, 0.99};
    for (int round = 0; round < 300; ++round) {
        unsigned int const columns = 1 + static_cast<unsigned int>(random() % 200);
        unsigned int const rows = 1 + static_cast<unsigned int>(random() % (round % 10 == 0 ? 300 : 20));
        expectReference(columns, rows, noise(random, std::size_t{columns} * rows, densities[round % 9]));
    }
}

TEST(Labeling, equalsItsDefinitionOnEverySmallImage)
{
    for (unsigned int bits = 0; bits < 1U << 12U; ++bits) {
        std::vector<unsigned char> voxels(12);
        for (unsigned int i = 0; i < 12; ++i) {
            voxels[i] = bits >> i & 1U;
        }
        expectReference(4, 3, voxels);
        expectReference(3, 4, voxels);
    }
}

// Around the places where words and bands of rows meet.
TEST(Labeling, equalsItsDefinitionOnEverySizeAroundItsBlocks)
{
    std::mt19937 random(4);
    for (unsigned int const columns : {1U, 2U, 63U, 64U, 65U, 127U, 128U, 129U}) {
        for (unsigned int const rows : {1U, 2U, 3U, 63U, 64U, 65U, 66U, 127U, 128U, 129U, 130U, 131U}) {
            expectReference(columns, rows, noise(random, std::size_t{columns} * rows, 0.45));
        }
    }
}

TEST(Labeling, joinsAcrossEverySeamByASingleDiagonal)
{
    unsigned int const columns = 70;
    unsigned int const rows = 200;
    for (unsigned int y = 0; y + 1 < rows; ++y) {
        unsigned int const x = 60 + y % 8;
        for (unsigned int const below : {x - 1, x + 1}) {
            std::vector<unsigned char> voxels(std::size_t{columns} * rows);
            voxels[std::size_t{y} * columns + x] = 1;
            voxels[std::size_t{y + 1} * columns + below] = 1;
            auto const result = labels<int>(columns, rows, voxels);
            ASSERT_EQ(*std::max_element(result.begin(), result.end()), 1) << x << ' ' << y;
        }
    }
}

/// A path of width 1, with gaps of width 1, that winds inwards.
std::vector<unsigned char> spiral(unsigned int size)
{
    std::vector<unsigned char> voxels(std::size_t{size} * size);
    auto const at = [&](int x, int y) -> unsigned char& {
        return voxels[static_cast<std::size_t>(y) * size + static_cast<std::size_t>(x)];
    };
    int x = 0;
    int y = 0;
    int dx = 1;
    int dy = 0;
    auto const isOpen = [&](int px, int py) {
        int const limit = static_cast<int>(size);
        return px >= 0 && py >= 0 && px < limit && py < limit && at(px, py) == 0;
    };
    at(0, 0) = 1;
    for (int turns = 0; turns < 2;) {
        bool const isFree =
            isOpen(x + dx, y + dy) && (isOpen(x + 2 * dx, y + 2 * dy) || x + 2 * dx < 0 || y + 2 * dy < 0 ||
                                       x + 2 * dx >= static_cast<int>(size) || y + 2 * dy >= static_cast<int>(size));
        if (isFree) {
            x += dx;
            y += dy;
            at(x, y) = 1;
            turns = 0;
        } else {
            dx = std::exchange(dy, dx);
            dx = -dx;
            ++turns;
        }
    }
    return voxels;
}

TEST(Labeling, equalsItsDefinitionOnSpirals)
{
    for (unsigned int const size : {5U, 64U, 131U, 260U}) {
        auto const voxels = spiral(size);
        ASSERT_GT(std::count(voxels.begin(), voxels.end(), 1), size * size / 3);
        expectReference(size, size, voxels);
    }
}

TEST(Labeling, equalsItsDefinitionOnCombs)
{
    for (unsigned int const period : {2U, 3U, 7U}) {
        for (bool const opensUpwards : {false, true}) {
            unsigned int const columns = 150;
            unsigned int const rows = 140;
            std::vector<unsigned char> voxels(std::size_t{columns} * rows);
            for (unsigned int y = 0; y < rows; ++y) {
                for (unsigned int x = 0; x < columns; ++x) {
                    bool const isBack = y == (opensUpwards ? rows - 1 : 0);
                    voxels[std::size_t{y} * columns + x] = isBack || x % period == 0 ? 1 : 0;
                }
            }
            expectReference(columns, rows, voxels);
        }
    }
}

TEST(Labeling, equalsItsDefinitionOnCheckersAndDots)
{
    unsigned int const columns = 131;
    unsigned int const rows = 133;
    for (unsigned int const step : {1U, 2U}) {
        std::vector<unsigned char> voxels;
        for (unsigned int y = 0; y < rows; ++y) {
            for (unsigned int x = 0; x < columns; ++x) {
                voxels.push_back(step == 1 ? (x + y) % 2 : (x % 2 == 0 && y % 2 == 0));
            }
        }
        expectReference(columns, rows, voxels);
    }
}

TEST(Labeling, givesTheSameResultForAnyNumberOfThreads)
{
    std::mt19937 random(5);
    unsigned int const columns = 300;
    unsigned int const rows = 1000;
    auto const voxels = noise(random, std::size_t{columns} * rows, 0.45);
    auto const wanted = reference<int>(columns, rows, voxels);
    for (std::size_t threads = 1; threads <= 8; ++threads) {
        tbb::global_control const control(tbb::global_control::max_allowed_parallelism, threads);
        for (int round = 0; round < 5; ++round) {
            ASSERT_EQ(labels<int>(columns, rows, voxels), wanted);
        }
    }
}

// ---- typed

template <class T>
class LabelingOfType : public ::testing::Test {
};

using InputTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                    float, double>;
TYPED_TEST_SUITE(LabelingOfType, InputTypes);

TYPED_TEST(LabelingOfType, equalsItsDefinition)
{
    std::mt19937 random(6);
    for (int round = 0; round < 30; ++round) {
        Sizes const sizes = randomSizes(random, {200, 90, 1, 1, 1});
        auto voxels = randomVoxels<TypeParam>(random, sizes.numOfVoxels());
        for (TypeParam& voxel : voxels) {
            voxel = random() % 2 == 0 ? TypeParam(0) : voxel;
        }
        TestImage input;
        TestImage output;
        input.givesPointers = round % 2 == 0;
        output.givesPointers = round % 3 == 0;
        fill(input, sizes, voxels);
        fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned short>{1});
        run(input, output);
        ASSERT_EQ(voxelsOf<unsigned short>(output), (reference<unsigned short>(sizes.columns, sizes.rows, voxels)));
    }
}

template <class T>
class LabelingInto : public ::testing::Test {
};

using OutputTypes =
    ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
TYPED_TEST_SUITE(LabelingInto, OutputTypes);

TYPED_TEST(LabelingInto, equalsItsDefinition)
{
    std::mt19937 random(7);
    for (unsigned int const columns : {1U, 31U, 64U, 100U, 131U, 190U}) {
        unsigned int const rows = 70;
        auto const voxels = noise(random, std::size_t{columns} * rows, 0.6);
        ASSERT_EQ((labels<TypeParam>(columns, rows, voxels)), (reference<TypeParam>(columns, rows, voxels)));
    }
}

TYPED_TEST(LabelingInto, worksInPlace)
{
    std::mt19937 random(8);
    Sizes const sizes{190, 150, 1, 1, 1};
    auto const bits = noise(random, sizes.numOfVoxels(), 0.6);
    std::vector<TypeParam> const voxels(bits.begin(), bits.end());
    auto const image = makeImage(sizes, voxels);
    run(*image, *image);
    EXPECT_EQ(voxelsOf<TypeParam>(*image), (reference<TypeParam>(sizes.columns, sizes.rows, voxels)));
}

// Rows of any width, and those of large images, which are written past the caches.
TYPED_TEST(LabelingInto, writesEveryVoxelOfAStrip)
{
    using namespace segmentation;
    std::mt19937 random(9);
    for (int round = 0; round < 200; ++round) {
        unsigned int const columns = 1 + static_cast<unsigned int>(random() % 300);
        std::size_t const words = numOfWords(columns);
        std::array<std::vector<Word>, 2> bits;
        auto const voxels = noise(random, 2 * std::size_t{columns}, round % 3 == 0 ? 0.95 : 0.5);
        for (unsigned int r = 0; r < 2; ++r) {
            bits[r].resize(words);
            packRow(voxels.data() + r * columns, columns, bits[r].data());
        }
        bool const hasLower = round % 4 != 0;
        RowStrip strip;
        strip.build(bits[0].data(), hasLower ? bits[1].data() : nullptr, words);
        std::vector<TypeParam> labels(strip.numOfRuns());
        for (auto& label : labels) {
            label = static_cast<TypeParam>(random());
        }

        std::size_t const stride = words * wordBits; // so that both rows are aligned as streams ask for
        std::vector<TypeParam, SimdVec::AlignedAllocator<TypeParam, 16>> rows(2 * stride, TypeParam(99));
        LabelRowWriter<TypeParam> writer;
        unsigned int const numOfRuns = writer.write(
            words, columns, {bits[0].data(), hasLower ? bits[1].data() : nullptr},
            {rows.data(), hasLower ? rows.data() + stride : nullptr},
            round % 2 == 0 ? Stores::streaming : Stores::ordinary, [&](unsigned int run) { return labels[run]; });
        EXPECT_EQ(numOfRuns, strip.numOfRuns());
        for (unsigned int r = 0; r < 2; ++r) {
            for (unsigned int x = 0; x < stride; ++x) {
                bool const isWritten = x < columns && (r == 0 || hasLower);
                bool const isSet = isWritten && voxels[r * columns + x] != 0;
                TypeParam const wanted = isSet ? labels[strip.rank(x / wordBits, x % wordBits)] : TypeParam(0);
                ASSERT_EQ(rows[r * stride + x], isWritten ? wanted : TypeParam(99));
            }
        }
    }
}

TEST(Labeling, equalsItsDefinitionOnALargeImage)
{
    std::mt19937 random(10);
    unsigned int const columns = 4096 + 40;
    unsigned int const rows = 600; // beyond the caches in 32 bits
    expectReference(columns, rows, noise(random, std::size_t{columns} * rows, 0.5));
}

} // namespace

} // namespace mox::testing

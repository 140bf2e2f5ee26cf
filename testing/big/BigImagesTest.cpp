#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

// Images of more than 4 GiB, whose offsets do not fit into 32 bits. What a voxel is follows from its place, so that the
// results can be told without a second image. They take 9 GiB of memory.

namespace mox::testing {
namespace {

using memory::InMemoryImage;

constexpr unsigned int columns = 2048;
constexpr unsigned int rows = 2048;
constexpr unsigned int plans = 1060;
static_assert(std::uint64_t{columns} * rows * plans > (std::uint64_t{1} << 32U));

/// Values that repeat with no power of two, so that voxels 4 GiB apart differ.
unsigned char valueAt(unsigned int x, unsigned int y, unsigned int z)
{
    std::uint64_t const place = (std::uint64_t{z} * rows + y) * columns + x;
    return static_cast<unsigned char>((place * 0x9E3779B97F4A7C15U) >> 56U);
}

template <class Value>
void fill(InMemoryImage& image, Value const& value)
{
    std::vector<unsigned char> row(static_cast<unsigned int>(image.getSize(COLUMNS)));
    for (unsigned int z = 0; z < image.getSize(PLANS); ++z) {
        for (unsigned int y = 0; y < image.getSize(ROWS); ++y) {
            for (unsigned int x = 0; x < row.size(); ++x) {
                row[x] = value(x, y, z);
            }
            ASSERT_TRUE(image.writeRowAt(static_cast<unsigned int>(row.size()), row.data(), 0, y, z, 0, 0));
        }
    }
}

/// How many voxels are not as told, in every n-th row of each plan and all of the last.
template <class Value>
std::uint64_t numOfWrong(InMemoryImage const& image, unsigned int step, Value const& value)
{
    std::uint64_t wrong = 0;
    std::vector<unsigned char> row(static_cast<unsigned int>(image.getSize(COLUMNS)));
    unsigned int const last = image.getSize(PLANS) - 1;
    for (unsigned int z = 0; z <= last; ++z) {
        for (unsigned int y = z % step; y < image.getSize(ROWS); y += z == last ? 1 : step) {
            image.readRowAt(static_cast<unsigned int>(row.size()), row.data(), 0, y, z, 0, 0);
            for (unsigned int x = 0; x < row.size(); ++x) {
                wrong += row[x] != value(x, y, z);
            }
        }
    }
    return wrong;
}

class BigImages : public ::testing::Test {
protected:
    void SetUp() override { input.allocate(MOX_UINT8, columns, rows, plans, 1, 1); }

    InMemoryImage input;
    InMemoryImage output;
};

TEST_F(BigImages, areThresholded)
{
    fill(input, valueAt);
    auto const threshold = segmentation::Threshold::New();
    threshold->input = &input;
    threshold->lowLevel = 100;
    threshold->highLevel = 200;
    threshold->output = &output;
    threshold->run();
    EXPECT_EQ(numOfWrong(output, 1,
                         [](unsigned int x, unsigned int y, unsigned int z) {
                             unsigned char const value = valueAt(x, y, z);
                             return static_cast<unsigned char>(value >= 100 && value <= 200);
                         }),
              0U);
}

TEST_F(BigImages, areEroded)
{
    fill(input, valueAt);
    auto const erosion = morphology::Erosion3D::New();
    erosion->input = &input;
    erosion->nbIter = 1;
    erosion->output = &output;
    erosion->run();
    auto const smallestAround = [](unsigned int x, unsigned int y, unsigned int z) {
        unsigned char smallest = 255;
        for (unsigned int k = z == 0 ? 0 : z - 1; k <= std::min(z + 1, plans - 1); ++k) {
            for (unsigned int j = y == 0 ? 0 : y - 1; j <= std::min(y + 1, rows - 1); ++j) {
                for (unsigned int i = x == 0 ? 0 : x - 1; i <= std::min(x + 1, columns - 1); ++i) {
                    smallest = std::min(smallest, valueAt(i, j, k));
                }
            }
        }
        return smallest;
    };
    EXPECT_EQ(numOfWrong(output, 64, smallestAround), 0U);
}

/// A plane of squares with a gap between them, each of which is a component.
TEST(BigPlanes, areLabeled)
{
    constexpr unsigned int side = 66000;
    constexpr unsigned int period = 5000;
    static_assert(std::uint64_t{side} * side > (std::uint64_t{1} << 32U));
    auto const isSet = [](unsigned int x, unsigned int y) { return x % period < 4000 && y % period < 3000; };
    InMemoryImage input;
    InMemoryImage labels;
    input.allocate(MOX_UINT8, side, side, 1, 1, 1);
    labels.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    fill(input, [&](unsigned int x, unsigned int y, unsigned int) { return static_cast<unsigned char>(isSet(x, y)); });
    input.setInterpretation(INTERPRETATION_BINARY);
    auto const labeling = segmentation::Labeling::New();
    labeling->input = &input;
    labeling->output = &labels;
    labeling->run();
    constexpr unsigned int perRow = (side + period - 1) / period;
    EXPECT_EQ(numOfWrong(labels, 1,
                         [&](unsigned int x, unsigned int y, unsigned int) {
                             unsigned int const label = y / period * perRow + x / period + 1;
                             return static_cast<unsigned char>(isSet(x, y) ? label : 0);
                         }),
              0U);
}

} // namespace
} // namespace mox::testing

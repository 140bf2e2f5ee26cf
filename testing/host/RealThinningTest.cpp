#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

// The thinning that the page of `ApplyMorphologicalLut2D` tells of, on a real silhouette.

namespace moxel::testing {
namespace {

using namespace mox;
using Voxels = std::vector<std::uint8_t>;

constexpr char const* kernels[] = {"000.1.111", ".00110.1.", "0.10110.1", ".1.110.00",
                                   "111.1.000", ".1.01100.", "1.01101.0", "00.011.1."};

/// One round of the eight tables, in place.
void thinOnce(ImageModel& image)
{
    auto const apply = morphology::ApplyMorphologicalLut2D::New();
    apply->input = &image;
    apply->output = &image;
    apply->matchingFlag = morphology::MatchingActionTypes::SET_ZERO;
    apply->noMatchingFlag = morphology::MatchingActionTypes::SET_UNCHANGE;
    for (char const* text : kernels) {
        Vector<unsigned char> kernel;
        for (char const* voxel = text; *voxel != '\0'; ++voxel) {
            kernel.push_back(*voxel == '0' ? 0 : *voxel == '1' ? 1 : 2);
        }
        morphology::MorphologicalLut2D lut;
        lut.addKernel(kernel);
        apply->morphologicalLut = &lut;
        apply->run();
    }
}

int numOfComponents(ImageModel const& image)
{
    memory::InMemoryImage labels;
    labels.allocate(MOX_INT32, 1, 1, 1, 1, 1);
    auto const labeling = segmentation::Labeling::New();
    labeling->input = &image;
    labeling->output = &labels;
    labeling->run();
    auto const voxels = voxelsOf<std::int32_t>(labels);
    return *std::max_element(voxels.begin(), voxels.end());
}

/// How many windows of 2 x 2 voxels, of all that touch the image, show each pattern.
std::array<int, 16> countsOfWindows(Voxels const& voxels, unsigned int columns, unsigned int rows)
{
    auto const at = [&](unsigned int x, unsigned int y) { // of an image framed by zeros
        bool const isInside = x > 0 && y > 0 && x <= columns && y <= rows;
        return isInside && voxels[std::size_t{y - 1} * columns + x - 1] != 0 ? 1U : 0U;
    };
    std::array<int, 16> counts{};
    for (unsigned int y = 0; y <= rows; ++y) {
        for (unsigned int x = 0; x <= columns; ++x) {
            ++counts[at(x, y) | at(x + 1, y) << 1U | at(x, y + 1) << 2U | at(x + 1, y + 1) << 3U];
        }
    }
    return counts;
}

/// 8-connected components less their holes, by Gray's counts of windows: (Q1 - Q3 - 2 Qd) / 4.
int eulerNumber(std::array<int, 16> const& counts)
{
    int const one = counts[1] + counts[2] + counts[4] + counts[8];
    int const three = counts[7] + counts[11] + counts[13] + counts[14];
    int const diagonal = counts[6] + counts[9];
    return (one - three - 2 * diagonal) / 4;
}

TEST(RealThinning, LeavesLinesOfTheSameTopology)
{
    auto const path = realImages() / "horse_binary.png";
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "there is no real image " << path;
    }
    auto const picture = readImage(path, {});
    memory::InMemoryImage image;
    auto const threshold = segmentation::Threshold::New();
    threshold->input = picture.get();
    threshold->output = &image;
    threshold->lowLevel = 128; // the horse is bright
    threshold->highLevel = 255;
    threshold->run();
    unsigned int const columns = image.getSize(COLUMNS);
    unsigned int const rows = image.getSize(ROWS);
    Voxels const horse = voxelsOf<std::uint8_t>(image);
    auto const horseWindows = countsOfWindows(horse, columns, rows);
    ASSERT_GT(horseWindows[15], 1000);

    int rounds = 0;
    for (Voxels before; before != voxelsOf<std::uint8_t>(image);) {
        ASSERT_LT(++rounds, 50);
        before = voxelsOf<std::uint8_t>(image);
        thinOnce(image);
    }
    Voxels const lines = voxelsOf<std::uint8_t>(image);
    auto const windows = countsOfWindows(lines, columns, rows);
    EXPECT_EQ(windows[15], 0) << "somewhere a line is two voxels wide";
    EXPECT_EQ(eulerNumber(windows), eulerNumber(horseWindows));
    memory::InMemoryImage original;
    threshold->output = &original;
    threshold->run();
    EXPECT_EQ(numOfComponents(image), numOfComponents(original));
    EXPECT_TRUE(std::equal(lines.begin(), lines.end(), horse.begin(), [](auto a, auto b) { return a <= b; }));
    auto const numOfVoxels = std::count_if(lines.begin(), lines.end(), [](auto v) { return v != 0; });
    EXPECT_GT(numOfVoxels, static_cast<std::ptrdiff_t>(rows) / 2) << "a horse has legs and a back";
}

} // namespace
} // namespace moxel::testing

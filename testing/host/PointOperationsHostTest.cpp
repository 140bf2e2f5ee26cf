#include <gtest/gtest.h>

#include <cstdint>

#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"
#include "testing/host/moxel.h"

// The point operations as a user runs them, on files.

namespace moxel::testing {
namespace {

struct HostRun {
    char const* algorithm;
    std::vector<std::string> inputs;
    std::vector<std::string> values;
    std::vector<std::int16_t> expected;
};

HostRun const runs[] = {
    {"ArithmeticImageProcessing", {"input1", "input2"}, {"arithmeticOperator=ARITHMETIC_ADD"}, {-2, 0, 6, 510}},
    {"ArithmeticValueProcessing", {"input"}, {"inputValue=2", "arithmeticOperator=3"}, {0, 0, 1, 127}},
    {"LogicalImageProcessing", {"input1", "input2"}, {"logicalOperator=LOGICAL_XOR"}, {0, 0, 0, 0}},
    {"LogicalValueProcessing", {"input"}, {"inputValue=6", "logicalOperator=LOGICAL_SUB"}, {-7, 0, 1, 249}},
    {"LogicalNotProcessing", {"input"}, {}, {0, -1, -4, -256}},
    {"BitShift", {"input"}, {}, {-2, 0, 6, 510}},
    {"InvertImage", {"input"}, {}, {0, -1, -4, -256}},
    {"MaskImageProcessing", {"input", "inputBinary"}, {}, {-1, 0, 3, 255}},
    {"Anamorphosis",
     {"input"},
     {"inputRange=0:3", "lut=10,11,12,13.9", "lowIntensity=-5", "highIntensity=99"},
     {-5, 10, 13, 99}},
    {"GradientMagnitude3D",
     {"input1", "input2", "input3"},
     {"outputMode=GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS"},
     {1, 0, 3, 255}},
};

class PointOperationsOnFiles : public ::testing::TestWithParam<HostRun> {};

TEST_P(PointOperationsOnFiles, GiveTheirResults)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::int16_t>(image, {4, 1, 1, 1, 1}, {-1, 0, 3, 255});
    writeImage(image, folder / "in.tif", ImageFormat::tiff, Compression::none);
    std::vector<std::string> words = {"run", GetParam().algorithm, "output=" + (folder / "out.tif").string()};
    for (std::string const& input : GetParam().inputs) {
        words.push_back(input + "=" + (folder / "in.tif").string());
    }
    words.insert(words.end(), GetParam().values.begin(), GetParam().values.end());
    moxel(words);
    auto const output = readImage(folder / "out.tif", {});
    ASSERT_EQ(output->getVoxelType(), mox::MOX_INT16);
    EXPECT_EQ(voxelsOf<std::int16_t>(*output), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(OfEveryClass, PointOperationsOnFiles, ::testing::ValuesIn(runs),
                         [](auto const& run) { return run.param.algorithm; });

TEST(IntensityExtremaOnFiles, ArePrinted)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::int16_t>(image, {4, 1, 1, 1, 1}, {-1, 0, 3, 4});
    writeImage(image, folder / "in.tif", ImageFormat::tiff, Compression::none);
    EXPECT_EQ(moxel({"run", "IntensityExtrema", "input=" + (folder / "in.tif").string()}),
              "outputMinimum = -1\noutputMaximum = 4\noutputMean = 1.5\n");
}

} // namespace
} // namespace moxel::testing

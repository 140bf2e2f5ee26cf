#include <gmock/gmock.h>

#include <limits>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

void calibrate(mox::ImageModel& image)
{
    for (int i = 0; i < 5; ++i) {
        image.setCalibrationStep(static_cast<mox::ImageDimension>(i), 1.0 / (3 + i));
        image.setCalibrationOrigin(static_cast<mox::ImageDimension>(i), -1.0 / (7 + i));
    }
    image.setUnit("µm");
    image.setDescription("a description\nof two lines");
    image.setInterpretation(mox::INTERPRETATION_LABEL);
}

void expectSameCalibration(mox::ImageModel const& a, mox::ImageModel const& b)
{
    for (int i = 0; i < 5; ++i) {
        auto const dimension = static_cast<mox::ImageDimension>(i);
        EXPECT_EQ(a.getCalibrationStep(dimension), b.getCalibrationStep(dimension)) << i;
        EXPECT_EQ(a.getCalibrationOrigin(dimension), b.getCalibrationOrigin(dimension)) << i;
    }
    EXPECT_STREQ(a.getUnit().c_str(), b.getUnit().c_str());
    EXPECT_STREQ(a.getDescription().c_str(), b.getDescription().c_str());
    EXPECT_EQ(a.getInterpretation(), b.getInterpretation());
}

template <class T>
class TiffWriterOf : public ::testing::Test {
};

using RealTypes = ::testing::Types<std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, std::int8_t, std::int16_t,
                                   std::int32_t, std::int64_t, float, double>;
TYPED_TEST_SUITE(TiffWriterOf, RealTypes);

TYPED_TEST(TiffWriterOf, ComesBackInAllDimensions)
{
    Folder const folder;
    Sizes const sizes = {7, 5, 4, 3, 2};
    auto voxels = randomVoxels<TypeParam>(sizes);
    voxels[0] = std::numeric_limits<TypeParam>::lowest();
    voxels[1] = std::numeric_limits<TypeParam>::max();
    mox::memory::InMemoryImage image;
    fill(image, sizes, voxels);
    calibrate(image);
    for (auto const compression : {Compression::none, Compression::deflate}) {
        writeTiff(image, folder / "a.tif", compression);
        auto const back = readImage(folder / "a.tif", {});
        EXPECT_EQ(back->getVoxelType(), image.getVoxelType());
        EXPECT_EQ(sizesOf(*back), sizes);
        EXPECT_EQ(voxelsOf<TypeParam>(*back), voxels);
        expectSameCalibration(*back, image);
    }
}

TEST(TiffWriter, WritesTheResolutionForOthers)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {1, 1, 1, 1, 1}, {1});
    image.setCalibrationStep(mox::COLUMNS, 0.25);
    image.setCalibrationStep(mox::ROWS, 0.5);
    image.setUnit("cm");
    writeTiff(image, folder / "a.tif", Compression::none);
    TIFF* const tiff = TIFFOpen((folder / "a.tif").c_str(), "r");
    float columns = 0;
    float rows = 0;
    std::uint16_t unit = 0;
    TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &columns);
    TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &rows);
    TIFFGetField(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
    TIFFClose(tiff);
    EXPECT_EQ(columns, 4);
    EXPECT_EQ(rows, 2);
    EXPECT_EQ(unit, RESUNIT_CENTIMETER);
}

TEST(TiffWriter, KeepsUncompressedVoxelsInOnePiece)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    Sizes const sizes = {7, 5, 4, 3, 2};
    auto const voxels = randomVoxels<std::uint16_t>(sizes);
    fill(image, sizes, voxels);
    writeTiff(image, folder / "a.tif", Compression::none);
    TIFF* const tiff = TIFFOpen((folder / "a.tif").c_str(), "r");
    std::uint64_t const begin = TIFFGetStrileOffset(tiff, 0);
    std::uint64_t page = 0;
    do {
        EXPECT_EQ(TIFFNumberOfStrips(tiff), 1U);
        EXPECT_EQ(TIFFGetStrileByteCount(tiff, 0), 70U);
        EXPECT_EQ(TIFFGetStrileOffset(tiff, 0), begin + 70 * page);
        ++page;
    } while (TIFFReadDirectory(tiff) == 1);
    TIFFClose(tiff);
    EXPECT_EQ(page, 24U);
}

TEST(TiffWriter, RefusesComplexImages)
{
    mox::memory::InMemoryImage image;
    image.allocate(mox::MOX_COMPLEX_FLOAT32, 1, 1, 1, 1, 1);
    EXPECT_THROW(requireTiffForm(image), FileError);
}

TEST(TiffWriter, OutgrowsTheClassicFormBeforeItIsFull)
{
    EXPECT_FALSE(needsBigTiff(0, 1));
    EXPECT_FALSE(needsBigTiff(3'800'000'000, 1000));
    EXPECT_TRUE(needsBigTiff(3'900'000'001, 1));
    EXPECT_TRUE(needsBigTiff(3'899'999'999, 2));
    EXPECT_TRUE(needsBigTiff(std::uint64_t{1} << 33U, 1));
    EXPECT_TRUE(needsBigTiff(10'000'000, 10'000'000));
}

} // namespace
} // namespace moxel::testing

#include <gmock/gmock.h>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/PngWriter.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr TiffVoxelType uint8Form = {mox::MOX_UINT8, 8, SAMPLEFORMAT_UINT};
constexpr TiffVoxelType uint16Form = {mox::MOX_UINT16, 16, SAMPLEFORMAT_UINT};

std::unique_ptr<mox::memory::InMemoryImage> read(fs::path const& path,
                                                 std::optional<mox::ImageDimension> pages = std::nullopt)
{
    return readImage(path, pages);
}

template <class T>
class TiffReaderOf : public ::testing::Test {
};

using RealTypes = ::testing::Types<std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, std::int8_t, std::int16_t,
                                   std::int32_t, std::int64_t, float, double>;
TYPED_TEST_SUITE(TiffReaderOf, RealTypes);

TYPED_TEST(TiffReaderOf, ComesFromTiles)
{
    Folder const folder;
    Sizes const sizes = {37, 21, 1, 1, 1};
    auto const voxels = randomVoxels<TypeParam>(sizes);
    mox::memory::InMemoryImage image;
    fill(image, sizes, voxels);
    TiffVoxelType form = uint8Form;
    for (TiffVoxelType const& known : tiffVoxelTypes) {
        form = known.voxelType == image.getVoxelType() ? known : form;
    }
    writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
        setTiffTags(tiff, 37, 21, form);
        TIFFUnsetField(tiff, TIFFTAG_ROWSPERSTRIP);
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
        std::vector<TypeParam> tile(16 * 16);
        for (unsigned int row = 0; row < 21; row += 16) {
            for (unsigned int column = 0; column < 37; column += 16) {
                for (unsigned int i = 0; i < 16 * 16; ++i) {
                    unsigned int const y = row + i / 16;
                    unsigned int const x = column + i % 16;
                    tile[i] = y < 21 && x < 37 ? voxels[y * 37 + x] : TypeParam(1);
                }
                TIFFWriteTile(tiff, tile.data(), column, row, 0, 0);
            }
        }
    });
    EXPECT_EQ(voxelsOf<TypeParam>(*read(folder / "a.tif")), voxels);
}

TYPED_TEST(TiffReaderOf, ComesFromBigEndianAndBigTiff)
{
    Folder const folder;
    Sizes const sizes = {9, 5, 1, 1, 1};
    auto const voxels = randomVoxels<TypeParam>(sizes);
    mox::memory::InMemoryImage image;
    fill(image, sizes, voxels);
    TiffVoxelType form = uint8Form;
    for (TiffVoxelType const& known : tiffVoxelTypes) {
        form = known.voxelType == image.getVoxelType() ? known : form;
    }
    for (char const* mode : {"wl", "wb", "wb8", "wl8"}) {
        writeTiffFile(folder / "a.tif", mode, [&](TIFF* tiff) {
            setTiffTags(tiff, 9, 5, form);
            for (unsigned int row = 0; row < 5; ++row) {
                std::vector<TypeParam> line(voxels.begin() + row * 9, voxels.begin() + row * 9 + 9);
                TIFFWriteScanline(tiff, line.data(), row, 0);
            }
        });
        EXPECT_EQ(voxelsOf<TypeParam>(*read(folder / "a.tif")), voxels) << mode;
    }
}

/// Writes one page of 2 x 2 pixels with three samples, once chunky and once in planes.
void writeColours(TIFF* tiff, int planes, std::uint8_t first)
{
    setTiffTags(tiff, 2, 2, uint8Form);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, planes);
    auto const value = [&](int row, int sample, int column) {
        return static_cast<std::uint8_t>(first + row * 2 + sample * 10 + column);
    };
    for (int row = 0; row < 2 && planes == PLANARCONFIG_CONTIG; ++row) {
        Bytes line = {value(row, 0, 0), value(row, 1, 0), value(row, 2, 0),
                      value(row, 0, 1), value(row, 1, 1), value(row, 2, 1)};
        TIFFWriteScanline(tiff, line.data(), static_cast<std::uint32_t>(row), 0);
    }
    for (int i = 0; i < 6 && planes == PLANARCONFIG_SEPARATE; ++i) {
        Bytes line = {value(i % 2, i / 2, 0), value(i % 2, i / 2, 1)};
        TIFFWriteScanline(tiff, line.data(), static_cast<std::uint32_t>(i % 2), static_cast<std::uint16_t>(i / 2));
    }
    TIFFWriteDirectory(tiff);
}

TEST(TiffReader, TakesSamplesForChannels)
{
    Folder const folder;
    for (int const planes : {PLANARCONFIG_CONTIG, PLANARCONFIG_SEPARATE}) {
        writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
            writeColours(tiff, planes, 0);
            writeColours(tiff, planes, 100);
        });
        auto const plans = read(folder / "a.tif");
        EXPECT_EQ(sizesOf(*plans), (Sizes{2, 2, 2, 1, 3}));
        EXPECT_THAT(voxelsOf<std::uint8_t>(*plans), ElementsAre(0, 1, 2, 3, 100, 101, 102, 103, 10, 11, 12, 13, 110,
                                                                111, 112, 113, 20, 21, 22, 23, 120, 121, 122, 123));
        auto const channels = read(folder / "a.tif", mox::SPECTRAL_SERIES);
        EXPECT_EQ(sizesOf(*channels), (Sizes{2, 2, 1, 1, 6}));
        EXPECT_THAT(voxelsOf<std::uint8_t>(*channels), ElementsAre(0, 1, 2, 3, 10, 11, 12, 13, 20, 21, 22, 23, 100, 101,
                                                                   102, 103, 110, 111, 112, 113, 120, 121, 122, 123));
    }
}

TEST(TiffReader, TakesColoursFromTiles)
{
    Folder const folder;
    writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
        setTiffTags(tiff, 17, 2, uint16Form);
        TIFFUnsetField(tiff, TIFFTAG_ROWSPERSTRIP);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 2);
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
        for (std::uint16_t tileNumber = 0; tileNumber < 2; ++tileNumber) {
            std::vector<std::uint16_t> tile(16 * 16 * 2);
            for (std::size_t i = 0; i < tile.size(); ++i) {
                tile[i] = static_cast<std::uint16_t>(1000 * tileNumber + i);
            }
            TIFFWriteTile(tiff, tile.data(), 16U * tileNumber, 0, 0, 0);
        }
    });
    auto const voxels = voxelsOf<std::uint16_t>(*read(folder / "a.tif"));
    ASSERT_EQ(voxels.size(), 17U * 2 * 2);
    EXPECT_EQ(voxels[15], 30);
    EXPECT_EQ(voxels[16], 1000);
    EXPECT_EQ(voxels[17], 32);        // the second row
    EXPECT_EQ(voxels[34 + 16], 1001); // the second channel
}

TEST(TiffReader, KeepsNumbersWhateverTheirColour)
{
    Folder const folder;
    for (int const photometric : {PHOTOMETRIC_MINISWHITE, PHOTOMETRIC_PALETTE}) {
        writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
            setTiffTags(tiff, 3, 1, uint8Form);
            TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, photometric);
            std::vector<std::uint16_t> colours(256, 7);
            if (photometric == PHOTOMETRIC_PALETTE) {
                TIFFSetField(tiff, TIFFTAG_COLORMAP, colours.data(), colours.data(), colours.data());
            }
            Bytes line = {0, 200, 255};
            TIFFWriteScanline(tiff, line.data(), 0, 0);
        });
        EXPECT_THAT(voxelsOf<std::uint8_t>(*read(folder / "a.tif")), ElementsAre(0, 200, 255));
    }
}

TEST(TiffReader, UnpacksSmallAndOddSamples)
{
    Folder const folder;
    auto const write = [&](std::uint16_t bits, Bytes line) {
        writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
            setTiffTags(tiff, 3, 1, {mox::MOX_UINT8, bits, SAMPLEFORMAT_UINT});
            TIFFWriteScanline(tiff, line.data(), 0, 0);
        });
    };
    write(1, {0b10100000});
    EXPECT_THAT(voxelsOf<std::uint8_t>(*read(folder / "a.tif")), ElementsAre(1, 0, 1));
    write(4, {0xF0, 0x30});
    EXPECT_THAT(voxelsOf<std::uint8_t>(*read(folder / "a.tif")), ElementsAre(15, 0, 3));
    write(12, {0xFF, 0xF0, 0x01, 0xAB, 0xC0});
    EXPECT_EQ(read(folder / "a.tif")->getVoxelType(), mox::MOX_UINT16);
    EXPECT_THAT(voxelsOf<std::uint16_t>(*read(folder / "a.tif")), ElementsAre(0xFFF, 0x001, 0xABC));
}

TEST(TiffReader, ReadsCompressionsAndPredictors)
{
    Folder const folder;
    Sizes const sizes = {33, 9, 1, 1, 1};
    auto const voxels = randomVoxels<std::uint16_t>(sizes);
    TIFFSetWarningHandler(nullptr); // of writing the old number of deflate
    for (int const compression : {COMPRESSION_NONE, COMPRESSION_PACKBITS, COMPRESSION_LZW, COMPRESSION_DEFLATE,
                                  COMPRESSION_ADOBE_DEFLATE, COMPRESSION_LZMA, COMPRESSION_ZSTD}) {
        for (int const predictor : {PREDICTOR_NONE, PREDICTOR_HORIZONTAL}) {
            writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
                setTiffTags(tiff, 33, 9, uint16Form);
                TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
                if (compression != COMPRESSION_NONE && compression != COMPRESSION_PACKBITS) {
                    TIFFSetField(tiff, TIFFTAG_PREDICTOR, predictor);
                }
                for (unsigned int row = 0; row < 9; ++row) {
                    std::vector<std::uint16_t> line(voxels.begin() + row * 33, voxels.begin() + row * 33 + 33);
                    TIFFWriteScanline(tiff, line.data(), row, 0);
                }
            });
            EXPECT_EQ(voxelsOf<std::uint16_t>(*read(folder / "a.tif")), voxels) << compression << ' ' << predictor;
        }
    }
}

TEST(TiffReader, TakesNearlyEmptyImagesForWhatTheyAre)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    Sizes const sizes = {2000, 2000, 1, 1, 1};
    fill(image, sizes, std::vector<std::uint16_t>(2000 * 2000, 0));
    for (int const compression :
         {COMPRESSION_LZW, COMPRESSION_PACKBITS, COMPRESSION_ADOBE_DEFLATE, COMPRESSION_LZMA, COMPRESSION_ZSTD}) {
        writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
            setTiffTags(tiff, 2000, 2000, uint16Form);
            TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 2000);
            TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
            std::vector<std::uint16_t> line(2000);
            for (unsigned int row = 0; row < 2000; ++row) {
                TIFFWriteScanline(tiff, line.data(), row, 0);
            }
        });
        EXPECT_EQ(sizesOf(*read(folder / "a.tif")), sizes) << compression;
    }
    writePng(image, folder / "a.png");
    EXPECT_EQ(sizesOf(*read(folder / "a.png")), sizes);
}

void writePages(fs::path const& path, unsigned int pages, char const* description)
{
    writeTiffFile(path, "w", [&](TIFF* tiff) {
        for (unsigned int page = 0; page < pages; ++page) {
            setTiffTags(tiff, 1, 1, uint8Form);
            if (page == 0 && description != nullptr) {
                TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION, description);
            }
            auto voxel = static_cast<std::uint8_t>(page);
            TIFFWriteScanline(tiff, &voxel, 0, 0);
            TIFFWriteDirectory(tiff);
        }
    });
}

TEST(TiffReader, PagesArePlansUnlessToldOtherwise)
{
    Folder const folder;
    writePages(folder / "a.tif", 6, nullptr);
    EXPECT_EQ(sizesOf(*read(folder / "a.tif")), (Sizes{1, 1, 6, 1, 1}));
    EXPECT_EQ(sizesOf(*read(folder / "a.tif", mox::TIME_SERIES)), (Sizes{1, 1, 1, 6, 1}));
    EXPECT_EQ(sizesOf(*read(folder / "a.tif", mox::SPECTRAL_SERIES)), (Sizes{1, 1, 1, 1, 6}));
}

TEST(TiffReader, PagesGoWhereTheDescriptionSays)
{
    Folder const folder;
    writePages(folder / "a.tif", 12, "ImageJ=1.53t\nimages=12\nchannels=2\nslices=3\nframes=2\nhyperstack=true\n");
    auto const image = read(folder / "a.tif");
    EXPECT_EQ(sizesOf(*image), (Sizes{1, 1, 3, 2, 2}));
    EXPECT_THAT(voxelsOf<std::uint8_t>(*image), ElementsAre(0, 2, 4, 6, 8, 10, 1, 3, 5, 7, 9, 11));
    EXPECT_EQ(sizesOf(*read(folder / "a.tif", mox::TIME_SERIES)), (Sizes{1, 1, 1, 12, 1}));
    writePages(folder / "b.tif", 6, R"(<OME><Pixels DimensionOrder="XYTZC" SizeZ="3" SizeT="2" SizeC="1"/></OME>)");
    EXPECT_THAT(voxelsOf<std::uint8_t>(*read(folder / "b.tif")), ElementsAre(0, 2, 4, 1, 3, 5));
}

TEST(TiffReader, RefusesADescriptionOfOtherPages)
{
    Folder const folder;
    writePages(folder / "a.tif", 2, "ImageJ=1.53t\nimages=100\nslices=100\n");
    EXPECT_THAT(failureOf(folder / "a.tif"), HasSubstr("--pages"));
    EXPECT_EQ(sizesOf(*read(folder / "a.tif", mox::PLANS)), (Sizes{1, 1, 2, 1, 1}));
}

TEST(TiffReader, RefusesPagesThatDiffer)
{
    Folder const folder;
    writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
        for (unsigned int columns : {2U, 2U, 3U}) {
            setTiffTags(tiff, columns, 1, uint8Form);
            Bytes line(columns);
            TIFFWriteScanline(tiff, line.data(), 0, 0);
            TIFFWriteDirectory(tiff);
        }
    });
    EXPECT_THAT(failureOf(folder / "a.tif"), HasSubstr("page 3 differs"));
}

TEST(TiffReader, PassesOverReducedCopies)
{
    Folder const folder;
    writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
        for (unsigned int columns : {2U, 1U}) {
            setTiffTags(tiff, columns, 1, uint8Form);
            TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, columns == 1 ? FILETYPE_REDUCEDIMAGE : 0);
            Bytes line(columns);
            TIFFWriteScanline(tiff, line.data(), 0, 0);
            TIFFWriteDirectory(tiff);
        }
    });
    EXPECT_EQ(sizesOf(*read(folder / "a.tif")), (Sizes{2, 1, 1, 1, 1}));
}

std::unique_ptr<mox::memory::InMemoryImage> readResolved(double resolution, int unit, char const* description)
{
    Folder const folder;
    writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
        setTiffTags(tiff, 1, 1, uint8Form);
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, resolution);
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, resolution);
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, unit);
        TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION, description);
        std::uint8_t voxel = 0;
        TIFFWriteScanline(tiff, &voxel, 0, 0);
    });
    return read(folder / "a.tif");
}

TEST(TiffReader, TakesStepsFromTheResolution)
{
    auto const inch = readResolved(300, RESUNIT_INCH, "a text");
    EXPECT_NEAR(inch->getCalibrationStep(mox::COLUMNS), 1.0 / 300, 1e-9);
    EXPECT_STREQ(inch->getUnit().c_str(), "inch");
    EXPECT_STREQ(inch->getDescription().c_str(), "a text");
    EXPECT_STREQ(readResolved(300, RESUNIT_CENTIMETER, "")->getUnit().c_str(), "cm");
    auto const imagej = readResolved(1 / 0.107, RESUNIT_NONE, "ImageJ=1.53t\nunit=micron\n");
    EXPECT_EQ(imagej->getCalibrationStep(mox::ROWS), 0.107);
    EXPECT_STREQ(imagej->getUnit().c_str(), "micron");
    EXPECT_EQ(readResolved(1, RESUNIT_NONE, "ImageJ=1.53t\nunit=mm\n")->getCalibrationStep(mox::COLUMNS), 1);
}

TEST(TiffReader, TakesNoStepFromAResolutionOfOnePerNothing)
{
    EXPECT_EQ(readResolved(1, RESUNIT_NONE, "")->getCalibrationStep(mox::COLUMNS), 0);
    EXPECT_EQ(readResolved(0, RESUNIT_INCH, "")->getCalibrationStep(mox::COLUMNS), 0);
}

} // namespace
} // namespace moxel::testing

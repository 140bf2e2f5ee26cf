#include <gmock/gmock.h>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Tags, types and values of the entries: 3 is a 16-bit, 4 a 32-bit number.
std::vector<TiffEntry> entriesOf(std::uint32_t columns, std::uint32_t rows, std::uint16_t compression,
                                 std::uint32_t stripBytes)
{
    return {{TIFFTAG_IMAGEWIDTH, 4, 1, columns},
            {TIFFTAG_IMAGELENGTH, 4, 1, rows},
            {TIFFTAG_BITSPERSAMPLE, 3, 1, 8},
            {TIFFTAG_COMPRESSION, 3, 1, compression},
            {TIFFTAG_PHOTOMETRIC, 3, 1, PHOTOMETRIC_MINISBLACK},
            {TIFFTAG_STRIPOFFSETS, 4, 1, dataOffset(8)},
            {TIFFTAG_ROWSPERSTRIP, 4, 1, rows},
            {TIFFTAG_STRIPBYTECOUNTS, 4, 1, stripBytes}};
}

TEST(DamagedTiff, IsReadByteByByte)
{
    Folder const folder;
    writeBytes(folder / "a.tif", tiffBytes(entriesOf(2, 2, COMPRESSION_NONE, 4), {1, 2, 3, 4}));
    EXPECT_THAT(voxelsOf<std::uint8_t>(*readImage(folder / "a.tif", {})), ElementsAre(1, 2, 3, 4));
}

TEST(DamagedTiff, RefusesSizesThatItsDataCannotHold)
{
    Folder const folder;
    for (std::uint16_t const compression :
         {std::uint16_t{COMPRESSION_NONE}, std::uint16_t{COMPRESSION_ADOBE_DEFLATE}, std::uint16_t{COMPRESSION_LZW},
          std::uint16_t{COMPRESSION_PACKBITS}, std::uint16_t{COMPRESSION_LZMA}}) {
        for (std::uint32_t const stripBytes : {100U, 4000000000U}) {
            writeBytes(folder / "a.tif",
                       tiffBytes(entriesOf(4000000000U, 4000000000U, compression, stripBytes), Bytes(100)));
            EXPECT_NE(failureOf(folder / "a.tif"), "none") << compression;
            writeBytes(folder / "a.tif", tiffBytes(entriesOf(60000, 60000, compression, stripBytes), Bytes(100)));
            EXPECT_THAT(failureOf(folder / "a.tif"), HasSubstr("cannot hold")) << compression;
        }
    }
}

TEST(DamagedTiff, RefusesManySmallStripsThatAreNotThere)
{
    Folder const folder;
    auto entries = entriesOf(4000000000U, 4000000000U, COMPRESSION_NONE, 100);
    entries[6].value = 1; // rows per strip
    writeBytes(folder / "a.tif", tiffBytes(entries, Bytes(100)));
    EXPECT_NE(failureOf(folder / "a.tif"), "none");
}

TEST(DamagedTiff, RefusesTilesThatItsDataCannotHold)
{
    Folder const folder;
    std::vector<TiffEntry> const entries = {{TIFFTAG_IMAGEWIDTH, 4, 1, 1},
                                            {TIFFTAG_IMAGELENGTH, 4, 1, 1},
                                            {TIFFTAG_BITSPERSAMPLE, 3, 1, 8},
                                            {TIFFTAG_COMPRESSION, 3, 1, COMPRESSION_NONE},
                                            {TIFFTAG_PHOTOMETRIC, 3, 1, PHOTOMETRIC_MINISBLACK},
                                            {TIFFTAG_TILEWIDTH, 4, 1, 1U << 20U},
                                            {TIFFTAG_TILELENGTH, 4, 1, 1U << 20U},
                                            {TIFFTAG_TILEOFFSETS, 4, 1, dataOffset(9)},
                                            {TIFFTAG_TILEBYTECOUNTS, 4, 1, 100}};
    writeBytes(folder / "a.tif", tiffBytes(entries, Bytes(100)));
    EXPECT_THAT(failureOf(folder / "a.tif"), HasSubstr("cannot hold"));
}

TEST(DamagedTiff, RefusesEmptyPages)
{
    Folder const folder;
    writeBytes(folder / "a.tif", tiffBytes(entriesOf(0, 2, COMPRESSION_NONE, 4), Bytes(4)));
    EXPECT_NE(failureOf(folder / "a.tif"), "none");
    writeBytes(folder / "a.tif", tiffBytes(entriesOf(2, 0, COMPRESSION_NONE, 4), Bytes(4)));
    EXPECT_NE(failureOf(folder / "a.tif"), "none");
}

TEST(DamagedTiff, RefusesPagesThatGoInACircle)
{
    Folder const folder;
    Bytes bytes = tiffBytes(entriesOf(2, 2, COMPRESSION_NONE, 4), {1, 2, 3, 4});
    bytes[dataOffset(8) - 4] = 8; // the next directory is this one
    writeBytes(folder / "a.tif", bytes);
    EXPECT_NE(failureOf(folder / "a.tif"), "none");
}

TEST(DamagedTiff, RefusesFormsThatItDoesNotKnow)
{
    Folder const folder;
    auto entries = entriesOf(2, 2, COMPRESSION_NONE, 8);
    entries[2].value = 24;
    writeBytes(folder / "a.tif", tiffBytes(entries, Bytes(12)));
    EXPECT_NE(failureOf(folder / "a.tif"), "none");
    writeBytes(folder / "a.tif", tiffBytes(entriesOf(2, 2, 9999, 4), Bytes(4)));
    EXPECT_THAT(failureOf(folder / "a.tif"), HasSubstr("compression"));
}

TEST(DamagedTiff, RefusesTruncatedFiles)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    Sizes const sizes = {40, 30, 3, 1, 1};
    fill(image, sizes, randomVoxels<std::uint16_t>(sizes));
    for (auto const compression : {Compression::none, Compression::deflate}) {
        writeTiff(image, folder / "whole.tif", compression);
        Bytes const whole = readBytes(folder / "whole.tif");
        for (std::size_t length = 0; length < whole.size(); length += 61) {
            writeBytes(folder / "cut.tif", {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
            EXPECT_NE(failureOf(folder / "cut.tif"), "none") << length;
        }
    }
}

TEST(DamagedTiff, RefusesCorruptData)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    Sizes const sizes = {40, 30, 1, 1, 1};
    fill(image, sizes, randomVoxels<std::uint16_t>(sizes));
    writeTiff(image, folder / "a.tif", Compression::deflate);
    Bytes bytes = readBytes(folder / "a.tif");
    for (std::size_t i = 200; i < 300; ++i) {
        bytes[i] ^= 0xA5U;
    }
    writeBytes(folder / "a.tif", bytes);
    EXPECT_NE(failureOf(folder / "a.tif"), "none");
}

TEST(DamagedTiff, HeedsWhatADecoderOnlyWarnsOf)
{
    Folder const folder;
    auto const noise = randomVoxels<std::uint8_t>({64, 64, 1, 1, 1});
    writeTiffFile(folder / "a.tif", "w", [&](TIFF* tiff) {
        setTiffTags(tiff, 64, 64, {mox::MOX_UINT8, 8, SAMPLEFORMAT_UINT});
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_JPEG);
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 64);
        for (unsigned int row = 0; row < 64; ++row) {
            Bytes line(noise.begin() + row * 64, noise.begin() + row * 64 + 64);
            TIFFWriteScanline(tiff, line.data(), row, 0);
        }
    });
    EXPECT_EQ(failureOf(folder / "a.tif"), "none");
    Bytes bytes = readBytes(folder / "a.tif");
    bytes[2000] = 0xFF; // the end of the picture, too early
    bytes[2001] = 0xD9;
    writeBytes(folder / "a.tif", bytes);
    EXPECT_THAT(failureOf(folder / "a.tif"), HasSubstr("premature end"));
}

TEST(DamagedTiff, SurvivesAnyChangeOfOneByte)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {3, 2, 2, 1, 1}, std::vector<std::uint8_t>(12, 5));
    image.setUnit("mm");
    image.setCalibrationStep(mox::COLUMNS, 0.5);
    writeTiff(image, folder / "whole.tif", Compression::deflate);
    Bytes const whole = readBytes(folder / "whole.tif");
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (std::uint8_t const change : {std::uint8_t{1}, std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
            Bytes changed = whole;
            changed[i] ^= change;
            writeBytes(folder / "changed.tif", changed);
            failureOf(folder / "changed.tif");
        }
    }
}

} // namespace
} // namespace moxel::testing
